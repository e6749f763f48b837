#include "intake/UnusableDownloads.h"

#include <algorithm>

#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"

namespace quillon {
namespace {

bool IsZip(const std::string& file) { return LowerCase(file).ends_with(".zip"); }

std::string StemOf(const std::string& file) {
  return CutAtLastDot(IsZip(file) ? file : ForeignDownloads::ZipOf(file));
}

/// In upper case. Catalogue and folders don't see the blanks and dots at the ends of a name.
std::string PlainName(const std::string& stem) {
  return UpperCase(Trim(stem.substr(0, stem.find_last_not_of(" .") + 1)));
}

}  // namespace

void UnusableDownloads::Run() {
  state_.program.Step("Looking for downloads that can't be taken in");
  std::vector<FoundFile> found;
  state_.program.files.Host().Find(state_.program.app.DownloadedRoutes() + "\\*.*", found);
  std::erase_if(found, [](const FoundFile& file) {
    return file.folder() || (!IsZip(file.name) && !ForeignDownloads::IsOne(file.name));
  });
  // Of two that are taken for one the plain name has precedence.
  std::stable_partition(found.begin(), found.end(), [](const FoundFile& file) {
    const std::string zip = StemOf(file.name);
    return PlainName(zip) == UpperCase(zip);
  });
  for (const auto& file : state_.program.files.ListFiles(state_.program.app.AnyRouteFile()))
    owners_.try_emplace(PlainName(CutAtLastDot(file)), CutAtLastDot(file));
  for (const auto& download : found) {
    const std::string zip = StemOf(download.name);
    if (const std::string reason = ReasonAgainst(download, zip); !reason.empty())
      SetAside(download, zip, reason);
  }
}

std::string UnusableDownloads::ReasonAgainst(const FoundFile& download, const std::string& zip) {
  if (download.special) return "it is no file, but a pipe, a device or a link that leads nowhere";
  if (!IsUsableStem(zip)) return "no file or folder may have its name on every system: give it another one";
  const std::string owner = owners_.try_emplace(PlainName(zip), zip).first->second;
  if (EqualNoCase(owner, zip) || state_.program.files.FileExists(state_.program.app.RouteFile(zip)))
    return {};
  return "its name differs from that of " + owner + " in blanks or dots only: give it another one";
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
