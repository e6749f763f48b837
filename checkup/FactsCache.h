// The facts of files that did not change since an earlier Checkup.
#pragma once

#include <cstdint>
#include <string>
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

  /// Moves the facts of the file out of the cache, if they are still true.
  bool Take(FileKind kind, const GameFile& file, FileFacts& facts);

  /// All is taken: what is kept needs room no longer.
  void LetGo();

  /// Files of one kind with their facts.
  struct Group {
    FileKind kind;
    const std::vector<GameFile>& files;
    const std::vector<FileFacts>& facts;
  };
  /// What the next Checkup is to find, all of it taken or read by now. Not written when nothing has changed.
  void Save(const std::vector<Group>& groups);

 private:
  struct Kept {
    std::string_view path;
    FileKind kind;
    std::uint64_t size;
    std::int64_t modified;
    std::string_view facts;  // as they are written
  };

  void Load(std::string_view bytes);
  std::uint32_t& PlaceOf(std::string_view path);
  std::string FileOf(const std::vector<Group>& groups) const;

  Program& program_;
  const std::string path_;
  ItemTable items_;
  std::string bytes_;  // of the file
  std::vector<Kept> kept_;
  std::vector<std::uint32_t> places_;  // of the kept ones, by their paths; from 1, and two of three are free
  std::size_t taken_ = 0, found_ = 0;  // files: taken, and in the file
  bool open_ = false;
};

}  // namespace quillon
