#include "intake/ZipTriage.h"

#include <algorithm>

#include "core/archive/ArchiveCheck.h"
#include "core/archive/ArchiveWriter.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"
#include "intake/ForeignDownloads.h"
#include "intake/OddDownload.h"
#include "intake/UnusableDownloads.h"

namespace quillon {

ZipTriage::ZipTriage(Program& program, ProgressScreen& screen)
    : screen_(screen), state_(program, screen), unzip1_(SilentReader()), unzip2_(SilentReader()) {}

void ZipTriage::Run() {
  const FileSystem::Pass pass(state_.program.files.Host());
  state_.program.shared.IntakeBegan = LocalTime(kLogTime);
  state_.journal.Begin();
  state_.record.Begin();
  OfferToSetOddDownloadAside(state_);
  UnusableDownloads(state_).Run();
  SetKnownNonRoutesAside();
  ForeignDownloads(state_).Run();
  CheckSelfExtracting();
}

void ZipTriage::SetKnownNonRoutesAside() {
  Files& files = state_.program.files;
  state_.program.Step("Setting aside files that are known to be no routes");
  for (const auto& line : Lines(files.ReadAll(state_.program.app.FilesList()))) {
    const std::string download = state_.program.app.DownloadedRoutes() + "\\" + line;
    if (line.empty() || !files.FileExists(download)) continue;
    const int moved = screen_.bar.value + 10;
    screen_.Value(moved > 80 ? 10 : moved);
    state_.MoveOver(download, state_.program.app.NotInstalled() + "\\" + line);
    state_.record.KnownNonRoute(line);
    state_.verdicts.Give(line, "MSC", "it is on the list of files that are known to be no routes");
    state_.program.shared.ZipsSetAside = true;
  }
}

void ZipTriage::CheckSelfExtracting() {
  const auto List1 = state_.DownloadedZips();
  // The text has lost the name that belongs in it, and users know it so.
  screen_.Caption("Checking .zip for non-standard files...");
  for (std::size_t i = 0; i < List1.size(); ++i) {
    screen_.Detail(i, List1.size(), "zips");
    Check(List1[i]);
    screen_.Yield();
  }
}

void ZipTriage::Check(const std::string& zip) {
  state_.Step("Checking " + zip + ".zip for non-standard files", zip);
  state_.program.files.DelTree(state_.program.app.ZipTemp());
  state_.program.files.DelTree(state_.program.app.ZipTemp2());
  if (FindExecutable(zip) && OpenExecutableAsZip()) Rebuild(zip);
  screen_.Detail(0, 0, "bytes");
}

bool ZipTriage::FindExecutable(const std::string& zip) {
  unzip1_.InputFile = state_.Download(zip);
  unzip1_.ReadDirectory();
  if (!BombIn(state_.program.files, unzip1_).empty()) return false;  // the driver says so
  for (executableIndex_ = 0; executableIndex_ < unzip1_.EntryCount(); ++executableIndex_) {
    const std::string executable = unzip1_.LowerName(executableIndex_);
    if (!Contains(executable, ".exe")) continue;
    stem_ = executable.substr(0, executable.size() - 4);
    return !executable.ends_with('\\');
  }
  return false;
}

/// A self-extracting zip is a zip with a program in front of it. False for all other programs.
bool ZipTriage::OpenExecutableAsZip() {
  const std::string renamed = stem_ + ".zip";
  for (int i = 0; i < unzip1_.EntryCount(); ++i)
    if (i != executableIndex_ && EqualNoCase(unzip1_.LowerName(i), renamed))
      throw RunTimeError(ErrorNumber::FileAlreadyExists, unzip1_.InputFile,
                         "it holds a program and a zip that are both called " + stem_);
  // Only the program is laid out; all else travels from archive to archive as it is packed.
  unzip2_.InputFile = state_.program.app.ZipTemp() + "\\" + renamed;
  unzip1_.Place({{executableIndex_, unzip2_.InputFile}});
  unzip2_.ReadDirectory();
  const bool whole = std::all_of(unzip2_.Entries().begin(), unzip2_.Entries().end(),
                                 [](const ArchiveEntry& entry) { return entry.Obstacle().empty(); }) &&
                     BombIn(state_.program.files, unzip2_).empty();
  // With nothing but folders at its top it does not count.
  return whole &&
         std::any_of(unzip2_.Entries().begin(), unzip2_.Entries().end(), [](const ArchiveEntry& entry) {
           return !entry.folder() && !Contains(entry.name, "\\");
         });
}

void ZipTriage::Rebuild(const std::string& zip) {
  Files& files = state_.program.files;
  const std::string download = state_.Download(zip), rebuilt = state_.Download("Quillon-" + zip);
  if (files.FileExists(rebuilt)) throw RunTimeError(ErrorNumber::FileAlreadyExists, rebuilt);
  files.RequireRoom(download, files.Size(download) + files.Size(unzip2_.InputFile));

  ArchiveWriter xzipper1(files);
  xzipper1.ArchiveFile = state_.program.app.DownloadedRoutes() + "\\Quillon-" + zip + ".tmp";
  xzipper1.OnProgress = [this](const ArchiveWriter& running) {
    screen_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    screen_.Yield();
  };
  for (const ArchiveReader* reader : {&unzip1_, &unzip2_})
    for (int i = 0; i < reader->EntryCount(); ++i) {
      const ArchiveEntry& entry = reader->Entries()[static_cast<std::size_t>(i)];
      const bool isExecutable = reader == &unzip1_ && i == executableIndex_;
      if (!isExecutable && !entry.folder() && entry.Obstacle().empty())
        xzipper1.AddEntry(*reader, i, entry.name);
    }
  const std::string ziptemp = state_.program.app.ZipTemp() + "\\";
  files.FileCopy(state_.program.app.RebuildNote(), ziptemp + "Quillon_Zipped.txt");
  xzipper1.PrepareRebuild(ziptemp);
  xzipper1.AddFiles(ziptemp + "Quillon_Zipped.txt");
  xzipper1.Zip();
  // The original is safe before the rebuilt zip stands beside it: a crash in between costs nothing.
  state_.KeepOriginal(zip);
  state_.journal.RebuiltComes(zip);
  files.Rename(xzipper1.ArchiveFile, rebuilt);
  files.KillReadOnly(download);
}

ArchiveReader ZipTriage::SilentReader() {
  ArchiveReader reader(state_.program.files, [] {});
  reader.OnProgress = [this](const ArchiveReader& running) {
    screen_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    screen_.Yield();
  };
  return reader;
}

}  // namespace quillon
