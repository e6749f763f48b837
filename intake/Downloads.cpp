#include "intake/Downloads.h"

#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"

namespace quillon {
namespace {

std::string NameOf(const std::string& path) {
  const auto cut = path.find_last_of("\\/");
  return cut == path.npos ? path : path.substr(cut + 1);
}

/// Why `path` was not taken; empty when it was.
std::string TakeOne(Program& program, const std::string& path) {
  const std::string target = program.app.DownloadedRoutes() + "\\" + NameOf(path);
  if (program.files.IsPathAFolder(path)) return "is a folder.  Only archives can be added.";
  if (!LowerCase(path).ends_with(".zip") && !ForeignDownloads::IsOne(NameOf(path)))
    return "is no archive that Quillon can read.";
  if (program.files.FileExists(target)) return "is in your 'downloaded_routes' folder already.";
  const FileCode code = program.files.Host().Copy(path, target);
  return code == FileCode::Ok ? "" : "could not be copied: " + RunTimeError(NumberOf(code)).text() + ".";
}

}  // namespace

void TakeDownloads(Program& program, const std::vector<std::string>& paths, const TakeMeter& meter) {
  program.Step("Copying files to downloaded_routes");
  program.files.MakeFolderIfMissing(program.app.DownloadedRoutes());
  int taken = 0;
  std::size_t done = 0;
  std::string refused;
  for (const auto& path : paths) {
    if (meter) meter(done++, paths.size(), NameOf(path));
    const std::string objection = TakeOne(program, path);
    if (objection.empty())
      ++taken;
    else
      refused += "\r\n" + NameOf(path) + " " + objection;
  }
  if (meter) meter(done, paths.size(), "");
  std::string text;
  if (taken == 1) text = "One zip file was put into your 'downloaded_routes' folder.";
  if (taken > 1) text = std::to_string(taken) + " zip files were put into your 'downloaded_routes' folder.";
  if (taken > 0) text += "\r\nClick 'Add Routes' in the route manager to add what it holds.";
  if (!refused.empty()) text += (taken > 0 ? "\r\n\r\n" : "") + std::string("Not taken:") + refused;
  program.boxes.Tell("Downloaded routes", text);
}

}  // namespace quillon
