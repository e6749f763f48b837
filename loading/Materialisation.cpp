#include "loading/Materialisation.h"

#include "core/Text.h"
#include "loading/MaterialTables.h"

namespace quillon {

std::string BackupPath(std::string_view workingRoute, std::string_view strippedPath) {
  return std::string(workingRoute) + "\\" + std::string(FolderOf(strippedPath)) + std::string(kBackupPrefix) +
         std::string(FileNameOf(strippedPath));
}

void Materialisation::WriteCurrentList(const RouteMap& map) {
  std::string lines;
  for (const auto& path : map.lstRouteStrippedPath) lines += WorkingRoute + "\\" + path + "\r\n";
  files_.WriteAll(program_.app.CurrentList(), lines);
}

void Materialisation::PlaceRouteFiles(ArchiveReader& archive, const RouteMap& map) {
  std::vector<ArchiveReader::Placement> placements;
  placements.reserve(map.entries.size());
  for (std::size_t i = 0; i < map.entries.size(); ++i)
    placements.push_back({map.entries[i], WorkingRoute + "\\" + map.lstRouteStrippedPath[i]});

  ListFile defaultList(files_, program_.app.DefaultList());
  archive.OnProgress = [&](const ArchiveReader& running) {
    progress_.Detail(running.FilesDone(), placements.size(), "files");
    progress_.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    progress_.Yield();
  };
  archive.Place(placements, [&](const ArchiveReader::Placement& placement) {
    if (files_.FileExists(placement.path)) {
      const std::string backup =
          BackupPath(WorkingRoute, std::string_view(placement.path).substr(WorkingRoute.size() + 1));
      if (files_.FileExists(backup)) throw RunTimeError(ErrorNumber::FileAlreadyExists, backup);
      files_.SetAttributes(placement.path, kArchive);
      // The line first: a crash between the two leaves a line that finds no file, never a file without a
      // line.
      defaultList.Add(backup);
      files_.Rename(placement.path, backup);
    }
    LoadProgress += program_.random.Whole(15);
    if (LoadProgress > 100) LoadProgress = 5;
    progress_.Value(LoadProgress);
  });
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
  for (const auto& name : files_.ListFiles(source + "*.*")) {
    if (files_.FileExists(destination + name)) files_.SetAttributes(destination + name, kArchive);
    if (fileByFile) files_.FileCopy(source + name, destination + name);
  }
  files_.CopyAllFiles(source, destination, "*.*");
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
      // Games from a disc are read-only, and so are the copies of their files.
      files_.SetAttributes(InRoute(folder + name), kArchive);
      files_.FileCopy(source, InRoute(folder + name));
    }
}

void Materialisation::CopyExtras() {
  for (const auto& [source, destination] : kExtrasRows)
    files_.CopyAllFiles(program_.BelowGame(kExtras) + std::string(source), InRoute(destination), "*.*");
}

void Materialisation::CopyCustomFiles() {
  for (const auto& [source, destination] : kCustomRows)
    files_.CopyAllFiles(program_.app.Custom(LoadZip) + std::string(source), InRoute(destination), "*.*");
}

void Materialisation::SpreadCustomAndStuffed() {
  Spread("\\Custom");
  Spread("\\Stuffed");
}

void Materialisation::Spread(const std::string& folder) {
  const std::string source = InRoute(folder);
  for (const auto& [destination, pattern] : kTopRows)
    files_.CopyAllFiles(source + "\\", InRoute(destination), pattern);
  if (folder == "\\Stuffed") files_.CopyAllFiles(source + "\\Root\\", InRoute("\\"), "*.*");
  for (const auto& [below, pattern] : kFolderRows)
    files_.CopyAllFiles(source + std::string(below), InRoute(below), pattern);
}

}  // namespace quillon
