#include "tests/world/ZipMaker.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace quillon {
namespace {

constexpr std::uint32_t kIn64 = 0xFFFFFFFF;  // the true value stands in the extra field
constexpr int kNoon = 12 << 11, kDay = (2002 - 1980) << 9 | 3 << 5 | 2;

void Append(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i));
}

std::uint32_t Crc(const std::string& data) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char c : data) {
    crc ^= static_cast<unsigned char>(c);
    for (int i = 0; i < 8; ++i) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
  }
  return ~crc;
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

  bool Big() const { return size >= kIn64; }
};

/// What the local header and the directory have in common, from "version needed" to the name's length.
void AppendFacts(std::string& out, const Written& file) {
  const ZipEntry& entry = file.entry;
  const int method = entry.toldMethod ? entry.toldMethod : entry.deflated ? 8 : 0;
  Append(out, file.Big() ? 45 : 20, 2);
  Append(out, (entry.encrypted ? 1 : 0) | (entry.utf8Flag ? 1 << 11 : 0), 2);
  Append(out, static_cast<std::uint64_t>(method), 2);
  Append(out, kNoon, 2);
  Append(out, kDay, 2);
  Append(out, Crc(entry.data) ^ (entry.badCrc ? 1 : 0), 4);
  Append(out, file.packed.size(), 4);
  Append(out, file.Big() ? kIn64 : file.size, 4);
  Append(out, file.name.size(), 2);
}

/// The extra field that holds a size of more than 32 bits.
std::string Extra(const Written& file) {
  std::string extra;
  if (!file.Big()) return extra;
  Append(extra, 1, 2);
  Append(extra, 8, 2);
  Append(extra, file.size, 8);
  return extra;
}

void AppendLocal(std::string& out, const Written& file) {
  const std::string extra = Extra(file);
  out += "PK\3\4";
  AppendFacts(out, file);
  Append(out, extra.size(), 2);
  out += file.name + extra + file.packed;
}

void AppendDirectoryEntry(std::string& out, const Written& file) {
  const std::string extra = Extra(file);
  out += "PK\1\2";
  Append(out, 45, 2);  // made by
  AppendFacts(out, file);
  Append(out, extra.size(), 2);
  Append(out, 0, 2 + 2 + 2);                        // comment, disk, internal attributes
  Append(out, file.entry.folder ? 0x10 : 0x20, 4);  // external attributes
  Append(out, file.offset, 4);
  out += file.name + extra;
}

}  // namespace

std::string ZipBytes(const std::vector<ZipEntry>& entries, const ZipShape& shape) {
  const std::size_t base = shape.offsetsPastStub ? shape.stub.size() : 0;
  std::string out = shape.stub, directory;
  for (const auto& entry : entries) {
    const Written file{entry, entry.name + (entry.folder ? "/" : ""), Packed(entry),
                       entry.toldSize ? entry.toldSize : entry.data.size(), out.size() - base};
    AppendLocal(out, file);
    AppendDirectoryEntry(directory, file);
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

void WriteBytes(const std::string& hostPath, const std::string& bytes) {
  std::ofstream file(hostPath, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("can't write " + hostPath);
}

}  // namespace quillon
