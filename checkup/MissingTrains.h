// Which trains are asked for and not there, and what each of them lacks.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "checkup/Causes.h"

namespace quillon {

/// Numbers of causes, in rising order.
using Roots = std::vector<std::uint32_t>;

/// What is broken in itself: nothing can be installed that heals it.
inline constexpr std::uint32_t kUnhealable = ~std::uint32_t{0};

void Add(Roots& roots, const Roots& more);

/// A cause that is still without its files and without those who need it, at the end of the list.
std::uint32_t NewCause(CauseList& list, Cause::Kind kind, std::string name, std::string place = {});

/// Adds a cause for each train folder and train file that is missing or misplaced, with its advice, and
/// counts the trains.
class MissingTrains {
 public:
  /// All outlive the object.
  MissingTrains(const CauseInput& input, CauseList& list) : input_(input), list_(list) {}

  void Find();
  /// What an item lacks; empty for a good one.
  const Roots& RootsOf(std::uint32_t item) const { return items_[item].roots; }

 private:
  struct JudgedItem {
    bool good = true;
    Roots roots;
  };
  /// Train files that are asked for in a folder: spelling by lower-case name.
  using Wanted = std::map<std::string, std::string>;

  const TrainItem& Item(std::uint32_t number) const { return input_.items[number]; }
  std::map<std::string, Wanted> JudgeItems();
  void CountAskedFor();
  void AddFolder(const std::string& folder, const Wanted& files);
  void AddIncomplete(std::uint32_t folderCause, const std::string& folder, const std::string& file,
                     const std::string& spelling);
  void AdviseMove(Cause& cause, const TrainPlaces::Place& place) const;
  void AddMissingFile(const std::string& folder, const std::string& file, const std::string& spelling);
  bool AdviseFile(Cause& cause, const std::string& folder, const std::string& file) const;
  std::string Elsewhere(const Wanted& files) const;

  const CauseInput& input_;
  CauseList& list_;
  std::vector<JudgedItem> items_;                           // by their numbers
  std::unordered_map<std::string, std::string> spellings_;  // of train folders, by lower case
  std::unordered_map<std::string, Roots> rootsOf_;          // by folder and file
  // Train folders, and train files by folder and file: to rename one would break whole consists.
  std::unordered_set<std::string> askedFor_, askedForFiles_;
};

}  // namespace quillon
