// Where train files really lie below TRAINS\TRAINSET, however deep.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// All folders with train files, also behind links.
class TrainPlaces {
 public:
  explicit TrainPlaces(Program& program);

  /// A folder by its path from TRAINSET, as the disk spells it.
  struct Place {
    std::string path;
    std::set<std::string> files;  // in lower case
    int depth = 1;                // 1 for a folder directly in TRAINSET
  };

  /// The folder that is meant by `folder`, which is not directly in TRAINSET: of the same name, but for
  /// blanks around it, with one of `files` at least; else any that holds all of them, preferably one that is
  /// not `askedFor`. Names are in lower case. Null when there is none.
  const Place* Find(const std::string& folder, const std::set<std::string>& files,
                    const std::unordered_set<std::string>& askedFor) const;
  /// A place below the train folder `folder` that holds `file`; null when there is none.
  const Place* FindBelow(const std::string& folder, const std::string& file) const;
  /// How the disk spells a file of the folder that is `file` but for blanks in its name; empty when there is
  /// none.
  std::string WithBlanks(const std::string& folder, const std::string& file) const;

 private:
  const Place* FindByName(const std::string& folder, const std::set<std::string>& files) const;

  std::vector<Place> places_;  // the shallow ones first, then by path
  std::unordered_map<std::string, std::vector<const Place*>> holders_;  // of a file
  std::unordered_map<std::string, std::vector<const Place*>> named_;    // by the last name, trimmed
  std::unordered_map<std::string, std::string> blanks_;                 // by folder and trimmed file
};

}  // namespace quillon
