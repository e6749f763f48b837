#include "loading/PreviousRoute.h"

#include <array>
#include <utility>

#include "catalogue/Saves.h"
#include "core/Text.h"

namespace quillon {

PreviousRoute::PreviousRoute(Program& program, std::string workingRoute)
    : program_(program),
      files_(program.files),
      WorkingRoute(std::move(workingRoute)),
      PreviousZip(Catalogue(program).Loaded()) {}

void PreviousRoute::PutAway() {
  if (!files_.FileExists(program_.app.RouteFile(PreviousZip))) return;
  RescueSaves(program_, PreviousZip);
  if (PreviousZip != kNoData) PutAwayActivities();
}

void PreviousRoute::PutAwayActivities() {
  const Installation& app = program_.app;
  const std::array<std::pair<std::string, std::string>, 4> folders = {{
      {"\\Activities\\", app.Activities(PreviousZip)},
      {"\\Paths\\", app.Paths(PreviousZip)},
      {"\\Services\\", app.Services(PreviousZip)},
      {"\\Traffic\\", app.Traffic(PreviousZip)},
  }};
  for (const auto& [ignored, store] : folders) {
    if (!files_.FileExists(store)) continue;
    files_.DelTree(store);
    files_.MakeFolder(store);
  }
  for (const auto& [folder, store] : folders) CopyForSure(files_, WorkingRoute + folder, store + "\\", "*.*");
}

void PreviousRoute::EmptyActivityFolders() {
  for (const auto* folder : {"\\activities", "\\paths", "\\services", "\\traffic"})
    files_.DelTree(WorkingRoute + folder);
  for (const auto* folder : {"\\ACTIVITIES", "\\PATHS", "\\SERVICES", "\\TRAFFIC"})
    files_.MakeFolder(program_.BelowGame(kWorkingRoute) + folder);
}

void PreviousRoute::RemoveLoadedFiles() {
  for (const auto& line : Lines(files_.ReadAll(program_.app.CurrentList())))
    if (!line.empty()) files_.KillIfThere(line);
}

void PreviousRoute::GiveBackDefaultFiles() {
  for (const auto& line : Lines(files_.ReadAll(program_.app.DefaultList()))) {
    if (line.empty() || !files_.FileExists(line)) continue;
    const std::string target = ReplaceAll(line, kBackupPrefix, "");
    if (files_.FileExists(target)) {
      files_.Kill(line);
    } else {
      files_.SetAttributes(line, kArchive);
      files_.Rename(line, target);
    }
  }
}

}  // namespace quillon
