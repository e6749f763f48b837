// Where the files of a route archive belong: the route's root inside the archive, and which files are wanted.
#pragma once

#include <string>
#include <vector>

#include "core/archive/ArchiveReader.h"

namespace quillon {

/// The lists hold lower-case text, at the same index. Of two files of different stored names that fall on one
/// path the later one is listed.
struct RouteMap {
  std::string RouteRootPrefix;                    // with its closing backslash; empty at the archive's top
  std::vector<std::string> lstRouteStrippedPath;  // a file's path below the route
  std::vector<std::string> lstUnzipThese;         // its stored name
  std::vector<int> entries;                       // its entry
  int unreadable = -1;                            // an entry of the route's that can't be unpacked
};

/// Reads the archive's directory, already read into `archive`.
RouteMap MapRoute(const ArchiveReader& archive);

}  // namespace quillon
