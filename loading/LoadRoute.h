// The load driver: puts the previous route away and builds the new one in the working folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/Catalogue.h"
#include "catalogue/RouteMap.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"
#include "loading/LoadTexts.h"
#include "loading/PreviousRoute.h"

namespace quillon {

/// One load, from top to bottom. It can't be cancelled and undoes nothing; the two lists on disk, the mark of
/// where it stands and the order of its steps make it safe to repeat. `[Current]` "Loaded" is written last.
class LoadRoute {
 public:
  LoadRoute(Program& program, Progress& progress, LoadTexts& texts);

  /// `LoadZip` and `LoadRouteName` of the shared state say which route.
  void Run();

 private:
  void ClearFlags();
  void OpenRoute();
  void SetSizeMessage();
  void RefuseWhatWouldFail();
  void RefuseDamage();
  void PutAwayPreviousRoute();
  void RemovePreviousFiles();
  void ExchangeTerrain();
  void PlaceRoute();
  void CopySavesBack();
  void LayOverTheRest();
  void RunCustomScript();
  void RecordLoad();
  void Finish();

  Program& program_;
  Progress& progress_;
  LoadTexts& texts_;
  Catalogue catalogue_;
  ArchiveReader unzip1_;
  RouteMap map_;
  std::optional<PreviousRoute> previous_;
  std::vector<bool> covered_;  // which files of the map may cover one
  const std::string LoadZip;
  std::string WorkingRoute;
};

}  // namespace quillon
