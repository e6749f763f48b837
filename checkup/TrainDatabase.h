// Which engine and wagon files are installed, and in which train folders.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "core/Program.h"

namespace quillon {

enum class TrainKind { Engine, Wagon };

/// Built from file names alone. Names and folders are in lower case.
class TrainDatabase {
 public:
  /// `recordsDoubles` is off for a look that leaves no records.
  explicit TrainDatabase(Program& program, bool recordsDoubles = true)
      : program_(program), recordsDoubles_(recordsDoubles) {}

  /// Walks the train folders and records doubles; what was there before is forgotten.
  void BuildTrainDatabase(const std::function<void()>& yield);

  /// Whether that file lies in that very folder.
  bool CheckItem(TrainKind kind, const std::string& file, const std::string& folder) const;
  /// A folder that holds the file: the last double met, or the only one; "none" when it lies nowhere.
  std::string FindAlternateFolder(TrainKind kind, const std::string& file) const;

  /// Whether there is a train folder of that name at all.
  bool HasFolder(const std::string& folder) const { return folders_.contains(folder); }

  int EngCount() const { return indexes_[0].count; }
  int WagCount() const { return indexes_[1].count; }

 private:
  struct Index {
    std::unordered_set<std::string> FileFolders;  // file, NUL, folder
    std::unordered_map<std::string, std::string> firstFolder, lastDouble;
    std::string doubles;  // path of the file that records them
    int count = 0;
  };

  void WalkTrainFolder(const std::string& name);
  void Add(Index& index, const std::string& file, const std::string& folder);

  Program& program_;
  const bool recordsDoubles_;
  std::array<Index, 2> indexes_;
  std::unordered_set<std::string> folders_;
};

}  // namespace quillon
