#include "core/archive/ZipStub.h"

#include <algorithm>
#include <string_view>

#include "core/host/RawFile.h"

namespace quillon {
namespace {

constexpr std::size_t kEndRecord = 22, kLongestComment = 65535, kDirectoryEntry = 46;
constexpr std::string_view kEndMark = "PK\5\6", kEntryMark = "PK\1\2", kDataMark = "PK\3\4";

std::uint64_t Number(std::string_view bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

std::string ReadAt(const RawInput& file, std::uint64_t at, std::size_t count) {
  std::string bytes;
  return file.ReadAt(at, count, bytes) ? bytes : std::string();
}

}  // namespace

std::uint64_t StubBytes(const std::string& hostPath) {
  const RawInput file(hostPath);
  if (!file.IsOpen()) return 0;
  const std::uint64_t size = file.Size();
  const std::uint64_t tailAt = size - std::min<std::uint64_t>(size, kEndRecord + kLongestComment);
  const std::string tail = ReadAt(file, tailAt, static_cast<std::size_t>(size - tailAt));
  const auto end = tail.rfind(kEndMark);
  if (end == tail.npos || tail.size() - end < kEndRecord) return 0;
  const std::uint64_t directorySize = Number(tail, end + 12), directoryAt = Number(tail, end + 16);
  const std::uint64_t endAt = tailAt + end;
  if (directoryAt + directorySize >= endAt || directorySize < kDirectoryEntry) return 0;
  const std::uint64_t stub = endAt - directorySize - directoryAt;
  // A wrong offset alone may also be a damaged directory: an entry must lie where the stub puts it.
  const std::string entry = ReadAt(file, endAt - directorySize, kDirectoryEntry);
  if (!entry.starts_with(kEntryMark) || entry.size() < kDirectoryEntry) return 0;
  return ReadAt(file, stub + Number(entry, 42), 4) == kDataMark ? stub : 0;
}

}  // namespace quillon
