// Which files an archive holds, by their names and contents, wherever in it they lie.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/Files.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

/// Reads the directory at the first question. An archive that is missing or damaged holds nothing.
class ArchiveIndex {
 public:
  ArchiveIndex(Files& files, std::string archive) : files_(files), archive_(std::move(archive)) {}

  /// Whether an entry called `name`, a file name without a folder, has the bytes of the file at `path`.
  bool Holds(std::string_view name, std::string_view path);
  /// Whether an entry called `name` has more than `size` bytes.
  bool HoldsLongerThan(std::string_view name, std::uint64_t size);

 private:
  void Read();

  Files& files_;
  const std::string archive_;
  std::optional<std::unordered_multimap<std::string, ArchiveEntry>> entries_;  // by upper-case file name
};

}  // namespace quillon
