// Deflate64, which the format libraries leave out: Deflate with a window of 64 KB, and matches of any length.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace quillon {

/// Unpacks the data that `more` gives piece by piece, empty at their end, into `sink`: `size` bytes at most.
/// False when they are damaged or cut short.
bool Inflate64(std::uint64_t size, const std::function<std::string_view()>& more,
               const std::function<void(std::string_view)>& sink);

}  // namespace quillon
