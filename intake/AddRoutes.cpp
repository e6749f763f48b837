#include "intake/AddRoutes.h"

#include <algorithm>
#include <unordered_set>

#include "catalogue/Previews.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"
#include "intake/Classification.h"
#include "intake/CompressionAndCatalogue.h"
#include "intake/DamageCheck.h"
#include "intake/ForeignDownloads.h"
#include "intake/InformationExtraction.h"
#include "intake/RouteRebuilding.h"
#include "intake/RouteVerification.h"
#include "intake/UnusableDownloads.h"

namespace quillon {

void AddRoutes::Run() {
  const FileSystem::Pass pass(state_.program.files.Host());
  cancelCheckpoint_();
  RouteRebuilding(state_).FinishLeftOvers();
  state_.journal.Begin();
  PrepareDownloads();
  if (NothingToAdd()) return state_.journal.End();
  RequireMasters();
  RefuseEqualNames();
  Classify();
  Rebuild();
  RouteVerification(state_).Run();
  DamageCheck(state_).Run();
  InformationExtraction(state_).Run();
  Previews(state_.program, state_.progress, [this](const auto& what, const auto& zip) {
    state_.Step(what, zip);
  }).Run(state_.ListFinal);
  CompressionAndCatalogue(state_).Run();
  RemoveWorkingZips();
  RemoveRebuiltOriginals();
  state_.program.shared.DownloadAtWork.clear();
  state_.journal.End();
  state_.progress.Caption("Finishing Up!");
  TellResult();
}

void AddRoutes::PrepareDownloads() {
  // Triage has done so, where it came before.
  if (state_.program.shared.RebuildAfterCleanUp) {
    state_.program.shared.IntakeBegan = LocalTime(kLogTime);
    UnusableDownloads(state_).Run();
    ForeignDownloads(state_).Run();
  }
  for (const auto& zip : state_.journal.Rebuilt()) state_.verdicts.Rebuilt(zip, "Quillon-" + zip);
  for (const auto& [zip, file] : state_.journal.Converted()) {
    state_.converted.try_emplace(zip, file);
    if (ForeignDownloads::IsCheckedByRebuild(file)) state_.sound.insert(zip);
  }
}

bool AddRoutes::NothingToAdd() {
  if (!state_.DownloadedZips().empty()) return false;
  state_.progress.Caption(state_.program.shared.ZipsSetAside ? "No new routes added." : kNothingFound);
  state_.progress.Colour(kRed);
  state_.progress.Value(100);
  return true;
}

void AddRoutes::RequireMasters() {
  const std::string picture = state_.program.app.NoImagePicture();
  if (!state_.program.files.FileExists(picture)) throw RunTimeError(ErrorNumber::FileNotFound, picture);
}

/// Where case matters to the disk, two downloads may share a zip name: one of them would be lost on the way.
void AddRoutes::RefuseEqualNames() {
  std::unordered_set<std::string> names;
  for (const auto& zip : state_.DownloadedZips()) {
    state_.Step("Looking for downloads of one name", zip);
    if (!names.insert(UpperCase(zip)).second)
      throw RunTimeError(ErrorNumber::FileAlreadyExists, state_.Download(zip),
                         "two downloads have names that differ in case only");
  }
}

void AddRoutes::Classify() {
  Classification(state_).Run();
  state_.ListFinal.clear();
  state_.progress.Caption("Generating route info...");
  cancelCheckpoint_();
  state_.progress.Value(0);
}

void AddRoutes::Rebuild() {
  RouteRebuilding rebuilding(state_);
  rebuilding.RebuildInnerZips();
  rebuilding.RepackTopLevelRoutes();
}

void AddRoutes::RemoveWorkingZips() {
  state_.program.Step("Removing the working zips");
  state_.program.files.Flush(state_.program.app.Routes());
  KeepOlderOriginals();  // while the zips are there, what is cut short is done once more
  for (const auto& zip : state_.ListofRouteZips) state_.program.files.KillIfThere(state_.Download(zip));
}

/// What classification copied of zips that were rebuilt before it: only true originals stay.
void AddRoutes::RemoveRebuiltOriginals() {
  for (const auto& folder : {state_.program.app.Installed(), state_.program.app.NotInstalled()})
    for (const auto& name : state_.program.files.ListFiles(folder + "\\Quillon-*.*"))
      state_.program.files.KillIfThere(folder + "\\" + CutAtLastDot(name) + ".zip");
}

void AddRoutes::KeepOlderOriginals() {
  const auto& taken = state_.ListofRouteZips;
  const auto isTaken = [&](const std::string& zip) {
    return std::find(taken.begin(), taken.end(), zip) != taken.end();
  };
  for (const auto& [zip, file] : state_.converted)
    if (isTaken(zip) || isTaken("Quillon-" + zip)) ForeignDownloads(state_).KeepOlderOriginals(zip);
}

void AddRoutes::TellResult() {
  const int count = state_.RoutesCopied;
  if (count >= 1) {
    state_.progress.Colour(kGreen);
    state_.progress.Caption(count == 1 ? "Finished adding 1 new route."
                                       : "Finished adding " + std::to_string(count) + " new routes.");
  } else {
    state_.progress.Caption("No new routes added.");
  }
  state_.progress.Value(100);
}

}  // namespace quillon
