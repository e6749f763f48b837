// The facts of files that did not change since an earlier Checkup.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "checkup/GameFacts.h"
#include "checkup/GameFiles.h"
#include "core/Program.h"

namespace quillon {

/// Kept in one file beside the Checkup's records; one that is damaged, or of another version, counts as
/// empty. A file that was changed a moment ago is not kept: its time may not tell of the next change.
class FactsCache {
 public:
  explicit FactsCache(Program& program) : program_(program), path_(program.app.FactsCacheFile()) {}

  /// Reads the file, unless that was done. Comes before the first item.
  void Open();

  ItemTable& Items() { return items_; }

  /// A file of this time or a later one was changed a moment ago. Nanoseconds since 1970.
  static std::int64_t YoungFrom();

  /// Moves the facts of the file out of the cache, if they are still true.
  bool Take(FileKind kind, const GameFile& file, FileFacts& facts);

  /// Files of one kind with their facts.
  struct Group {
    FileKind kind;
    const std::vector<GameFile>& files;
    const std::vector<FileFacts>& facts;
  };
  /// What the next Checkup is to find, all of it taken or read by now. Not written when nothing has changed.
  /// The cache is empty from then on.
  void Save(const std::vector<Group>& groups);

 private:
  struct Kept {
    FileKind kind;
    std::uint64_t size;
    std::int64_t modified;
    std::string_view facts;  // as they are written
  };

  void Load(std::string_view bytes);

  Program& program_;
  const std::string path_;
  ItemTable items_;
  std::string bytes_;                                // of the file
  std::unordered_map<std::string_view, Kept> kept_;  // by path
  std::size_t taken_ = 0;
  bool open_ = false;
};

}  // namespace quillon
