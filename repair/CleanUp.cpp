#include "repair/CleanUp.h"

#include <algorithm>
#include <array>
#include <utility>

#include "catalogue/DefaultFileScan.h"
#include "catalogue/GameFolders.h"
#include "catalogue/LoadMark.h"
#include "catalogue/RouteStores.h"
#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "shelf/OwnFiles.h"

namespace quillon {
namespace {

constexpr int kBarMaximum = 5440;                 // whatever copyfiles.tsl holds
constexpr std::uint64_t kAmpleRoom = 2ull << 30;  // more than a whole game comes to

/// Where a default file goes: the game's folder in front of it becomes the working route.
std::string DestinationOf(const std::string& line) {
  std::string path = line;
  for (const auto source : {"TEMPLATE", "Routes\\EUROPE1", "Routes\\EUROPE2", "Routes\\JAPAN1",
                            "Routes\\JAPAN2", "Routes\\USA1", "Routes\\USA2"})
    path = ReplaceAll(path, source, kWorkingRoute);
  return path;
}

}  // namespace

void CleanUp::Run() {
  const FileSystem::Pass pass(files_.Host());
  program_.shared.ReturnToCleanUp = false;
  RequireSources();
  FillEmptyLists();
  RequireWritablePlaces();
  RequireRoom();
  PutLoadedRouteAway();
  RemoveWorkingRoute();
  MakeFolders();
  progress_.Maximum(kBarMaximum);
  CopyGameFolders();
  CopyDefaultFiles();
  ResetLists();
  RecordCleanUp();
}

/// What would end the run halfway is missed before the first change.
void CleanUp::RequireSources() {
  program_.Step("Making sure that the working route can be rebuilt");
  program_.shared.TrainSimPath =
      program_.ini.ReadIni("TrainSim", "Path", kNoData, program_.app.SettingsIni());
  if (!files_.IsPathAFolder(program_.BelowGame("\\ROUTES")))
    throw RunTimeError(ErrorNumber::PathNotFound, program_.BelowGame("\\ROUTES"));
  const std::string masters = program_.app.MiscInfo();
  for (const auto& file :
       {program_.app.CopyFilesList(), masters + "\\current.tsl", masters + "\\default.tsl"})
    if (!files_.FileExists(file)) throw RunTimeError(ErrorNumber::FileNotFound, file);
  // What can't be read is not what is not there.
  std::vector<FoundFile> found;
  for (const auto* folder : {"\\TEMPLATE", "\\Global\\Shapes", "\\Global\\Textures"}) {
    const FileCode code = files_.Host().Find(program_.BelowGame(folder) + "\\*.*", found);
    if (code != FileCode::FileNotFound && code != FileCode::PathNotFound)
      RaiseFileError(code, program_.BelowGame(folder));
  }
}

void CleanUp::FillEmptyLists() {
  if (files_.Size(program_.app.CopyFilesList()) != 0) return;
  progress_.Caption("Listing the default files of the game...");
  DefaultFileScan(program_).DeriveLists();
}

void CleanUp::RequireWritablePlaces() {
  const Installation& app = program_.app;
  std::vector<std::string> places = {program_.BelowGame("\\ROUTES"), CutBackslash(FolderOf(app.RoutesIni())),
                                     app.RoutesIni(), app.CurrentList(), app.DefaultList()};
  if (const std::string loaded = catalogue_.Loaded(); loaded != kNoData)
    for (auto& place : {CutBackslash(app.Saves("")), app.Saves(loaded), program_.BelowGame(kWorkingSaves)})
      places.push_back(place);
  for (const auto& place : places) files_.RequireWritable(place);
  const std::string route = program_.BelowGame(kWorkingRoute);
  roomIsTight_ = files_.Host().FreeSpace(route) < kAmpleRoom;
  // A link goes as itself, and a file is refused when the folders are made.
  std::vector<FoundFile> self;
  if (files_.Host().Find(route, self) == FileCode::Ok && self.front().folder() && !self.front().link)
    RequireRemovable(route);
}

/// An empty folder goes without being changed.
void CleanUp::RequireRemovable(const std::string& folder) {
  std::vector<FoundFile> found;
  RaiseFileError(files_.Host().Find(folder + "\\*.*", found), folder);
  if (std::any_of(found.begin(), found.end(), [](const FoundFile& entry) { return !entry.dots(); }))
    files_.RequireWritable(folder);
  for (const auto& entry : found) {
    if (entry.dots() || entry.link) continue;
    const std::string path = folder + "\\" + entry.name;
    if (entry.folder()) {
      RequireRemovable(path);
      continue;
    }
    ++filesThere_;
    if (roomIsTight_) roomFreed_ += RoomOf(path);
  }
}

void CleanUp::RequireRoom() {
  if (!roomIsTight_) return;
  const std::uint64_t needed = RoomNeeded() + kRoomReserve;
  files_.RequireRoom(program_.BelowGame(kWorkingRoute), needed > roomFreed_ ? needed - roomFreed_ : 0);
}

/// Of a file; 0 when there is none.
std::uint64_t CleanUp::RoomOf(const std::string& path) {
  std::uint64_t size = 0;
  return files_.Host().GetSize(path, size) == FileCode::Ok ? RoomFor(size) : 0;
}

/// Copies that fail in silence count, too.
std::uint64_t CleanUp::RoomNeeded() {
  std::uint64_t needed = 0;
  for (const auto& folder :
       {program_.BelowGame("\\TEMPLATE\\"), program_.BelowGame("\\Global\\Shapes\\"),
        program_.BelowGame("\\Global\\Textures\\"), program_.BelowGame(kWorkingSaves) + "\\"})
    for (const auto& name : files_.ListFiles(folder + "*.*")) needed += RoomOf(folder + name);
  for (const auto& line : Lines(files_.ReadAll(program_.app.CopyFilesList())))
    if (!line.empty()) needed += RoomOf(program_.shared.TrainSimPath + "\\" + line);
  return needed;
}

/// All that the user has made is safe, and marked so, before anything goes.
void CleanUp::PutLoadedRouteAway() {
  program_.Step("Putting the saved activities away");
  const LoadMark mark(program_);
  const std::string loaded = catalogue_.Loaded(), cut = mark.Stands() ? mark.Loading() : loaded;
  Rescue rescue(program_, cut == kNoData ? loaded : cut,
                "Cleaning up would have replaced or deleted what nothing else held.");
  RouteStores stores(program_, loaded, rescue);
  if (mark.Stands()) {
    files_.KillIfThere(program_.app.TerrainCacheTemp("*"));
    healed_ = mark.Healed();
    if (IsUsableStem(cut) && files_.FileExists(program_.app.RouteFile(cut)))
      RouteStores(program_, cut, rescue).AddSaves(loaded);
  } else if (loaded != kNoData && !stores.KeepSavesOfLostGame()) {
    stores.RenewSaves();
  }
  files_.Flush(program_.app.Routes());
  mark.Set(kNoData);
  RescueOwnWork(rescue, loaded, cut);
}

void CleanUp::RescueOwnWork(Rescue& rescue, const std::string& loaded, const std::string& cut) {
  program_.Step("Rescuing what only the working route has");
  std::vector<std::string> zips = {loaded};
  if (cut != loaded) zips.push_back(cut);
  OwnFiles own(program_, zips);
  if (loaded != kNoData) own.KeepSaves(rescue);
  {
    FileCount count(progress_, filesThere_);
    own.KeepBelow(rescue, program_.BelowGame(kWorkingRoute), std::ref(count));
  }
  rescue.Close();
  PlacedRecord(program_).Forget();
}

void CleanUp::RemoveWorkingRoute() {
  program_.Step("Removing the working route");
  // What can't be deleted stays in silence, and would be the next route's: it is tried once more.
  const std::string saves = program_.BelowGame(kWorkingSaves);
  if (catalogue_.Loaded() != kNoData && files_.DelTree(saves) > 0) files_.DelTree(saves);
  FileCount count(progress_, filesThere_);
  files_.DelTree(program_.BelowGame(kWorkingRoute), std::ref(count));
}

void CleanUp::MakeFolders() {
  program_.Step("Making the folders of the working route");
  for (const auto folder : kWorkingRouteFolders)
    files_.MakeFolder(program_.BelowGame(kWorkingRoute) + std::string(folder));
  progress_.Yield();
}

void CleanUp::CopyGameFolders() {
  program_.Step("Copying the game's common files");
  const std::string route = program_.BelowGame(kWorkingRoute);
  MakeExtras(program_);  // the first of all clean-ups comes before the start-up that makes them
  const std::array<std::pair<std::string, std::string>, 4> rows = {{
      {program_.BelowGame("\\TEMPLATE\\"), route + "\\"},
      {program_.app.EnvDefaults() + "\\", program_.BelowGame("\\Quillon_Extras\\EnvFiles\\")},
      {program_.BelowGame("\\Global\\Shapes\\"), route + "\\Shapes\\"},
      {program_.BelowGame("\\Global\\Textures\\"), route + "\\Textures\\"},
  }};
  std::uint64_t all = 0;
  for (const auto& row : rows) all += files_.ListFiles(row.first + "*.*").size();
  FileCount count(progress_, all);
  for (const auto& [source, target] : rows) files_.CopyAllFiles(source, target, "*.*", std::ref(count));
  for (const auto* folder : {"\\", "\\Shapes\\", "\\Textures\\"}) MakeWritable(route + folder);
}

/// Games from a disc are read-only, and so are the copies of their files.
void CleanUp::MakeWritable(const std::string& folder) {
  std::vector<FoundFile> found;
  files_.Host().Find(folder + "*.*", found);
  for (const auto& entry : found)
    if (!entry.folder() && (entry.attributes & kReadOnly) != 0)
      files_.SetAttributes(folder + entry.name, kArchive);
}

/// What can't be read is not what is not there.
bool CleanUp::IsThere(const std::string& source) {
  std::uint32_t attributes = 0;
  const FileCode code = files_.Host().GetAttributes(source, attributes);
  if (code == FileCode::AccessDenied) RaiseFileError(code, source);
  return code == FileCode::Ok;
}

void CleanUp::CopyDefaultFiles() {
  program_.Step("Copying the default files");
  const auto lines = Lines(files_.ReadAll(program_.app.CopyFilesList()));
  std::vector<FileSystem::CopyOrder> orders;
  for (const auto& line : lines) {
    std::string source = program_.shared.TrainSimPath + "\\" + line;
    if (!line.empty() && IsThere(source))
      orders.push_back({std::move(source), program_.BelowGame(DestinationOf(line))});
  }
  FileCount count(progress_, orders.size());
  files_.FileCopyMany(orders, [&](std::size_t i) {
    progress_.Value(static_cast<int>(i) + 1);
    files_.SetAttributes(orders[i].to, kArchive);
    count();
  });
}

void CleanUp::ResetLists() {
  program_.Step("Resetting the lists of the working route");
  const std::string masters = program_.app.MiscInfo() + "\\";
  files_.FileCopy(masters + "current.tsl", program_.app.CurrentList());
  files_.FileCopy(masters + "default.tsl", program_.app.DefaultList());
}

void CleanUp::RecordCleanUp() {
  program_.Step("Recording the clean-up");
  PlacedRecord(program_).CleanUpEnds();
  files_.Flush(program_.BelowGame(kWorkingRoute));
  files_.Flush(program_.app.CurrentList());
  LoadMark(program_).Commit(kNoData);
  if (!healed_.empty()) program_.TellHealed(healed_);
}

}  // namespace quillon
