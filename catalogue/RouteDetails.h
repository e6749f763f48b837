// All that is known of each route.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/Playable.h"
#include "core/Program.h"

namespace quillon {

struct RouteDetails {
  std::string zip, name;  // the name of one without an entry is the list's text for it
  std::uint64_t files = 0, bytes = 0, packed = 0;  // bytes: unpacked
  std::string added, lastLoaded;                   // ISO 8601, local time; empty for never
  bool loaded = false, catalogued = true;
  bool damaged = false;  // its route file can't be read
  int activities = 0, saves = 0;
  std::optional<Playable> playable;  // once a Checkup has looked
  std::string description;           // lines ended by "\n"
};

/// Of every route file, sorted as the list of routes. Writes nothing but the cache of what the files hold;
/// `tick` hears how many of `all` files have been read that it does not know.
std::vector<RouteDetails> DetailsOfRoutes(Program& program,
                                          const std::function<void(std::size_t done, std::size_t all)>& tick);

}  // namespace quillon
