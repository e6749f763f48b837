// The first half of a load: what the user changed goes back to the store, the previous route leaves the
// folder.
#pragma once

#include <string>

#include "catalogue/Catalogue.h"
#include "core/Program.h"

namespace quillon {

class PreviousRoute {
 public:
  PreviousRoute(Program& program, std::string workingRoute);

  /// Saved activities, activities, paths, services and traffic, when the route is still in the catalogue.
  void PutAway();
  void EmptyActivityFolders();
  /// Every file that current.tsl names.
  void RemoveLoadedFiles();
  /// Every `ts-bak-` file that default.tsl names, unless something stands in its old place.
  void GiveBackDefaultFiles();

 private:
  void PutAwayActivities();

  Program& program_;
  Files& files_;
  const std::string WorkingRoute, PreviousZip;
};

}  // namespace quillon
