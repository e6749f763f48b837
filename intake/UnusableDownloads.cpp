#include "intake/UnusableDownloads.h"

#include <algorithm>

#include "core/Text.h"
#include "core/archive/ArchiveNames.h"
#include "intake/ForeignDownloads.h"

namespace quillon {

void UnusableDownloads::Run() {
  state_.program.Step("Looking for downloads that can't be taken in");
  std::vector<FoundFile> found;
  state_.program.files.Host().Find(state_.program.app.DownloadedRoutes() + "\\*.*", found);
  for (const auto& download : found) {
    if (download.folder()) continue;
    const bool isZip = LowerCase(download.name).ends_with(".zip");
    if (!isZip && !ForeignDownloads::IsOne(download.name)) continue;
    const std::string zip = CutAtLastDot(isZip ? download.name : ForeignDownloads::ZipOf(download.name));
    if (const std::string reason = ReasonAgainst(download, zip); !reason.empty())
      SetAside(download, zip, reason);
  }
}

std::string UnusableDownloads::ReasonAgainst(const FoundFile& download, const std::string& zip) const {
  if (download.special) return "it is no file, but a pipe, a device or a link that leads nowhere";
  if (!IsUsableStem(zip)) return "no file or folder may have its name on every system: give it another one";
  // Catalogue and folders don't see the blanks and dots at the ends of a name.
  std::string plain = Trim(zip.substr(0, zip.find_last_not_of(" .") + 1));
  if (plain == zip) return {};
  const bool taken = state_.program.files.FileExists(state_.Download(plain)) ||
                     state_.program.files.FileExists(state_.program.app.RouteFile(plain));
  return taken ? "its name differs from that of " + plain + " in blanks or dots only: give it another one"
               : "";
}

void UnusableDownloads::SetAside(const FoundFile& download, const std::string& zip,
                                 const std::string& reason) {
  const std::string folder = state_.program.app.BadZipFiles() + "\\";
  const std::string stem = UsableFileName(zip.empty() ? "_" : zip);
  const std::string end = download.name.substr(std::min(zip.size(), download.name.size()));
  std::string free = stem;
  for (int i = 2; state_.program.files.FileExists(folder + free + end); ++i)
    free = stem + " (" + std::to_string(i) + ")";
  state_.program.files.Rename(state_.program.app.DownloadedRoutes() + "\\" + download.name,
                              folder + free + end);
  state_.SetAside(free);
  state_.record.BadFile(free + end);
  state_.verdicts.Give(zip, "BAD", reason);
}

}  // namespace quillon
