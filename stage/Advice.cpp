#include "stage/Advice.h"

#include "core/Text.h"

namespace quillon {

std::string ErrorLine(const Program& program, const RunTimeError& error) {
  std::string line = program.step + ": " + error.text();
  if (!error.path().empty()) line += ": " + error.path();
  if (!error.reason().empty()) line += " (" + error.reason() + ")";
  return line;
}

std::string Advice(const RunTimeError& error) {
  const std::string path = UpperCase(error.path());
  if (error.number() == static_cast<int>(ErrorNumber::DiskFull))
    return "Make room on the disk and try again.";
  if (Contains(path, "MISC_INFO") || Contains(path, "QNNOIMAGE"))
    return "A delivered file is missing: run 'quillon setup' to lay it again.";
  if (Contains(path, "\\DOWNLOADED_ROUTES\\") || Contains(path, "\\ROUTE_PICS\\") ||
      Contains(path, "\\ROUTE_INFO\\"))
    return "Take that zip out of downloaded_routes and add the others; its original may be mended or "
           "downloaded again.";
  if (Contains(path, "QUILLON-ROUTE"))
    return "Close Train Simulator and try again; Clean in the route manager ('quillon clean') rebuilds the "
           "working "
           "route.";
  if (path.ends_with(".QNZ")) return "The route file is damaged: add its zip again.";
  return "Mend what is said above and try again.";
}

std::string ErrorReport(const Program& program, const RunTimeError& error) {
  std::string report = program.step + ":\n" + error.text();
  if (!error.reason().empty()) report += " (" + error.reason() + ")";
  if (!error.path().empty()) report += "\n\n" + error.path();
  return report + "\n\n" + Advice(error);
}

}  // namespace quillon
