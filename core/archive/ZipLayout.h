// Where in a zip's file its parts lie.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// Bytes in front of the zip from whose start its offsets count, such as a program's; 0 when they count from
/// the file's start, and for files that can't be told.
std::uint64_t StubBytes(const std::string& hostPath);

/// The name of an entry whose data are another's, too, or the directory itself: no honest program packs so,
/// and a small file unpacks to a huge one. Empty when there is none, or the directory can't be read.
std::string FindOverlap(const std::string& hostPath);

}  // namespace quillon
