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

/// Gives the list its date and the loaded route, compares it with that of the Checkup before, and writes
/// causes.json and the pages in its place. Notes how many activities of the loaded route can be played.
void WriteCauses(Program& program, CauseList& list);
/// Of routes that are not loaded: causes_routes.json and its page.
void WriteRouteCauses(Program& program, const CauseList& list);

}  // namespace quillon
