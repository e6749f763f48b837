#include "intake/IntakeState.h"

#include "core/Text.h"

namespace quillon {

std::vector<std::string> IntakeState::DownloadedZips() const {
  std::vector<std::string> zips;
  for (const auto& file : program.files.ListFiles(program.app.AnyDownload()))
    zips.push_back(CutAtLastDot(file));
  return zips;
}

void IntakeState::SetAside(const std::string& zip) {
  ListBadFiles.push_back(zip);
  program.shared.ZipsSetAside = true;
}

void IntakeState::CopyOver(const std::string& from, const std::string& to) const {
  if (program.files.FileExists(to)) program.files.SetAttributes(to, kArchive);
  program.files.FileCopy(from, to);
}

ArchiveReader IntakeState::Reader() {
  ArchiveReader reader(program.files, [this] { BadZipFlag = true; });
  reader.OnProgress = [this](const ArchiveReader&) { progress.Yield(); };
  return reader;
}

}  // namespace quillon
