// Reading archives: a directory, a selection, an extraction.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Files.h"
#include "core/archive/ZipFile.h"

namespace quillon {

class ExtractPool;

/// The sum of two sizes, or the largest size: an archive may claim anything.
std::uint64_t SaturatedSum(std::uint64_t a, std::uint64_t b);

/// Holds one archive at a time and keeps its settings between calls.
class ArchiveReader {
 public:
  /// Hears that the archive is damaged. Without one, damage is a RunTimeError that names the archive.
  using Fault = std::function<void()>;

  explicit ArchiveReader(Files& files, Fault fault = {});

  /// Full path of the archive; setting it reads nothing.
  std::string InputFile;
  /// True: stored folders are made below OutputFolder. False: every file lands directly in it.
  bool KeepFolders = true;
  int ExtractMode = 0;
  /// Closing backslash; made by Extract when it is missing, all levels.
  std::string OutputFolder;
  /// Called now and then while an extraction runs.
  std::function<void(const ArchiveReader&)> OnProgress;

  /// Reads the directory of InputFile. After damage there are no entries.
  void ReadDirectory();
  /// From here on the archive has no entries, for `reason`.
  void GiveUp(std::string reason) {
    entries_.clear();
    damageReason_ = std::move(reason);
  }
  /// What was damaged last, in words; empty after a whole directory.
  const std::string& DamageReason() const { return damageReason_; }
  int EntryCount() const { return static_cast<int>(entries_.size()); }
  /// "stored name|size": the system reads only what stands before the "|". `index` counts from 0.
  std::string Entry(int index) const;
  /// Stored name in lower case.
  std::string LowerName(int index) const;
  const std::vector<ArchiveEntry>& Entries() const { return entries_; }

  void ClearFilters() { filters_.clear(); }
  /// A wildcard on the file name, or one exact stored name; case is ignored.
  void AddFilter(std::string_view filter);
  /// Extracts the selection. A file that exists is replaced.
  void Extract();
  /// 0 to 100, of the running extraction, by bytes.
  int PercentDone() const;
  std::uint64_t BytesDone() const { return bytesDone_; }
  std::uint64_t BytesToDo() const { return bytesToDo_; }
  std::uint64_t FilesDone() const { return filesDone_; }

  /// One file for Place: an entry, and the full path that it gets.
  struct Placement {
    int index;
    std::string path;
  };
  /// Extracts each entry to a path of its own, in one pass over the archive. `before` is called for each in
  /// order, before anything is written there; when it runs for a path that came before, that file is
  /// complete.
  void Place(const std::vector<Placement>& placements,
             const std::function<void(const Placement&)>& before = {});

  /// An entry's data in memory; the first `limit` bytes of a longer one. Empty when they are damaged.
  std::string Bytes(int index, std::uint64_t limit) const;

  /// The first entry below any other's name: a file where another entry needs a folder. Empty when there is
  /// none.
  std::string FileWhereFolderIsWanted() const;

 private:
  bool Selected(const ArchiveEntry& entry) const;
  std::vector<Placement> PlacementsOfSelection();
  void PutAll(ExtractPool& pool, const std::vector<Placement>& placements,
              const std::function<void(const Placement&)>& before);
  void Damaged(std::string reason);
  void Report(const ExtractPool& pool);

  Files& files_;
  Fault fault_;
  std::string damageReason_;
  std::vector<ArchiveEntry> entries_;
  std::vector<std::string> filters_;  // upper case
  std::uint64_t bytesDone_ = 0, bytesToDo_ = 0, filesDone_ = 0;
};

}  // namespace quillon
