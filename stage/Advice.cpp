#include "stage/Advice.h"

#include "core/Text.h"
#include "core/host/PathText.h"

namespace quillon {

std::string ErrorLine(const Program& program, const RunTimeError& error) {
  std::string line = program.step + ": " + error.text();
  if (!error.path().empty()) line += ": " + error.path();
  if (!error.reason().empty()) line += " (" + error.reason() + ")";
  return WithoutStandIns(line);
}

bool IsMissingPreview(const RunTimeError& error) {
  const std::string path = UpperCase(error.path());
  return error.number() == static_cast<int>(ErrorNumber::FileNotFound) && Contains(path, "\\ROUTES\\TS") &&
         path.ends_with(".JPG");
}

std::string Advice(const RunTimeError& error) {
  const std::string path = UpperCase(error.path());
  const auto is = [&](ErrorNumber number) { return error.number() == static_cast<int>(number); };
  const bool missing = is(ErrorNumber::FileNotFound) || is(ErrorNumber::PathNotFound);
  if (is(ErrorNumber::DiskFull)) return "Make room on the disk and try again.";
  if (error.reason() == kNoPermission || error.reason() == kNoPermissionToRead)
    return "Take the read-only mark off it, or get the right to change it and its folder, and try again.";
  if (IsMissingPreview(error))
    return "The preview of a route is missing: 'quillon verify --repair' makes it anew.";
  if (missing && (Contains(path, "MISC_INFO") || Contains(path, "QNNOIMAGE")))
    return "A delivered file is missing: run 'quillon setup' to lay it again.";
  if (Contains(path, "\\RESCUED\\") || Contains(UpperCase(error.reason()), "\\RESCUED\\"))
    return "Nothing was put back. Move what stands in the way elsewhere, or copy the rescued files by hand.";
  if (path.ends_with(".QNZ") && (missing || is(ErrorNumber::InvalidFileFormat)))
    return "Nothing of yours is lost. Copy the route's zip from original_zips\\Installed to "
           "downloaded_routes and "
           "add it again; meanwhile load another route.";
  if (Contains(path, "\\DOWNLOADED_ROUTES\\") || Contains(path, "\\ROUTE_PICS\\") ||
      Contains(path, "\\ROUTE_INFO\\"))
    return "Take that zip out of downloaded_routes and add the others; its original may be mended or "
           "downloaded again.";
  if (Contains(path, "QUILLON-ROUTE"))
    return "Nothing of yours is lost. Close Train Simulator and load again; Clean in the route manager "
           "('quillon "
           "clean') rebuilds the working route.";
  return "Mend what is said above and try again.";
}

std::string ErrorReport(const Program& program, const RunTimeError& error) {
  std::string report = program.step + ":\n" + error.text();
  if (!error.reason().empty()) report += " (" + error.reason() + ")";
  if (!error.path().empty()) report += "\n\n" + error.path();
  return report + "\n\n" + Advice(error);
}

}  // namespace quillon
