#include "repair/PackRoute.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Text.h"

namespace quillon {
namespace {

/// What the game makes anew, and what was never part of a route.
bool IsLeftOut(std::string_view lowerName) {
  constexpr std::array<std::string_view, 5> kEnds = {"_n.raw", "_e.raw", ".exe", ".zip", ".bk"};
  return lowerName.starts_with("ostr-") || std::any_of(kEnds.begin(), kEnds.end(), [&](std::string_view end) {
           return lowerName.ends_with(end);
         });
}

}  // namespace

PackRoute::PackRoute(Program& program, Progress& progress, std::string parent, std::string name)
    : program_(program),
      files_(program.files),
      progress_(progress),
      PackParent(std::move(parent)),
      PackName(std::move(name)),
      route_(PackParent + "\\" + PackName + "\\"),
      xzipper1_(program.files) {}

std::string PackRoute::ArchivePath(const char* extension) const {
  return program_.app.DownloadedRoutes() + "\\QNPacked-" + PackName + extension;
}

void PackRoute::Run() {
  const FileSystem::Pass pass(files_.Host());
  program_.Step("Packing the route " + PackName);
  DeleteOldArchives();
  progress_.Yield();
  progress_.Value(100);
  ReadDefaultFiles();
  SkipScan();
  AddScan();
  Zip();
  MakeSavesFolder();
  progress_.Colour(kGreen);
  progress_.Value(100);
  progress_.Caption("Finished Packing!");
}

void PackRoute::DeleteOldArchives() {
  files_.KillIfThere(ArchivePath(".tmp"));
  files_.KillIfThere(ArchivePath(".zip"));
}

void PackRoute::ReadDefaultFiles() {
  PackSkipList = {"qntemp tempqn"};
  for (const auto& line : Lines(files_.ReadAll(program_.app.FileList()))) {
    PackSkipList.insert(LowerCase(route_ + line));
    progress_.Caption("Skipping " + line);
  }
}

void PackRoute::SkipScan() {
  files_.Walk(route_ + "*.*", [this](const std::string& folder, const std::string& name) {
    if (IsLeftOut(LowerCase(name))) PackSkipList.insert(LowerCase(folder + name));
    progress_.Yield();
  });
}

void PackRoute::AddScan() {
  ListFile log(files_, program_.app.TrainRecord("packedup.log"), true);
  // The route's own folder stays in front of each name.
  xzipper1_.PrepareRebuild(PackParent + "\\");
  files_.Walk(route_ + "*.*", [&](const std::string& folder, const std::string& name) {
    progress_.Caption("Checking " + LowerCase(name));
    if (PackSkipList.contains(LowerCase(folder + name))) return;
    xzipper1_.AddFiles(folder + name);
    log.Add("Added to Zip: " + folder + name + "\r\n");
    progress_.Yield();
  });
}

void PackRoute::Zip() {
  progress_.Caption("Thinking... please be patient...");
  xzipper1_.ArchiveFile = ArchivePath(".tmp");
  xzipper1_.OnProgress = [this](const ArchiveWriter&) { TellProgress(); };
  xzipper1_.Zip();
  files_.KillIfThere(ArchivePath(".zip"));
  files_.Rename(ArchivePath(".tmp"), ArchivePath(".zip"));
}

void PackRoute::TellProgress() {
  const std::string& file = xzipper1_.CurrentFile();
  if (file.size() > PackParent.size()) progress_.Caption("Packing " + file.substr(PackParent.size() + 1));
  progress_.Value(xzipper1_.PercentDone());
  progress_.Detail(xzipper1_.BytesDone(), xzipper1_.BytesToDo(), "bytes");
  progress_.Yield();
}

/// Ready for the route that an intake will make of the zip.
void PackRoute::MakeSavesFolder() {
  const std::string saves = program_.app.Saves("QNPacked-" + PackName);
  if (files_.IsPathAFolder(saves)) files_.DelTree(saves);
  files_.MakeFolderIfMissing(saves);
}

}  // namespace quillon
