// Archives of other formats than zip: 7z, rar, tar with its packings, lzh, also behind a program or in parts.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/Files.h"
#include "core/archive/ZipFile.h"

namespace quillon {

/// Whether the program at `path` has such an archive behind it. `turn` is called now and then.
bool HasForeignArchive(Files& files, const std::string& path, const std::function<void()>& turn);

/// Writes all files of the archive at `parts`, one after the other when it is in several, to the zip
/// `archiveFile`, packed as they come: nothing is laid out. `progress` hears of the bytes done and of all.
/// Throws Damage when the archive can't be read to its end, needs a password or a further volume, or when its
/// names or sizes are harmful; RunTimeErrors for the disk. The zip is whole or absent.
void RebuildAsZip(Files& files, const std::vector<std::string>& parts, const std::string& archiveFile,
                  const std::function<void(std::uint64_t done, std::uint64_t all)>& progress);

}  // namespace quillon
