// Where in a zip's file its parts lie.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Bytes in front of the zip from whose start its offsets count, such as a program's; 0 when they count from
/// the file's start, and for files that can't be told.
std::uint64_t StubBytes(const std::string& hostPath);

/// Where in the file the header of each entry lies, in the directory's order. Empty when the directory can't
/// be read.
std::vector<std::uint64_t> EntryPlaces(const std::string& hostPath);

/// The size of an entry's header, which `bytes` begin with; 0 when it is none.
std::size_t HeaderSize(std::string_view bytes);

/// Bytes of a header without the names in it.
inline constexpr std::size_t kLocalHeader = 30;

/// The name of an entry whose data are another's, too, or the directory itself: no honest program packs so,
/// and a small file unpacks to a huge one. Empty when there is none, or the directory can't be read.
std::string FindOverlap(const std::string& hostPath);

}  // namespace quillon
