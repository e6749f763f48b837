// Archives for tests, written byte by byte: ordinary ones, and zips that no honest program makes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/world/TestFolder.h"

namespace quillon {

/// One entry. What is told about it need not be true.
struct ZipEntry {
  std::string name;              // stored byte for byte: "/" or "\", CP437, bytes that are no UTF-8, anything
  std::string data;              // unpacked
  bool folder = false;           // marked as a folder; a "/" is added to the name
  bool deflated = false;         // method 8, in blocks that hold the data as they are
  bool utf8Flag = false;         // tells that the name is UTF-8
  bool encrypted = false;        // tells that a password is needed
  bool badCrc = false;           // the checksum is another one
  bool badData = false;          // deflated: can't be unpacked; stored: other bytes than the checksum's
  bool shared = false;           // lies where the entry before it lies, and writes nothing
  std::uint64_t toldSize = 0;    // the size told instead of the data's, when not 0
  std::uint16_t toldMethod = 0;  // the method told instead of the true one, when not 0
};

/// An ordinary entry.
inline ZipEntry Entry(const std::string& name, const std::string& data = {}) {
  return {.name = name, .data = data};
}

/// The archive around its entries.
struct ZipShape {
  std::string stub;              // what stands in front, such as a program
  bool offsetsPastStub = false;  // offsets count from the zip's own start, not the file's
  int directoryShift = 0;        // added to the offset at which the directory is told to lie
  std::string comment;           // at the end
};

std::string ZipBytes(const std::vector<ZipEntry>& entries, const ZipShape& shape = {});

inline void MakeZip(const fs::path& hostPath, const std::vector<ZipEntry>& entries,
                    const ZipShape& shape = {}) {
  WriteBytes(hostPath, ZipBytes(entries, shape));
}

/// A tar archive of these files.
std::string TarBytes(const NamedTexts& files);

}  // namespace quillon
