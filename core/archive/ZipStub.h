// Self-extracting archives: a program in front of a zip.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// Bytes in front of the zip from whose start its offsets count; 0 when they count from the file's start, and
/// for files that can't be told.
std::uint64_t StubBytes(const std::string& hostPath);

}  // namespace quillon
