// Whether all that an archive holds can be unpacked, found out without writing anything.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/archive/ArchiveReader.h"

namespace quillon {

/// Bytes that any archive may claim, however small it is.
inline constexpr std::uint64_t kAlwaysRoom = 1u << 30;

/// Why an archive is not to be unpacked at all: entries that lie in each other, or that claim more than the
/// disk, or any honest file of its size, holds. Empty for an honest one. `archive` has read its directory.
std::string BombIn(Files& files, const ArchiveReader& archive);

/// The entries of `archive` whose data or checksum are wrong, by index, in rising order; `archive` has read
/// its directory. Entries with an obstacle are passed over. Unpacks on all processors; `progress` hears now
/// and then how many bytes are done, of how many.
std::vector<int> DamagedEntries(Files& files, const ArchiveReader& archive,
                                const std::function<void(std::uint64_t done, std::uint64_t all)>& progress);

}  // namespace quillon
