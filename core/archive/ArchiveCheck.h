// Whether all that an archive holds can be unpacked, found out without writing anything.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "core/archive/ArchiveReader.h"

namespace quillon {

/// The entries of `archive` whose data or checksum are wrong, by index, in rising order; `archive` has read
/// its directory. Entries with an obstacle are passed over. Unpacks on all processors; `progress` hears now
/// and then how many bytes are done, of how many.
std::vector<int> DamagedEntries(Files& files, const ArchiveReader& archive,
                                const std::function<void(std::uint64_t done, std::uint64_t all)>& progress);

}  // namespace quillon
