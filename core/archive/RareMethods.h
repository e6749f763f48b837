// Entries of zips that are packed by other methods than nearly all are.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quillon {

/// What a zip tells of one such entry. Sizes are bytes.
struct RareEntry {
  std::uint16_t method = 0;
  std::uint64_t size = 0, packedSize = 0;
  std::uint32_t crc = 0;
};

/// Whether UnpackRareMethod knows the method, by its number in the format.
bool IsRareMethod(std::uint16_t method);

/// "Deflate64", "PPMd" or, for one without a name here, "method 77".
std::string MethodName(std::uint16_t method);

/// Unpacks the data that `more` gives piece by piece, empty at their end, into `sink`. False when they are
/// damaged; what `sink` has got by then is worthless. What either throws passes through.
bool UnpackRareMethod(const RareEntry& entry, const std::function<std::string_view()>& more,
                      const std::function<void(std::string_view)>& sink);

}  // namespace quillon
