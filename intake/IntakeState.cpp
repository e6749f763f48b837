#include "intake/IntakeState.h"

#include <cctype>

#include "core/CopyOver.h"
#include "core/text/Text.h"
#include "shelf/Rescue.h"

namespace quillon {

std::vector<std::string> IntakeState::DownloadedZips() const {
  std::vector<std::string> zips;
  for (const auto& file : program.files.ListFiles(program.app.AnyDownload()))
    zips.push_back(CutAtLastDot(file));
  return zips;
}

void IntakeState::Step(const std::string& step, const std::string& zip) const {
  program.Step(step);
  const auto at = converted.find(verdicts.DownloadOf(zip));
  program.shared.DownloadAtWork = at == converted.end() ? zip + ".zip" : at->second;
}

void IntakeState::KeepOriginal(const std::string& zip) {
  if (converted.contains(zip)) return;
  journal.OriginalComes(zip);
  CopyOver(Download(zip), InInstalled(zip));
}

void IntakeState::MoveAside(const std::string& zip, const std::string& folder) const {
  MoveOver(Download(zip), folder + "\\" + zip + ".zip");
  const std::string downloads = program.app.DownloadedRoutes() + "\\";
  for (const auto& part : program.files.ListFiles(downloads + zip + ".z??"))
    if (part.size() == zip.size() + 4 && std::isdigit(static_cast<unsigned char>(part.back())))
      MoveOver(downloads + part, folder + "\\" + part);
}

void IntakeState::SetAside(const std::string& zip) {
  ListBadFiles.push_back(zip);
  program.shared.ZipsSetAside = true;
}

void IntakeState::CopyOver(const std::string& from, const std::string& to) const {
  quillon::CopyOver(program.files, from, to);
}

void IntakeState::MoveOver(const std::string& from, const std::string& to) const {
  program.files.SetAttributes(from, kArchive);
  if (program.files.FileExists(to) && !program.files.AreEqual(from, to)) {
    Rescue rescue(program, CutAtLastDot(FileNameOf(to)),
                  "Another zip of the same name was set aside: this one was there before.");
    rescue.Keep(to);
    rescue.Close();
  }
  program.files.KillIfThere(to);
  program.files.Rename(from, to);
}

ArchiveReader IntakeState::Reader() {
  ArchiveReader reader(program.files, [this] { BadZipFlag = true; });
  reader.OnProgress = [this](const ArchiveReader&) { progress.Yield(); };
  return reader;
}

}  // namespace quillon
