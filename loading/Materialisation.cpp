#include "loading/Materialisation.h"

#include <functional>
#include <unordered_set>

#include "catalogue/LoadLists.h"
#include "catalogue/RouteStores.h"
#include "core/text/Text.h"
#include "loading/MaterialTables.h"
#include "shelf/OwnFiles.h"

namespace quillon {

std::string BackupPath(std::string_view workingRoute, std::string_view strippedPath) {
  return std::string(workingRoute) + "\\" + std::string(FolderOf(strippedPath)) + std::string(kBackupPrefix) +
         std::string(FileNameOf(strippedPath));
}

void Materialisation::WriteLists(const RouteMap& map, const std::vector<bool>& mayCover) {
  OwnFiles own(program_, {LoadZip});
  std::vector<std::string> current, covered, ownCovered;
  std::unordered_set<std::string> planned;  // backup names to come, upper case: the archive may cover them
  backups_.clear();
  for (std::size_t i = 0; i < map.lstRouteStrippedPath.size(); ++i) {
    const std::string& stripped = map.lstRouteStrippedPath[i];
    const std::string& path = current.emplace_back(WorkingRoute + "\\" + stripped);
    std::string& backup = backups_.emplace_back();
    const bool coversBackup = Contains(stripped, kBackupPrefix) && planned.contains(UpperCase(path));
    if (!coversBackup && !(mayCover[i] && files_.FileExists(path))) continue;
    backup = BackupPath(WorkingRoute, stripped);
    if (files_.FileExists(backup)) throw RunTimeError(ErrorNumber::FileAlreadyExists, backup);
    if (own.IsOwn(path)) ownCovered.push_back(path);
    planned.insert(UpperCase(backup));
    covered.push_back(backup);
  }
  if (!ownCovered.empty()) PlacedRecord(program_).NoteOwn(ownCovered);
  LoadLists::Write(program_, current, covered);
}

void Materialisation::PlaceRouteFiles(ArchiveReader& archive, const RouteMap& map) {
  std::vector<ArchiveReader::Placement> placements;
  placements.reserve(map.entries.size());
  for (std::size_t i = 0; i < map.entries.size(); ++i)
    placements.push_back({map.entries[i], WorkingRoute + "\\" + map.lstRouteStrippedPath[i]});

  archive.OnProgress = [&](const ArchiveReader& running) {
    progress_.Detail(running.FilesDone(), placements.size(), "files");
    progress_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    progress_.Yield();
  };
  std::size_t next = 0;
  archive.Place(placements, [&](const ArchiveReader::Placement& placement) {
    if (const std::string& backup = backups_[next++]; !backup.empty()) {
      files_.SetAttributes(placement.path, kArchive);
      files_.Rename(placement.path, backup);
    }
    LoadProgress += program_.random.Whole(15);
    if (LoadProgress > 100) LoadProgress = 5;
    progress_.Value(LoadProgress);
  });
  progress_.Detail(0, 0, {});
}

void Materialisation::CopyActivities() {
  const std::string defaults = program_.app.DefaultActivities() + "\\", zip = LoadZip + "\\";
  if (files_.FileExists(defaults + "activities\\" + zip + "*.act")) {
    for (const std::string folder : {"activities\\", "paths\\", "services\\", "traffic\\"})
      files_.CopyAllFiles(defaults + folder + zip, InRoute("\\") + folder, "*.*");
  }
  CopyOwnActivities(program_.app.Activities(LoadZip) + "\\", InRoute("\\activities\\"), false);
  CopyOwnActivities(program_.app.Services(LoadZip) + "\\", InRoute("\\services\\"), true);
  CopyOwnActivities(program_.app.Paths(LoadZip) + "\\", InRoute("\\paths\\"), true);
  CopyOwnActivities(program_.app.Traffic(LoadZip) + "\\", InRoute("\\traffic\\"), true);
}

void Materialisation::CopyOwnActivities(const std::string& source, const std::string& destination,
                                        bool fileByFile) {
  std::vector<FileSystem::CopyOrder> orders;
  for (const auto& name : files_.ListFiles(source + "*.*")) {
    orders.push_back({source + name, destination + name});
    if (files_.FileExists(destination + name)) files_.SetAttributes(destination + name, kArchive);
  }
  if (fileByFile) files_.FileCopyMany(orders, [](std::size_t) {});
  CopyFromStore(program_, source, destination, "*.*");
}

bool IsNewConsist(const Program& program, const std::string& name) {
  return !program.files.FileExists(program.BelowGame(kGameConsists) + name) &&
         !program.files.FileExists(program.BelowGame(kBackedUpConsists) + name);
}

void Materialisation::CopyConsists() {
  const std::string source = program_.app.Consists(LoadZip) + "\\";
  for (const auto& name : files_.ListFiles(source + "*.con")) {
    if (!IsNewConsist(program_, name)) continue;
    program_.shared.CustomConsistsAdded = true;
    files_.SetAttributes(source + name, kArchive);
    files_.FileCopy(source + name, program_.BelowGame(kGameConsists) + name);
  }
}

void Materialisation::CopyTrackTextures() {
  for (const std::string folder : {"\\Textures\\", "\\Textures\\Snow\\"})
    for (const std::string name : {"ACleanTrack1.ace", "ACleanTrack2.ace", "ACleanTrackBase.ace",
                                   "ATrackTunFloor.ace", "ATrackTunWall.ace"}) {
      const std::string source = program_.BelowGame("\\Routes\\USA1") + folder + name;
      if (!files_.FileExists(source)) continue;
      files_.FileCopy(source, InRoute(folder + name));
      // Games from a disc are read-only: the next load copies over it again.
      files_.SetAttributes(InRoute(folder + name), kArchive);
    }
}

void Materialisation::CopyExtras() {
  std::vector<Copy> copies;
  for (const auto& [source, destination] : kExtrasRows)
    copies.push_back({program_.BelowGame(kExtras) + std::string(source), InRoute(destination), "*.*"});
  CopyAll(copies);
}

void Materialisation::CopyCustomFiles() {
  std::vector<Copy> copies;
  for (const auto& [source, destination] : kCustomRows)
    copies.push_back({program_.app.Custom(LoadZip) + std::string(source), InRoute(destination), "*.*"});
  CopyAll(copies);
}

void Materialisation::CopyAll(const std::vector<Copy>& copies) {
  std::uint64_t all = 0;
  for (const auto& copy : copies) all += files_.ListFiles(copy.source + std::string(copy.pattern)).size();
  FileCount count(progress_, all);
  for (const auto& [source, destination, pattern] : copies)
    files_.CopyAllFiles(source, destination, pattern, std::ref(count));
}

void Materialisation::SpreadCustomAndStuffed() {
  Spread("\\Custom");
  Spread("\\Stuffed");
}

void Materialisation::Spread(const std::string& folder) {
  const std::string source = InRoute(folder);
  std::vector<Copy> copies;
  for (const auto& [destination, pattern] : kTopRows)
    copies.push_back({source + "\\", InRoute(destination), pattern});
  if (folder == "\\Stuffed") copies.push_back({source + "\\Root\\", InRoute("\\"), "*.*"});
  for (const auto& [below, pattern] : kFolderRows)
    copies.push_back({source + std::string(below), InRoute(below), pattern});
  CopyAll(copies);
}

}  // namespace quillon
