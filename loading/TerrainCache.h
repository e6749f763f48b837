// The terrain files that the game generates beside a route's tiles.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

class TerrainCache {
 public:
  TerrainCache(Program& program, std::string workingRoute)
      : program_(program), WorkingRoute(std::move(workingRoute)) {}

  /// Deletes all tiles and terrain of the working folder, also what no list names.
  void Clear();

 private:
  Program& program_;
  const std::string WorkingRoute;
};

}  // namespace quillon
