// Judges routes that are not loaded, from their stores and their files: nothing in the game is changed.
#pragma once

#include <string>
#include <vector>

#include "checkup/CauseList.h"
#include "checkup/FactsReader.h"
#include "checkup/TrainDatabase.h"
#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

class RouteCheckup {
 public:
  RouteCheckup(Program& program, Progress& progress);

  /// Judges the activities of these routes as they would stand after a load, by what is installed now; the
  /// routes are called by their zip names. How many can be played is noted for each.
  CauseList Judge(const std::vector<std::string>& zips);

 private:
  struct Route;
  struct Consist {
    GameFile file;
    FileFacts facts;
    std::string zip;  // of the route whose store has it; empty for one of the game's
  };

  void ReadConsists(const std::vector<std::string>& zips);
  Route ReadWorkingRoute(const std::string& zip);
  Route ReadRoute(const std::string& zip);

  Program& program_;
  Progress& progress_;
  FactsCache cache_;
  FactsReader reader_;
  TrainDatabase trains_;
  std::vector<Consist> consists_;
};

}  // namespace quillon
