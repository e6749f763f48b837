// A route's display name and description, from its track file.
#pragma once

#include <string>
#include <string_view>

#include "core/Program.h"

namespace quillon {

/// The bytes at the top of a track file among which name and description stand.
inline constexpr std::uint64_t kTrackHead = 4u << 20;

/// The name in the decoded text of the track file at `path`: between "Name " and "Description", inside the
/// first parentheses, without quotes. Throws RunTimeErrors 5 and 6 where the classic text functions would.
std::string RouteNameFrom(std::string_view trackText, std::string_view path);

/// What the route is to be called, by its `name` from the track file: never empty, nor too long to be read
/// back.
std::string UsableRouteName(std::string name, std::string_view zip);

/// By the track file among the route's documents; without one the zip name. Throws as RouteNameFrom does.
std::string StoredRouteName(Program& program, const std::string& zip);

/// The description in the decoded text of a track file, its lines ended by "\n"; empty when there is none,
/// cut where it is longer than a page.
std::string RouteDescriptionFrom(std::string_view trackText);

}  // namespace quillon
