#include "loading/LoadPreflight.h"

#include <algorithm>

#include "catalogue/Catalogue.h"
#include "core/Text.h"
#include "core/archive/ArchiveNames.h"
#include "loading/Materialisation.h"

namespace quillon {

void LoadPreflight::Run() {
  RequireFolders();
  ReadLists();
  RefuseImpossiblePaths();
  RefuseTakenBackups();
  RefuseReadOnlyBackups();
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
  for (const auto& line : Lines(files_.ReadAll(program_.app.CurrentList())))
    if (!line.empty() && removed_.insert(UpperCase(line)).second) loadedFiles_.push_back(line);
  for (const auto& line : Lines(files_.ReadAll(program_.app.DefaultList()))) {
    if (line.empty() || !files_.FileExists(line)) continue;
    const std::string target = ReplaceAll(line, kBackupPrefix, "");
    if (StandsAfterwards(target)) lostBackups_.push_back(line);
    coveredFiles_.push_back(line);
    removed_.insert(UpperCase(line));
    restored_.insert(UpperCase(target));
  }
}

bool LoadPreflight::StandsAfterwards(const std::string& path) {
  const bool standsNow = files_.FileExists(path);
  if (!standsNow && restored_.empty()) return false;
  const std::string upper = UpperCase(path);
  return restored_.contains(upper) || (standsNow && !removed_.contains(upper));
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
    if (const char* harm = HarmIn(path))
      throw RunTimeError(ErrorNumber::InvalidFileFormat, archive_.InputFile, harm);
    if (files_.IsPathAFolder(WorkingRoute + "\\" + path)) refuse(WorkingRoute + "\\" + path);
    for (auto at = path.find('\\'); at != path.npos; at = path.find('\\', at + 1)) {
      const std::string_view below = std::string_view(path).substr(0, at);
      if (!folders.insert(below).second) continue;
      const std::string folder = WorkingRoute + "\\" + std::string(below);
      if (StandsAfterwards(folder) && !files_.IsPathAFolder(folder)) refuse(folder);
    }
  }
}

/// Each covered file needs its backup name free, and no path may come twice: it would cover itself.
void LoadPreflight::RefuseTakenBackups() {
  std::unordered_set<std::string> taken;
  for (const auto& stripped : map_.lstRouteStrippedPath) {
    const std::string backup = BackupPath(WorkingRoute, stripped);
    if (!taken.insert(UpperCase(stripped)).second)
      throw RunTimeError(ErrorNumber::FileAlreadyExists, backup,
                         "the route file holds " + stripped + " twice");
    if (StandsAfterwards(WorkingRoute + "\\" + stripped) && StandsAfterwards(backup))
      throw RunTimeError(
          ErrorNumber::FileAlreadyExists, backup,
          "a default file can't be kept under this name; Clean puts the working route in order");
  }
}

/// The load clears no attributes of a backup that has lost its place.
void LoadPreflight::RefuseReadOnlyBackups() {
  for (const auto& backup : lostBackups_) files_.RequireWritable(backup);
}

void LoadPreflight::RequireRoom() {
  std::uint64_t needed = 0, freed = 0;
  for (const int entry : map_.entries)
    needed = SaturatedSum(needed, RoomFor(archive_.Entries()[static_cast<std::size_t>(entry)].size));
  // What is put away is written before anything is freed.
  files_.RequireRoom(program_.app.Routes(), kRoomReserve);
  // Only worth adding up when it is tight.
  if (SaturatedSum(needed, kRoomReserve) <= files_.Host().FreeSpace(WorkingRoute)) return;
  for (const auto& path : loadedFiles_) {
    std::uint64_t size = 0;
    if (files_.Host().GetSize(path, size) == FileCode::Ok) freed += RoomFor(size);
  }
  files_.RequireRoom(WorkingRoute, SaturatedSum(needed > freed ? needed - freed : 0, kRoomReserve));
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
  for (const auto& path : loadedFiles_) addFolderOf(path);
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
