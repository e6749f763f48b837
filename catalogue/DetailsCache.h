// What the route files hold, read once and remembered as long as they do not change.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// A route file, as its folder lists it.
struct RouteFile {
  std::string zip;
  std::uint64_t size = 0;     // bytes
  std::int64_t modified = 0;  // nanoseconds since 1970
};

/// What its directory and its track file tell.
struct RouteContent {
  std::uint64_t files = 0, bytes = 0;  // bytes: unpacked
  std::string description;
  bool damaged = false;  // it can't be read, and all else is empty
};

/// All route files, in the order of the folder.
std::vector<RouteFile> ListRouteFiles(Program& program);

/// The stored name of a route's track file, and its decoded text; both empty without one.
struct TrackText {
  std::string name, text;
};
/// Throws Damage.
TrackText TrackTextOf(class ZipFile& zip);

/// The contents of `routes`, in their order. Those that changed since an earlier call, of an earlier process,
/// too, are read anew, on all processors; `tick` hears how many of `all` are done. The file of the cache may
/// be damaged, or not be writable: then all are read.
std::vector<RouteContent> ContentsOf(Program& program, const std::vector<RouteFile>& routes,
                                     const std::function<void(std::size_t done, std::size_t all)>& tick);

}  // namespace quillon
