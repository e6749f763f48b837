#include "repair/PackRoute.h"

#include <algorithm>
#include <array>
#include <utility>

#include "catalogue/Unfinished.h"
#include "core/archive/ArchiveNames.h"
#include "core/host/PathText.h"
#include "core/text/Text.h"
#include "shelf/Rescue.h"

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

PackRoute::PackRoute(Program& program, Progress& progress, std::string parent, std::string name,
                     std::string folder)
    : program_(program),
      files_(program.files),
      progress_(progress),
      PackParent(std::move(parent)),
      PackName(std::move(name)),
      route_(PackParent + "\\" + PackName + "\\"),
      folder_(std::move(folder)),
      xzipper1_(program.files) {}

std::string PackRoute::ArchivePath(const char* extension) const {
  return program_.app.DownloadedRoutes() + "\\QNPacked-" + PackName + extension;
}

bool PackRoute::Run() {
  const FileSystem::Pass pass(files_.Host());
  program_.Step("Packing the route " + PackName);
  Unfinished(program_).Begin(kPackAct, {});
  if (files_.FileExists(Log())) logSize_ = files_.Size(Log());
  try {
    SetOldArchiveAside();
    Pack();
    FinishZip();
  } catch (const GivenUp&) {
    TakeBack();
    return false;
  } catch (const RunTimeError&) {
    try {
      if (aside_) aside_->Close();
    } catch (const RunTimeError&) {  // the first error is the one to tell
    }
    throw;
  }
  if (aside_) aside_->Close();
  DropOldArchiveIfContained();
  MakeSavesFolder();
  Unfinished(program_).End(kPackAct);
  progress_.Colour(kGreen);
  progress_.Value(100);
  progress_.Caption("Finished Packing!");
  return true;
}

void PackRoute::Pack() {
  const MayBeGivenUp scope(progress_);
  progress_.Yield();
  progress_.Value(100);
  ReadDefaultFiles();
  SkipScan();
  AddScan();
  Zip();
  progress_.Yield();  // the last moment to give it up
}

/// The half-written zip has gone with its writer.
void PackRoute::TakeBack() {
  const std::string zip = ArchivePath(".zip");
  files_.KillIfThere(ArchivePath(".tmp"));
  if (!oldArchive_.empty()) {
    const Shelf shelf(program_);
    const std::string aside = oldArchive_ + shelf.PlaceOf(zip);
    if (files_.Host().Move(aside, zip) != FileCode::Ok) files_.FileCopy(aside, zip);
    files_.Flush(zip);
    shelf.Drop({.path = oldArchive_});
    files_.Host().RemoveFolder(program_.app.Rescued());  // if it was made for this
  }
  if (logSize_)
    files_.WriteAll(Log(), files_.ReadAll(Log(), *logSize_));
  else
    files_.KillIfThere(Log());
  Unfinished(program_).End(kPackAct);
}

/// An older zip of the route may hold what the folder no longer has.
void PackRoute::SetOldArchiveAside() {
  files_.KillIfThere(ArchivePath(".tmp"));
  if (!files_.FileExists(ArchivePath(".zip"))) return;
  aside_.emplace(program_, "QNPacked-" + PackName,
                 "An older zip of this route, from before it was packed again.");
  aside_->Keep(ArchivePath(".zip"));
  oldArchive_ = aside_->Folder();
  aside_->Flush();
  files_.KillIfThere(ArchivePath(".zip"));
}

void PackRoute::DropOldArchiveIfContained() {
  if (oldArchive_.empty()) return;
  const Shelf shelf(program_);
  ArchiveReader older(files_, [] {}), newer(files_);
  older.InputFile = oldArchive_ + shelf.PlaceOf(ArchivePath(".zip"));
  newer.InputFile = ArchivePath(".zip");
  older.ReadDirectory();
  newer.ReadDirectory();
  std::unordered_map<std::string, std::uint32_t> held;
  for (const auto& entry : newer.Entries()) held.emplace(LowerCase(entry.name), entry.crc);
  const bool contained =
      !older.Entries().empty() &&
      std::all_of(older.Entries().begin(), older.Entries().end(), [&](const ArchiveEntry& entry) {
        const auto at = held.find(LowerCase(entry.name));
        return at != held.end() && at->second == entry.crc;
      });
  if (!contained) return;
  for (const auto& entry : shelf.List())
    if (EqualNoCase(entry.path, oldArchive_)) shelf.Drop(entry);
}

void PackRoute::ReadDefaultFiles() {
  PackSkipList = {"qntemp tempqn"};
  for (const auto& line : Lines(files_.ReadAll(program_.app.FileList()))) {
    PackSkipList.insert(LowerCase(route_ + line));
    progress_.Caption("Skipping " + line);
  }
}

void PackRoute::SkipScan() {
  WalkRoute([this](const std::string& folder, const std::string& name) {
    if (IsLeftOut(LowerCase(name))) PackSkipList.insert(LowerCase(folder + name));
    ++filesSeen_;
    progress_.Yield();
  });
}

/// Links are entered: what they lead to is part of the route.
void PackRoute::WalkRoute(const FileAction& action) {
  FolderWay way(files_.Host());
  WalkFolder(route_, false, way, action);
}

/// `folder` is given as it is told, with a closing backslash.
void PackRoute::WalkFolder(const std::string& folder, bool link, FolderWay& way, const FileAction& action) {
  const std::string real = folder_ + folder.substr(route_.size() - 1);
  if (!way.Enter(real, link)) return;
  std::vector<FoundFile> found;
  if (const FileCode code = files_.Host().Find(real + "*.*", found); code != FileCode::FileNotFound)
    RaiseFileError(code, CutBackslash(real));
  for (const auto& entry : found) {
    if (entry.dots()) continue;
    if (entry.folder())
      WalkFolder(folder + entry.name + "\\", entry.link, way, action);
    else
      action(folder, entry.name);
  }
  way.Leave();
}

void PackRoute::AddScan() {
  ListFile log(files_, Log(), true);
  FileCount count(progress_, filesSeen_);
  // The route's own folder stays in front of each name.
  WalkRoute([&](const std::string& folder, const std::string& name) {
    progress_.Caption("Checking " + LowerCase(name));
    count();
    if (PackSkipList.contains(LowerCase(folder + name))) return;
    Add(folder, name);
    log.Add("Added to Zip: " + folder + name + "\r\n");
  });
}

/// Refuses what would be missing in the zip, or keep all of it from being loaded.
void PackRoute::Add(const std::string& folder, const std::string& name) {
  const std::string path = folder_ + folder.substr(route_.size() - 1) + name;
  const std::string storedName = folder.substr(PackParent.size() + 1) + name;
  FileSystem::Stamp stamp;
  const FileCode code = files_.Host().GetStamp(path, stamp);
  const bool untold = code == FileCode::InvalidName || HasStandIns(storedName);
  if (const char* harm = HarmIn(storedName); untold || harm != nullptr)
    throw RunTimeError(
        ErrorNumber::BadFileName, path,
        std::string(harm != nullptr ? harm : "Windows knows no such name") + ": rename it to pack the route");
  RaiseFileError(code, path);
  if (!packed_.emplace(LowerCase(storedName), stamp).second)
    throw RunTimeError(ErrorNumber::FileAlreadyExists, path,
                       "two files have names that differ in case only: rename one to pack the route");
  xzipper1_.AddFile(path, storedName);
}

void PackRoute::Zip() {
  progress_.Caption("Thinking... please be patient...");
  xzipper1_.ArchiveFile = ArchivePath(".tmp");
  xzipper1_.OnProgress = [this](const ArchiveWriter&) { TellProgress(); };
  xzipper1_.Zip();
  progress_.Detail(0, 0, {});
}

void PackRoute::FinishZip() {
  RequireComplete();
  files_.KillIfThere(ArchivePath(".zip"));
  files_.Rename(ArchivePath(".tmp"), ArchivePath(".zip"));
  files_.Flush(ArchivePath(".zip"));
}

/// The folder may go next: the zip's own list is compared with what was to be in it.
void PackRoute::RequireComplete() {
  ArchiveReader reader(files_);
  reader.InputFile = ArchivePath(".tmp");
  reader.ReadDirectory();
  auto missing = packed_;
  for (const auto& entry : reader.Entries()) {
    const auto at = missing.find(LowerCase(entry.name));
    if (at != missing.end() && at->second.size == entry.size) missing.erase(at);
  }
  if (missing.empty()) return;
  files_.KillIfThere(ArchivePath(".tmp"));
  throw RunTimeError(
      ErrorNumber::DeviceIoError, PackParent + "\\" + missing.begin()->first,
      "it is not in the zip as it is on the disk: something changes the route while it is packed");
}

void PackRoute::TellProgress() {
  const std::string& file = xzipper1_.CurrentFile();
  if (file.size() > folder_.size()) progress_.Caption("Packing " + PackName + file.substr(folder_.size()));
  progress_.Value(xzipper1_.PercentDone());
  progress_.Detail(xzipper1_.BytesDone(), xzipper1_.BytesToDo(), "bytes");
  progress_.Yield();
}

/// Ready for the route that an intake will make of the zip.
void PackRoute::MakeSavesFolder() {
  const std::string saves = program_.app.Saves("QNPacked-" + PackName);
  Rescue rescue(program_, "QNPacked-" + PackName,
                "The route was packed again, which empties its saved activities.");
  files_.Walk(saves + "\\*.*",
              [&](const std::string& folder, const std::string& name) { rescue.Keep(folder + name); });
  rescue.Close();
  if (files_.IsPathAFolder(saves)) files_.DelTree(saves);
  files_.MakeFolderIfMissing(saves);
}

/// Left out of the zip, and the same in the game's own routes.
bool PackRoute::IsGamesOwn(const std::string& path) {
  const std::string below = path.substr(folder_.size());
  const auto equals = [&](std::string_view route) {
    return files_.AreEqual(program_.BelowGame(route) + below, path);
  };
  return equals("\\TEMPLATE") || equals("\\Global") ||
         std::any_of(kDefaultRoutes.begin(), kDefaultRoutes.end(), equals);
}

/// In the zip as it is now, of the game, or made again by it.
bool PackRoute::IsHeld(const std::string& folder, const std::string& name) {
  const std::string path = folder + name, lower = LowerCase(name);
  const std::string storedName = LowerCase(PackName + path.substr(folder_.size()));
  FileSystem::Stamp stamp;
  if (const auto at = packed_.find(storedName); at != packed_.end())
    return files_.Host().GetStamp(path, stamp) == FileCode::Ok && stamp.size == at->second.size &&
           stamp.modified == at->second.modified;
  return lower.ends_with("_e.raw") || lower.ends_with("_n.raw") || IsGamesOwn(path);
}

bool PackRoute::RemoveFolder() {
  const std::string saves = program_.BelowGame("\\Saves\\") + PackName;
  program_.Step("Removing the folder of the route " + PackName);
  Rescue rescue(program_, "QNPacked-" + PackName,
                "The route's folder was removed after packing; its zip does not hold this.");
  {
    FileCount count(progress_, filesSeen_);
    files_.Walk(folder_ + "\\*.*", [&](const std::string& folder, const std::string& name) {
      if (!IsHeld(folder, name)) rescue.Keep(folder + name);
      count();
    });
  }
  files_.Walk(saves + "\\*.*",
              [&](const std::string& folder, const std::string& name) { rescue.Keep(folder + name); });
  rescue.Close();
  files_.DelTree(saves);
  FileCount count(progress_, filesSeen_);
  return DeleteWhole(program_, folder_, std::ref(count));
}

}  // namespace quillon
