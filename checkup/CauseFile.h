// causes.json: what the last Checkup came to, for other programs and for the next Checkup.
#pragma once

#include <optional>
#include <string>

#include "checkup/CauseList.h"
#include "core/Program.h"

namespace quillon {

/// As UTF-8 JSON of version 1.
std::string CausesJson(const CauseList& list);

/// What the last Checkup has left; none when there is nothing, or nothing that can be read.
std::optional<CauseList> ReadCauses(Program& program);
/// The same of another file.
std::optional<CauseList> ReadCauses(Program& program, const std::string& path);

/// The figures of what the last Checkup came to, read without the rest.
struct CauseCounts {
  int activities = 0, playable = 0;
  int consistsWhole = 0, consistsFaulty = 0;
  int trainsMissing = 0, trainsMisplaced = 0;
  int moves = 0;  // that would put misplaced trains right
  std::string upTo;
};
std::optional<CauseCounts> ReadCauseCounts(Program& program, const std::string& path);

/// What a Checkup leaves: causes.json, the pages in its place, and how many activities of the loaded route
/// can be played.
class CauseRecord {
 public:
  /// Looks at the clock, at the loaded route, and at what the Checkup before has left.
  explicit CauseRecord(Program& program);

  /// Gives the list its date and its route, compares it with the one before, and makes the texts. Touches
  /// nothing of the program: may run on a thread of its own.
  void Make(CauseList list);
  /// The same once more, for a Checkup that ended early; `upTo` says at what.
  void EndedEarly(const std::string& upTo);
  void Write();
  /// For a Checkup that would come to the same as the one before: what that has left gets the new date, and
  /// tells that nothing has changed. False, and nothing is done, when there is nothing that can be renewed.
  bool Renew();

 private:
  void WriteTexts();

  Program& program_;
  const std::string made_, route_;
  std::string before_;
  CauseList list_;
  std::string json_, page_;
};

/// Of routes that are not loaded: causes_routes.json and its page.
void WriteRouteCauses(Program& program, const CauseList& list);

}  // namespace quillon
