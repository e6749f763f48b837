#include "loading/PreviousRoute.h"

#include <utility>

#include "catalogue/LoadMark.h"
#include "catalogue/RouteStores.h"
#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "shelf/OwnFiles.h"

namespace quillon {
namespace {

constexpr const char* kWhy = "Loading a route would have replaced or deleted what nothing else held.";

}  // namespace

PreviousRoute::PreviousRoute(Program& program, Progress& progress, std::string workingRoute,
                             std::string loadZip)
    : program_(program),
      files_(program.files),
      progress_(progress),
      WorkingRoute(std::move(workingRoute)),
      LoadZip(std::move(loadZip)),
      PreviousZip(Catalogue(program).Loaded()),
      wasPutAway_(LoadMark(program).Stands()),
      cutZip_(wasPutAway_ ? LoadMark(program).Loading() : ""),
      lists_(program),
      rescue_(program, Owner(), kWhy) {}

void PreviousRoute::PutAway() {
  if (wasPutAway_) {
    TakeInWhatACutLoadLeft();
  } else if (IsInCatalogue()) {
    RouteStores stores(program_, PreviousZip, rescue_);
    stores.RenewSaves();
    if (PreviousZip != kNoData) stores.RenewActivities();
  }
  files_.Flush(program_.app.Routes());
  // After a load that was cut short the mark names that route until its files are out.
  if (!wasPutAway_) LoadMark(program_).Set(LoadZip);
  RescueOwnWork();
  PlacedRecord(program_).LoadBegins();
  // What can't be deleted stays in silence, and would be the next route's: it is tried once more.
  const std::string saves = program_.BelowGame(kWorkingSaves);
  if (IsInCatalogue() && files_.DelTree(saves) > 0) files_.DelTree(saves);
}

/// The game may have been played with the half-built route.
void PreviousRoute::TakeInWhatACutLoadLeft() {
  files_.PartSweep(WorkingRoute + "\\*.*");
  files_.KillIfThere(program_.app.TerrainCacheTemp("*"));
  int saves = 0;
  if (IsUsableStem(cutZip_) && files_.FileExists(program_.app.RouteFile(cutZip_)))
    saves = RouteStores(program_, cutZip_, rescue_).AddSaves(PreviousZip);
  healed_ = LoadMark(program_).Healed();
  if (saves > 0)
    healed_ +=
        "\nFound in the game and kept for " + cutZip_ + ": " + std::to_string(saves) + " saved activities.";
}

/// The routes whose files stand in the working folder.
std::vector<std::string> PreviousRoute::Zips() const {
  return wasPutAway_ ? std::vector{PreviousZip, cutZip_} : std::vector{PreviousZip};
}

const std::string& PreviousRoute::Owner() const {
  return wasPutAway_ && cutZip_ != kNoData ? cutZip_ : PreviousZip;
}

void PreviousRoute::RescueOwnWork() {
  OwnFiles own(program_, Zips());
  if (IsInCatalogue()) own.KeepSaves(rescue_);
  for (const auto* folder : {"\\activities", "\\paths", "\\services", "\\traffic"})
    own.KeepBelow(rescue_, WorkingRoute + folder);
  FileCount count(progress_, lists_.Current().size());
  for (const auto& line : lists_.Current()) {
    count();
    // A script's line may name all that matches.
    if (line.find_first_of("*?") == line.npos) {
      own.KeepIfOwn(rescue_, line);
    } else {
      for (const auto& name : files_.ListFiles(line))
        own.KeepIfOwn(rescue_, std::string(FolderOf(line)) + name);
    }
  }
  std::unordered_set<std::string> goes;
  if (!lists_.Backups().empty())
    for (const auto& line : lists_.Current()) goes.insert(UpperCase(line));
  // A backup goes when something of nobody's list stands in its place.
  for (const auto& backup : lists_.Backups()) {
    const std::string target = LoadLists::TargetOf(backup);
    if (!goes.contains(UpperCase(target)) && files_.FileExists(target) && files_.FileExists(backup))
      own.KeepIfOwn(rescue_, backup);
  }
  rescue_.Flush();
}

void PreviousRoute::RescueOwnTiles() {
  OwnFiles own(program_, Zips());
  for (const std::string folder : {"\\Tiles\\", "\\LO_Tiles\\"})
    for (const auto* pattern : {"*.raw", "*.t"})
      for (const auto& name : files_.ListFiles(WorkingRoute + folder + pattern))
        own.KeepIfOwn(rescue_, WorkingRoute + folder + name);
  rescue_.Close();
  if (wasPutAway_) LoadMark(program_).Set(LoadZip);
}

void PreviousRoute::EmptyActivityFolders() {
  for (const auto* folder : {"\\activities", "\\paths", "\\services", "\\traffic"})
    files_.DelTree(WorkingRoute + folder);
  for (const auto* folder : {"\\ACTIVITIES", "\\PATHS", "\\SERVICES", "\\TRAFFIC"})
    files_.MakeFolder(program_.BelowGame(kWorkingRoute) + folder);
}

void PreviousRoute::RemoveLoadedFiles() {
  const auto spared = wasPutAway_ ? lists_.NeverPlaced() : std::unordered_set<std::string>();
  FileCount count(progress_, lists_.Current().size());
  std::vector<std::string> paths;
  for (const auto& line : lists_.Current()) {
    if (spared.empty() || !spared.contains(UpperCase(line)))
      paths.push_back(line);
    else
      count();
  }
  files_.Host().DeleteMany(paths, [&](std::size_t i, FileCode code) {
    if (code != FileCode::Ok && !files_.IsPathAFolder(paths[i])) files_.KillIfThere(paths[i]);
    count();
  });
}

void PreviousRoute::GiveBackDefaultFiles() {
  FileCount count(progress_, lists_.Backups().size());
  for (const auto& line : lists_.Backups()) {
    count();
    if (!files_.FileExists(line)) continue;
    const std::string target = LoadLists::TargetOf(line);
    if (files_.FileExists(target)) {
      files_.Kill(line);
    } else {
      files_.SetAttributes(line, kArchive);
      files_.Rename(line, target);
    }
  }
}

}  // namespace quillon
