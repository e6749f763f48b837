// A route's display name, from its track file.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The name in the decoded text of the track file at `path`: between "Name " and "Description", inside the
/// first parentheses, without quotes. Throws RunTimeErrors 5 and 6 where the classic text functions would.
std::string RouteNameFrom(std::string_view trackText, std::string_view path);

}  // namespace quillon
