// Who else has a file open.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The programs that have the file at `path`, a path of the system, open, by the names that people know them
/// by; of a folder those that have one of its files open. This program is none of them. Empty when none is
/// known, and on hosts where an open file stands in nobody's way.
std::string HolderOf(std::string_view path);

/// What stands before their names in the reason of an error.
inline constexpr const char* kOpenIn = "it is open in ";

/// The same as the reason of an error; empty when none is known.
inline std::string OpenElsewhere(std::string_view path) {
  const std::string holder = HolderOf(path);
  return holder.empty() ? holder : kOpenIn + holder;
}

}  // namespace quillon
