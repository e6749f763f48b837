// Acts of several steps that have begun and not ended: the next start finishes them, or takes them back.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// The notes in unfinished.ini, one section an act. All changes are on the disk when a call returns.
class Unfinished {
 public:
  explicit Unfinished(Program& program) : program_(program) {}

  void Begin(std::string_view act, const std::vector<std::pair<std::string, std::string>>& facts) const;
  /// A fact of an act that has begun; empty without one.
  std::string Fact(std::string_view act, std::string_view key) const;
  bool HasBegun(std::string_view act) const { return !Fact(act, kBegun).empty(); }
  void End(std::string_view act) const;
  /// Without an act there is no file.
  void DropIfEmpty() const;

 private:
  static constexpr const char* kBegun = "Begun";

  Program& program_;
};

/// The act of packing: its half-written zip is of no use.
inline constexpr std::string_view kPackAct = "Pack";

/// Deletes a folder so that no half of it is ever taken for a whole: it gets another name first. False when
/// it, or a part of it, could not be deleted; a part goes at the next start.
bool DeleteWhole(Program& program, const std::string& folder, const Files::Each& each = {});

/// What an earlier process has begun. The game's folder is known and there.
/// True when a clean-up has to follow, which finishes a Make permanent.
bool FinishWhatWasCutShort(Program& program);

}  // namespace quillon
