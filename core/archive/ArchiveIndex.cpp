#include "core/archive/ArchiveIndex.h"

#include <libdeflate.h>

#include <algorithm>

#include "core/host/RawFile.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;
constexpr std::size_t kHashedPiece = 1u << 20;  // bytes

std::uint32_t CrcOf(const std::string& hostPath) {
  const RawInput input(hostPath);
  std::string bytes;
  std::uint32_t crc = 0;
  for (std::uint64_t at = 0; input.IsOpen() && input.ReadAt(at, kHashedPiece, bytes) && !bytes.empty();
       at += bytes.size())
    crc = libdeflate_crc32(crc, bytes.data(), bytes.size());
  return crc;
}

}  // namespace

void ArchiveIndex::Read() {
  entries_.emplace();
  if (!files_.FileExists(archive_)) return;
  ArchiveReader reader(files_, [] {});
  reader.InputFile = archive_;
  reader.ReadDirectory();
  for (const auto& entry : reader.Entries())
    if (!entry.folder()) entries_->emplace(UpperCase(FileNameOf(entry.name)), entry);
}

bool ArchiveIndex::Holds(std::string_view name, std::string_view path) {
  if (!entries_) Read();
  FileSystem::Stamp stamp;
  if (files_.Host().GetStamp(path, stamp) != FileCode::Ok) return false;
  std::optional<std::uint32_t> crc;
  const auto [begin, end] = entries_->equal_range(UpperCase(name));
  for (auto at = begin; at != end; ++at) {
    const ArchiveEntry& entry = at->second;
    if (entry.size != stamp.size) continue;
    if (entry.modified == stamp.modified / kNanoseconds) return true;
    if (!crc) crc = CrcOf(files_.Host().HostPath(path));
    if (entry.crc == *crc) return true;
  }
  return false;
}

bool ArchiveIndex::HoldsLongerThan(std::string_view name, std::uint64_t size) {
  if (!entries_) Read();
  const auto [begin, end] = entries_->equal_range(UpperCase(name));
  return std::any_of(begin, end, [size](const auto& entry) { return entry.second.size > size; });
}

}  // namespace quillon
