// What a Checkup changes before it has judged anything, for one that is given up.
#pragma once

#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

class CheckupBefore {
 public:
  explicit CheckupBefore(Program& program);

  /// The records of the last Checkup make room for new ones.
  void SetRecordsAside() const;
  /// Which consists stand aside in the game, and how.
  void NoteConsists();
  /// All is as it was: records, consists, and what one Checkup leaves to the next in memory.
  void TakeBack();
  /// The old records go for good.
  void Drop() const { program_.files.DelTree(aside_); }

 private:
  void TakeRecordsBack();

  Program& program_;
  Files& files_;
  const std::string aside_, lastItem_, lastConsist_;
  bool hadFolder_ = true;
  std::vector<FoundFile> consists_;
};

}  // namespace quillon
