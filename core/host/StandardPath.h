// Paths of the standard library: out of plain text they would be in another code page on some hosts.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillon {

/// A host's path in UTF-8 as the standard library has it.
inline std::filesystem::path ToPath(std::string_view hostPath) {
  return std::u8string(hostPath.begin(), hostPath.end());
}

/// The host's path in UTF-8, with the host's own separators.
inline std::string FromPath(std::filesystem::path path) {
  const std::u8string text = path.make_preferred().u8string();
  return {text.begin(), text.end()};
}

}  // namespace quillon
