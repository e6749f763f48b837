// The first half of a load: what the user changed goes back to the store, the previous route leaves the
// folder.
#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"
#include "catalogue/LoadLists.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "shelf/Rescue.h"

namespace quillon {

class PreviousRoute {
 public:
  PreviousRoute(Program& program, Progress& progress, std::string workingRoute, std::string loadZip);

  /// A load or a clean-up was cut short: the previous route is in its stores already.
  bool WasPutAway() const { return wasPutAway_; }
  /// What became of a run that was cut short, for the user; empty when there was none.
  const std::string& Healed() const { return healed_; }
  const LoadLists& Lists() const { return lists_; }

  /// Saved activities, activities, paths, services and traffic go to the stores, when the route is still in
  /// the catalogue. Nothing is deleted before all of it is on the disk and marked as put away.
  void PutAway();
  /// What the steps to come would delete, and nothing else holds, goes to the shelf.
  void RescueOwnWork();
  /// The same for tiles that no list names. After GiveBackDefaultFiles: only such are left.
  void RescueOwnTiles();
  void EmptyActivityFolders();
  /// Every file that current.tsl names.
  void RemoveLoadedFiles();
  /// Every `ts-bak-` file that default.tsl names, unless something stands in its old place.
  void GiveBackDefaultFiles();

 private:
  void TakeInWhatACutLoadLeft();
  std::vector<std::string> Zips() const;
  const std::string& Owner() const;
  bool IsInCatalogue() const { return files_.FileExists(program_.app.RouteFile(PreviousZip)); }

  Program& program_;
  Files& files_;
  Progress& progress_;
  const std::string WorkingRoute, LoadZip, PreviousZip;
  const bool wasPutAway_;
  const std::string cutZip_;  // the route that a load cut short was bringing in
  const LoadLists lists_;
  Rescue rescue_;  // of all that this load would take from the previous route
  std::string healed_;
};

}  // namespace quillon
