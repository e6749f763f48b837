// Where the files of a route archive belong: the route's root inside the archive, and which files are wanted.
#pragma once

#include <string>
#include <vector>

#include "core/archive/ArchiveReader.h"

namespace quillon {

/// Both lists hold lower-case text, at the same index.
struct RouteMap {
  std::string RouteRootPrefix;                    // with its closing backslash; empty at the archive's top
  std::vector<std::string> lstRouteStrippedPath;  // a file's path below the route
  std::vector<std::string> lstUnzipThese;         // its stored name
  std::vector<int> entries;                       // its entry
};

/// Reads the archive's directory, already read into `archive`.
RouteMap MapRoute(const ArchiveReader& archive);

}  // namespace quillon
