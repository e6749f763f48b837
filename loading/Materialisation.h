// The second half of a load: how the files of a route reach the working folder.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/RouteMap.h"
#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

class Materialisation {
 public:
  Materialisation(Program& program, Progress& progress, std::string workingRoute, std::string loadZip)
      : program_(program),
        files_(program.files),
        progress_(progress),
        WorkingRoute(std::move(workingRoute)),
        LoadZip(std::move(loadZip)) {}

  /// current.tsl: every file that the route is about to place; default.tsl: the `ts-bak-` names of the files
  /// that it will cover. Both whole, before the first change. Only files that `mayCover`, at the same index,
  /// are looked for.
  void WriteLists(const RouteMap& map, const std::vector<bool>& mayCover);
  /// Extracts every file; one in the way is kept under its `ts-bak-` name. After WriteLists.
  void PlaceRouteFiles(ArchiveReader& archive, const RouteMap& map);
  /// The defaults for routes that shipped without, then the route's own.
  void CopyActivities();
  /// Those that the game does not have; sets `CustomConsistsAdded`.
  void CopyConsists();
  void CopyTrackTextures();
  void CopyExtras();
  void CopyCustomFiles();
  /// The folders `Custom` and `Stuffed` of the route itself, over its real folders.
  void SpreadCustomAndStuffed();

 private:
  void CopyOwnActivities(const std::string& source, const std::string& destination, bool fileByFile);
  struct Copy {
    std::string source, destination;  // with closing backslashes
    std::string_view pattern;
  };
  void CopyAll(const std::vector<Copy>& copies);
  void Spread(const std::string& folder);
  std::string InRoute(std::string_view path) const { return WorkingRoute + std::string(path); }

  Program& program_;
  Files& files_;
  Progress& progress_;
  const std::string WorkingRoute, LoadZip;
  std::vector<std::string> backups_;  // one for each file of the route, empty where it covers nothing
  int LoadProgress = 0;
};

/// The name under which a covered default file is kept; `strippedPath` is its path below the route.
std::string BackupPath(std::string_view workingRoute, std::string_view strippedPath);

/// True for a consist that the game has neither in use nor set aside: only such are copied.
bool IsNewConsist(const Program& program, const std::string& name);

}  // namespace quillon
