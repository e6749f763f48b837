#include "loading/LoadPreflight.h"

#include <algorithm>

#include "catalogue/Catalogue.h"
#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "loading/Materialisation.h"

namespace quillon {

void LoadPreflight::Run() {
  RequireFolders();
  ReadLists();
  RefuseImpossiblePaths();
  RefuseTakenBackups();
  RefuseReadOnlyBackups();
  RequireTextureFolders();
  RequireRoom();
  RequireWritablePlaces();
}

void LoadPreflight::RequireFolders() {
  if (!files_.IsPathAFolder(WorkingRoute)) throw RunTimeError(ErrorNumber::PathNotFound, WorkingRoute);
  for (const auto* folder : {"\\ACTIVITIES", "\\PATHS", "\\SERVICES", "\\TRAFFIC"}) {
    const std::string path = WorkingRoute + folder;
    if (files_.FileExists(path) && !files_.IsPathAFolder(path))
      throw RunTimeError(ErrorNumber::PathFileAccessError, path, "a file stands where a folder is wanted");
  }
  const std::string consists = CutBackslash(program_.BelowGame(kGameConsists));
  const bool bringsConsists = files_.FileExists(program_.app.Consists(program_.shared.LoadZip) + "\\*.con");
  if (bringsConsists && !files_.IsPathAFolder(consists))
    throw RunTimeError(ErrorNumber::PathNotFound, consists);
}

void LoadPreflight::ReadLists() {
  for (const auto& line : lists_.Current()) removed_.insert(UpperCase(line));
  for (const auto& line : lists_.Backups()) {
    if (!files_.FileExists(line)) continue;
    const std::string target = LoadLists::TargetOf(line);
    if (StandsAfterwards(target)) lostBackups_.push_back(line);
    coveredFiles_.push_back(line);
    removed_.insert(UpperCase(line));
    restored_.insert(UpperCase(target));
  }
}

/// What lies in the folders that a load empties, and the tiles, are in nobody's way.
bool LoadPreflight::GoesBeforehand(const std::string& upperPath) const {
  const std::string_view below =
      std::string_view(upperPath).substr(std::min(upperPath.size(), WorkingRoute.size()));
  const auto isIn = [&](std::string_view folder) {
    return below.starts_with(folder) && below.size() > folder.size();
  };
  for (const auto* folder : {"\\ACTIVITIES\\", "\\PATHS\\", "\\SERVICES\\", "\\TRAFFIC\\"})
    if (isIn(folder)) return true;
  for (const std::string_view folder : {"\\TILES\\", "\\LO_TILES\\"})
    if (isIn(folder) && below.find('\\', folder.size()) == below.npos &&
        (below.ends_with(".T") || below.ends_with(".RAW")))
      return true;
  return false;
}

bool LoadPreflight::StandsAfterwards(const std::string& path) {
  return StandsAfterwards(path, files_.FileExists(path));
}

bool LoadPreflight::StandsAfterwards(const std::string& path, bool standsNow) {
  if (!standsNow && restored_.empty()) return false;
  const std::string upper = UpperCase(path);
  return restored_.contains(upper) || (standsNow && !removed_.contains(upper) && !GoesBeforehand(upper));
}

void LoadPreflight::RefuseImpossiblePaths() {
  const auto refuse = [](const std::string& path) {
    throw RunTimeError(ErrorNumber::PathFileAccessError, path, "a file and a folder want the same name");
  };
  if (const std::string name = archive_.FileWhereFolderIsWanted(); !name.empty())
    refuse(archive_.InputFile + "\\" + name);
  std::unordered_set<std::string_view> folders;
  for (const auto& path : map_.lstRouteStrippedPath) {
    // Cutting the route's root off can lay bare what the whole name hid.
    if (HarmIn(path) != nullptr || NormalStoredName(path) != Composed(path))
      throw RunTimeError(ErrorNumber::InvalidFileFormat, archive_.InputFile,
                         "it holds no usable name: " + path);
    const std::string placed = WorkingRoute + "\\" + path;
    std::uint32_t attributes = 0;
    const bool stands = files_.Host().GetAttributes(placed, attributes) == FileCode::Ok;
    if (stands && (attributes & kFolder) != 0 && !GoesBeforehand(UpperCase(placed))) refuse(placed);
    covered_.push_back(StandsAfterwards(placed, stands));
    // Whoever has met a folder has met those above it.
    for (auto at = path.rfind('\\'); at != path.npos; at = path.rfind('\\', at - 1)) {
      const std::string_view below = std::string_view(path).substr(0, at);
      if (!folders.insert(below).second) break;
      const std::string folder = WorkingRoute + "\\" + std::string(below);
      if (StandsAfterwards(folder) && !files_.IsPathAFolder(folder)) refuse(folder);
    }
  }
}

/// Each covered file needs its backup name free, also of what the route itself places there before, and no
/// path may come twice: it would cover itself.
void LoadPreflight::RefuseTakenBackups() {
  std::unordered_set<std::string> taken;
  for (std::size_t i = 0; i < map_.lstRouteStrippedPath.size(); ++i) {
    const std::string& stripped = map_.lstRouteStrippedPath[i];
    const bool isNew = taken.insert(UpperCase(stripped)).second;
    if (isNew && !covered_[i]) continue;
    const std::string backup = BackupPath(WorkingRoute, stripped);
    if (!isNew)
      throw RunTimeError(ErrorNumber::FileAlreadyExists, backup,
                         "the route file holds " + stripped + " twice");
    if (taken.contains(UpperCase(std::string_view(backup).substr(WorkingRoute.size() + 1))))
      throw RunTimeError(
          ErrorNumber::FileAlreadyExists, backup,
          "the route file holds this name, which a default file needs when the route covers it");
    if (StandsAfterwards(backup))
      throw RunTimeError(
          ErrorNumber::FileAlreadyExists, backup,
          "a default file can't be kept under this name; Clean puts the working route in order");
  }
}

/// The load clears no attributes of a backup that has lost its place.
void LoadPreflight::RefuseReadOnlyBackups() {
  for (const auto& backup : lostBackups_) files_.RequireWritable(backup);
}

/// The textures that each load copies from a default route.
void LoadPreflight::RequireTextureFolders() {
  for (const std::string folder : {"\\Textures", "\\Textures\\Snow"}) {
    const std::string lower = LowerCase(folder.substr(1)) + "\\";
    const auto& paths = map_.lstRouteStrippedPath;
    const bool comes = std::any_of(paths.begin(), paths.end(),
                                   [&](const std::string& path) { return path.starts_with(lower); });
    const bool copied =
        files_.FileExists(program_.BelowGame("\\Routes\\USA1") + folder + "\\ACleanTrack*.ace") ||
        files_.FileExists(program_.BelowGame("\\Routes\\USA1") + folder + "\\ATrackTun*.ace");
    if (copied && !comes && !files_.IsPathAFolder(WorkingRoute + folder))
      throw RunTimeError(ErrorNumber::PathNotFound, WorkingRoute + folder);
  }
}

std::uint64_t LoadPreflight::RoomOfFiles(const std::string& pattern) const {
  std::uint64_t sum = 0;
  std::vector<FoundFile> found;
  files_.Host().Find(pattern, found);
  for (const auto& file : found)
    if (!file.folder()) sum = SaturatedSum(sum, RoomFor(file.size));
  return sum;
}

/// The route, its terrain, its saved activities, and what comes from the store.
std::uint64_t LoadPreflight::RoomOfRoute() const {
  std::uint64_t needed = 0;
  for (const int entry : map_.entries)
    needed = SaturatedSum(needed, RoomFor(archive_.Entries()[static_cast<std::size_t>(entry)].size));
  const std::string& zip = program_.shared.LoadZip;
  const Installation& app = program_.app;
  if (files_.FileExists(app.TerrainCache(zip))) {
    ArchiveReader cache(files_, [] {});
    cache.InputFile = app.TerrainCache(zip);
    cache.ReadDirectory();
    for (const auto& entry : cache.Entries()) needed = SaturatedSum(needed, RoomFor(entry.size));
  }
  for (const auto& folder :
       {app.Saves(zip), app.Activities(zip), app.Paths(zip), app.Services(zip), app.Traffic(zip)})
    needed = SaturatedSum(needed, RoomOfFiles(folder + "\\*.*"));
  return needed;
}

/// The stores of the previous route beside their old state, and its terrain in a cache.
std::uint64_t LoadPreflight::RoomOfPuttingAway() const {
  std::uint64_t needed = kRoomReserve;
  const std::string previous = Catalogue(program_).Loaded();
  if (!files_.FileExists(program_.app.RouteFile(previous))) return needed;
  needed = SaturatedSum(needed, RoomOfFiles(program_.BelowGame(kWorkingSaves) + "\\*.sav"));
  for (const auto* folder : {"\\ACTIVITIES", "\\PATHS", "\\SERVICES", "\\TRAFFIC"})
    needed = SaturatedSum(needed, RoomOfFiles(WorkingRoute + folder + "\\*.*"));
  if (!files_.FileExists(program_.app.TerrainCache(previous)))
    for (const auto* pattern :
         {"\\TILES\\*_e.raw", "\\TILES\\*_n.raw", "\\LO_TILES\\*_e.raw", "\\LO_TILES\\*_n.raw"})
      needed = SaturatedSum(needed, RoomOfFiles(WorkingRoute + pattern));
  return needed;
}

std::uint64_t LoadPreflight::RoomFreed() const {
  std::uint64_t freed = 0, size = 0;
  for (const auto& path : lists_.Current())
    if (files_.Host().GetSize(path, size) == FileCode::Ok) freed += RoomFor(size);
  return freed;
}

void LoadPreflight::RequireRoom() {
  const std::string app = program_.app.Routes();
  const bool oneDisk = files_.Host().DiskOf(app).name == files_.Host().DiskOf(WorkingRoute).name;
  const std::uint64_t away = RoomOfPuttingAway(), room = SaturatedSum(RoomOfRoute(), kRoomReserve);
  // What is put away is written before anything is freed.
  files_.RequireRoom(app, away);
  const std::uint64_t whole = oneDisk ? SaturatedSum(room, away) : room;
  const std::uint64_t free = files_.Host().FreeSpace(WorkingRoute);
  std::uint64_t needed = whole;
  // Only worth adding up when it is tight.
  if (whole > free) {
    const std::uint64_t freed = RoomFreed();
    needed = whole > freed ? whole - freed : 0;
    files_.RequireRoom(WorkingRoute, needed);
  }
  const auto tell = [&](const std::string& path, std::uint64_t bytes, std::uint64_t left) {
    if (bytes / 10 + bytes < left || bytes <= kRoomReserve) return;
    if (!tightRoom_.empty()) tightRoom_ += "\n";
    tightRoom_ += path + ": " + std::to_string((bytes >> 20) + 1) + " MB needed, " +
                  std::to_string(left >> 20) + " MB free";
  };
  tell(program_.shared.TrainSimPath, needed, free);
  if (!oneDisk) tell(program_.app.App(), away, files_.Host().FreeSpace(app));
}

/// Where the load deletes, renames, makes or writes something, it needs the right to.
void LoadPreflight::RequireWritablePlaces() {
  std::unordered_set<std::string> places = {WorkingRoute, program_.BelowGame(kSaves),
                                            program_.BelowGame(kWorkingSaves)};
  // Emptied, or written to, whatever the route brings.
  for (const std::string folder : {"\\ACTIVITIES", "\\PATHS", "\\SERVICES", "\\TRAFFIC", "\\TILES",
                                   "\\LO_TILES", "\\TEXTURES", "\\TEXTURES\\SNOW"})
    places.insert(WorkingRoute + folder);
  for (auto& place : StoresAndLists()) places.insert(std::move(place));
  if (BringsNewConsist()) places.insert(CutBackslash(program_.BelowGame(kGameConsists)));
  const auto addFolderOf = [&](const std::string& path) { places.insert(CutBackslash(FolderOf(path))); };
  for (const auto& path : lists_.Current()) addFolderOf(path);
  for (const auto& path : coveredFiles_) addFolderOf(path);
  std::unordered_set<std::string_view> routeFolders;
  for (const auto& path : map_.lstRouteStrippedPath)
    if (routeFolders.insert(FolderOf(path)).second) addFolderOf(WorkingRoute + "\\" + path);
  for (const auto& place : places) files_.RequireWritable(place);
}

/// The stores' own folders, those of the previous route in them, and the records of what is loaded: a write
/// to routes.ini that fails is not told.
std::vector<std::string> LoadPreflight::StoresAndLists() {
  const Installation& app = program_.app;
  std::vector<std::string> places = {CutBackslash(FolderOf(app.RoutesIni())), app.RoutesIni(),
                                     app.CurrentList(), app.DefaultList(),
                                     CutBackslash(FolderOf(app.TerrainCache("")))};
  if (!files_.FileExists(app.Custom(program_.shared.LoadZip))) places.push_back(CutBackslash(app.Custom("")));
  const std::string previous = Catalogue(program_).Loaded();
  const bool isPutAway = files_.FileExists(app.RouteFile(previous));
  for (const auto store : {&Installation::Saves, &Installation::Activities, &Installation::Paths,
                           &Installation::Services, &Installation::Traffic}) {
    places.push_back(CutBackslash((app.*store)("")));
    if (isPutAway) places.push_back((app.*store)(previous));
  }
  return places;
}

bool LoadPreflight::BringsNewConsist() {
  const auto names = files_.ListFiles(program_.app.Consists(program_.shared.LoadZip) + "\\*.con");
  return std::any_of(names.begin(), names.end(),
                     [this](const std::string& name) { return IsNewConsist(program_, name); });
}

}  // namespace quillon
