#include "core/archive/ZipLayout.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "core/host/RawFile.h"

namespace quillon {
namespace {

constexpr std::size_t kEndRecord = 22, kLongestComment = 65535, kDirectoryEntry = 46;
constexpr std::size_t kLongLocator = 20, kLongEndRecord = 56;
constexpr std::uint64_t kMostDirectory = 64u << 20;  // bytes
constexpr std::string_view kEndMark = "PK\5\6", kEntryMark = "PK\1\2", kDataMark = "PK\3\4";
constexpr std::string_view kLongLocatorMark = "PK\6\7", kLongEndMark = "PK\6\6";

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t count = 4) {
  std::uint64_t value = 0;
  for (std::size_t i = count; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

std::string ReadAt(const RawInput& file, std::uint64_t at, std::size_t count) {
  std::string bytes;
  return file.ReadAt(at, count, bytes) ? bytes : std::string();
}

/// Where the directory is told to lie, and what ends it.
struct Directory {
  std::uint64_t size = 0, at = 0, end = 0;  // `at` counts from the zip's start, `end` from the file's
};

/// The record of a zip with more or longer entries than the old one can count.
std::optional<Directory> FindLongDirectory(const RawInput& file, std::uint64_t endAt) {
  if (endAt < kLongLocator) return {};
  const std::string locator = ReadAt(file, endAt - kLongLocator, kLongLocator);
  if (!locator.starts_with(kLongLocatorMark) || locator.size() < kLongLocator) return {};
  const std::uint64_t at = Number(locator, 8, 8);
  const std::string record = ReadAt(file, at, kLongEndRecord);
  if (!record.starts_with(kLongEndMark) || record.size() < kLongEndRecord) return {};
  return Directory{Number(record, 40, 8), Number(record, 48, 8), at};
}

std::optional<Directory> FindDirectory(const RawInput& file) {
  if (!file.IsOpen()) return {};
  const std::uint64_t size = file.Size();
  const std::uint64_t tailAt = size - std::min<std::uint64_t>(size, kEndRecord + kLongestComment);
  const std::string tail = ReadAt(file, tailAt, static_cast<std::size_t>(size - tailAt));
  // A comment may hold the mark, too: its length leads to the file's end from the true one only.
  auto end = tail.rfind(kEndMark);
  const auto isTrue = [&] {
    return tail.size() - end >= kEndRecord && Number(tail, end + 20, 2) == tail.size() - end - kEndRecord;
  };
  while (end != tail.npos && !isTrue()) end = end == 0 ? tail.npos : tail.rfind(kEndMark, end - 1);
  if (end == tail.npos) end = tail.rfind(kEndMark);
  if (end == tail.npos || tail.size() - end < kEndRecord) return {};
  if (const auto longer = FindLongDirectory(file, tailAt + end)) return longer;
  return Directory{Number(tail, end + 12), Number(tail, end + 16), tailAt + end};
}

std::uint64_t StubOf(const RawInput& file, const Directory& directory) {
  if (directory.size > directory.end || directory.at >= directory.end - directory.size ||
      directory.size < kDirectoryEntry)
    return 0;
  const std::uint64_t stub = directory.end - directory.size - directory.at;
  // A wrong offset alone may also be a damaged directory: an entry must lie where the stub puts it.
  const std::string entry = ReadAt(file, directory.end - directory.size, kDirectoryEntry);
  if (!entry.starts_with(kEntryMark) || entry.size() < kDirectoryEntry) return 0;
  return ReadAt(file, stub + Number(entry, 42), 4) == kDataMark ? stub : 0;
}

/// The bytes of the file that one entry needs at least.
struct Span {
  std::uint64_t begin, end;
  std::string_view name;
};

/// One entry of the directory; `bytes` begins with it.
Span SpanOf(std::string_view bytes, std::uint64_t stub) {
  std::uint64_t packed = Number(bytes, 20), at = Number(bytes, 42);
  const std::size_t nameSize = Number(bytes, 28, 2);
  std::string_view extra = bytes.substr(kDirectoryEntry + nameSize, Number(bytes, 30, 2));
  while (extra.size() >= 4) {
    const std::size_t size = std::min<std::size_t>(Number(extra, 2, 2), extra.size() - 4);
    std::string_view field = extra.substr(4, size);
    const auto longer = [&](std::uint64_t& value) {
      if (value != 0xFFFFFFFF || field.size() < 8) return;
      value = Number(field, 0, 8);
      field.remove_prefix(8);
    };
    std::uint64_t unpacked = Number(bytes, 24);
    if (Number(extra, 0, 2) == 1) {
      longer(unpacked);
      longer(packed);
      longer(at);
    }
    extra.remove_prefix(4 + size);
  }
  const std::uint64_t begin = stub + at, end = begin + kLocalHeader + nameSize + packed;
  return {begin, end < packed ? ~std::uint64_t{0} : end, bytes.substr(kDirectoryEntry, nameSize)};
}

/// The directory's own span, and those of its entries in its order; empty when it can't be read.
std::vector<Span> SpansIn(const RawInput& file, std::string& bytes) {
  const auto directory = FindDirectory(file);
  if (!directory || directory->size > std::min(directory->end, kMostDirectory)) return {};
  const std::uint64_t stub = StubOf(file, *directory), begin = stub + directory->at;
  bytes = ReadAt(file, begin, static_cast<std::size_t>(directory->size));
  std::vector<Span> spans = {{begin, begin + directory->size, "the archive's directory"}};
  for (std::string_view rest = bytes; rest.size() >= kDirectoryEntry && rest.starts_with(kEntryMark);) {
    const std::size_t size =
        kDirectoryEntry + Number(rest, 28, 2) + Number(rest, 30, 2) + Number(rest, 32, 2);
    if (size > rest.size()) break;
    spans.push_back(SpanOf(rest, stub));
    rest.remove_prefix(size);
  }
  return spans;
}

}  // namespace

std::uint64_t StubBytes(const std::string& hostPath) {
  const RawInput file(hostPath);
  const auto directory = FindDirectory(file);
  return directory ? StubOf(file, *directory) : 0;
}

std::string FindOverlap(const std::string& hostPath) {
  std::string bytes;
  std::vector<Span> spans = SpansIn(RawInput(hostPath), bytes);
  std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.begin < b.begin; });
  for (std::size_t i = 1; i < spans.size(); ++i)
    if (spans[i].begin < spans[i - 1].end) return std::string(spans[i].name);
  return {};
}

std::vector<std::uint64_t> EntryPlaces(const std::string& hostPath) {
  std::string bytes;
  const std::vector<Span> spans = SpansIn(RawInput(hostPath), bytes);
  std::vector<std::uint64_t> places;
  places.reserve(spans.size());
  for (std::size_t i = 1; i < spans.size(); ++i) places.push_back(spans[i].begin);
  return places;
}

std::size_t HeaderSize(std::string_view bytes) {
  if (bytes.size() < kLocalHeader || !bytes.starts_with(kDataMark)) return 0;
  return kLocalHeader + Number(bytes, 26, 2) + Number(bytes, 28, 2);
}

}  // namespace quillon
