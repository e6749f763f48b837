// The terrain files that the game generates beside a route's tiles: kept in an archive of their own while the
// route is out of the game.
#pragma once

#include <string>
#include <vector>

#include "core/Program.h"
#include "core/Progress.h"
#include "core/archive/ArchiveReader.h"
#include "loading/LoadTexts.h"

namespace quillon {

class TerrainCache {
 public:
  TerrainCache(Program& program, Progress& progress, LoadTexts& texts, std::string workingRoute)
      : program_(program), progress_(progress), texts_(texts), WorkingRoute(std::move(workingRoute)) {}

  /// Packs the terrain of the working folder, which holds the route PreviousZip, and takes it away. A cache
  /// that is there already is neither replaced nor added to.
  void Gather(const std::string& PreviousZip);
  /// Deletes all tiles and terrain of the working folder, also what no list names.
  void Clear();
  /// Puts the cached terrain of a route back, all of it into the one folder Tiles.
  void Restore(const std::string& LoadZip);

 private:
  /// A cache of few entries comes from a route that was hardly driven: it goes, and gathering is tried again.
  void SizeTest(const std::string& cache);
  std::vector<std::string> TerrainFiles() const;
  void Pack(const std::string& archive, const std::vector<std::string>& files);
  ArchiveReader Reader(const std::string& cache);

  Program& program_;
  Progress& progress_;
  LoadTexts& texts_;
  const std::string WorkingRoute;
};

}  // namespace quillon
