// Writing archives: a list of files, packed on several threads.
#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/Files.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

/// Holds one list of files for one archive.
class ArchiveWriter {
 public:
  explicit ArchiveWriter(Files& files) : files_(files) {}

  /// Full path of the file to write; an old one is replaced.
  std::string ArchiveFile;
  /// Called now and then while Zip runs.
  std::function<void(const ArchiveWriter&)> OnProgress;

  void ClearFiles();
  /// Entries are stored by their path below `baseFolder` (closing backslash) from here on. Without it a file
  /// is stored by its full path less the root.
  void PrepareRebuild(std::string baseFolder) { baseFolder_ = std::move(baseFolder); }
  /// One file by full path, or a wildcard path, which walks subfolders and keeps the tree. What is missing,
  /// or a folder, adds nothing.
  void AddFiles(std::string_view path);
  /// One file by full path, under a stored name of its own. What is missing, or a folder, adds nothing.
  void AddFile(std::string_view path, std::string storedName);
  /// Takes out what was added and matches: one file by full path, or a wildcard on file names below a folder.
  void ExcludeFiles(std::string_view path);
  /// An entry of another archive travels as it is packed there, under a stored name of its own. A name that
  /// was added before is replaced. `archive` has read its directory, and its file stays until Zip has
  /// returned.
  void AddEntry(const ArchiveReader& archive, int index, std::string_view storedName);

  /// Writes the archive; with nothing added, one that has no entries. Raises RunTimeErrors and leaves no file
  /// then.
  void Zip();
  /// 0 to 100, of the running Zip, by bytes.
  int PercentDone() const;
  std::uint64_t BytesDone() const { return bytesDone_; }
  std::uint64_t BytesToDo() const { return bytesToDo_; }
  /// Full path of the file now being packed.
  const std::string& CurrentFile() const { return currentFile_; }

  /// What is packed under one stored name: a file, or an entry of `archive` when `archive` is not empty.
  struct Item {
    std::string storedName;  // with backslashes
    std::string path;        // the file, or the archive that holds the entry
    int index = -1;          // of the entry; -1 for a file
    std::uint64_t size = 0;  // bytes, unpacked
    std::time_t modified = 0;
  };

 private:
  void Add(Item item);
  std::string StoredName(std::string_view path) const;
  std::vector<Item> LiveItems() const;
  std::unique_ptr<ZipFile> Opened(const std::string& path);

  Files& files_;
  std::string baseFolder_;
  std::vector<Item> items_;  // a replaced or excluded one has an empty name
  std::unordered_map<std::string, std::size_t> placeOf_;
  std::uint64_t bytesDone_ = 0, bytesToDo_ = 0;
  std::string currentFile_;
};

}  // namespace quillon
