#include "tests/world/ZipMaker.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>

namespace quillon {
namespace {

constexpr std::uint32_t kIn64 = 0xFFFFFFFF;  // the true value stands in the extra field
constexpr int kNoon = 12 << 11, kDay = (2002 - 1980) << 9 | 3 << 5 | 2;

void Append(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i));
}

/// Deflate's form for data that is not compressed.
std::string Deflated(const std::string& data) {
  std::string out;
  std::size_t at = 0;
  do {
    const auto count = std::min<std::size_t>(data.size() - at, 0xFFFF);
    Append(out, at + count == data.size(), 1);
    Append(out, count, 2);
    Append(out, ~count, 2);
    out.append(data, at, count);
    at += count;
  } while (at < data.size());
  return out;
}

std::string Packed(const ZipEntry& entry) {
  std::string packed = entry.deflated ? Deflated(entry.data) : entry.data;
  if (entry.badData && entry.deflated) packed[0] = 7;  // a kind of block that does not exist
  if (entry.badData && !entry.deflated) packed.at(0) = static_cast<char>(packed[0] ^ 0x55);
  if (entry.encrypted) packed.insert(0, 12, '\x2A');
  return packed;
}

struct Written {
  const ZipEntry& entry;
  std::string name, packed;
  std::uint64_t size, offset;
};

/// The entry with its data, or what the directory tells of it.
void AppendEntry(std::string& out, const Written& file, bool inDirectory) {
  const ZipEntry& entry = file.entry;
  const bool big = file.size >= kIn64;
  const int method = entry.toldMethod ? entry.toldMethod : entry.deflated ? 8 : 0;
  out += inDirectory ? "PK\1\2" : "PK\3\4";
  if (inDirectory) Append(out, 45, 2);  // made by
  Append(out, big ? 45 : 20, 2);
  Append(out, (entry.encrypted ? 1 : 0) | (entry.utf8Flag ? 1 << 11 : 0), 2);
  Append(out, static_cast<std::uint64_t>(method), 2);
  Append(out, kNoon, 2);
  Append(out, kDay, 2);
  Append(out, libdeflate_crc32(0, entry.data.data(), entry.data.size()) ^ (entry.badCrc ? 1 : 0), 4);
  Append(out, file.packed.size(), 4);
  Append(out, big ? kIn64 : file.size, 4);
  Append(out, file.name.size(), 2);
  Append(out, big ? 2 + 2 + 8 : 0, 2);
  if (inDirectory) {
    Append(out, 0, 2 + 2 + 2);                   // comment, disk, internal attributes
    Append(out, entry.folder ? 0x10 : 0x20, 4);  // external attributes
    Append(out, file.offset, 4);
  }
  out += file.name;
  if (big) Append(out, 1 | 8 << 16, 2 + 2);
  if (big) Append(out, file.size, 8);
  if (!inDirectory) out += file.packed;
}

}  // namespace

std::string ZipBytes(const std::vector<ZipEntry>& entries, const ZipShape& shape) {
  const std::size_t base = shape.offsetsPastStub ? shape.stub.size() : 0;
  std::string out = shape.stub, directory;
  std::uint64_t offset = 0;
  for (const auto& entry : entries) {
    if (!entry.shared) offset = out.size() - base;
    const Written file{entry, entry.name + (entry.folder ? "/" : ""), Packed(entry),
                       entry.toldSize ? entry.toldSize : entry.data.size(), offset};
    if (!entry.shared) AppendEntry(out, file, false);
    AppendEntry(directory, file, true);
  }
  const std::size_t start = out.size() - base;
  out += directory + "PK\5\6";
  Append(out, 0, 2 + 2);  // disks
  Append(out, entries.size(), 2);
  Append(out, entries.size(), 2);
  Append(out, directory.size(), 4);
  Append(out, start + static_cast<std::size_t>(shape.directoryShift), 4);
  Append(out, shape.comment.size(), 2);
  return out + shape.comment;
}

std::string TarBytes(const NamedTexts& files) {
  std::string tar;
  for (const auto& [name, data] : files) {
    std::string head(512, '\0');
    std::array<char, 16> size;
    std::snprintf(size.data(), size.size(), "%011zo", data.size());
    head.replace(0, name.size(), name).replace(100, 7, "0000644").replace(124, 11, size.data());
    head.replace(136, 11, "00000000000").replace(148, 8, "        ").replace(156, 1, "0");
    const int sum = std::accumulate(head.begin(), head.end(), 0,
                                    [](int a, char c) { return a + static_cast<unsigned char>(c); });
    std::snprintf(size.data(), size.size(), "%06o", static_cast<unsigned>(sum));
    tar += head.replace(148, 6, size.data()).replace(154, 1, 1, '\0') + data;
    tar.resize((tar.size() + 511) / 512 * 512);
  }
  return tar + std::string(1024, '\0');
}

}  // namespace quillon
