// Bytes as people read them.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// Such as "812 bytes", "217 KB", "34 MB".
inline std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1u << 10) return std::to_string(bytes) + " bytes";
  return bytes < 1u << 20 ? std::to_string(bytes >> 10) + " KB" : std::to_string(bytes >> 20) + " MB";
}

}  // namespace quillon
