// What the last whole Checkup has seen and left behind.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "checkup/GameFiles.h"
#include "core/Program.h"

namespace quillon {

/// A number for all that a Checkup judges by: names, sizes and times of the files, and where it begins.
class CheckupSight {
 public:
  void Add(std::string_view text);
  void Add(std::uint64_t number);
  void Add(const std::vector<GameFile>& files);
  /// The train files of the game, wherever below TRAINSET.
  void AddTrains(Program& program);

  std::uint64_t Number() const { return number_; }
  /// A file was changed a moment ago: its time may not tell of the next change.
  bool IsYoung() const { return young_; }

 private:
  std::uint64_t number_ = 0;
  bool young_ = false;
};

/// While what a Checkup would see is what the last one saw, and its records and the consists that it set
/// aside are as it left them, it would come to the same. Kept in one file beside the records; a damaged one
/// counts as none.
class LastCheckup {
 public:
  explicit LastCheckup(Program& program) : program_(program) {}

  /// Also what was read must still be kept: who throws it away wants all to be read anew.
  bool IsNoted() const;
  /// Whether another Checkup that sees this would come to the same.
  bool WouldBeTheSame(const CheckupSight& sight) const;
  /// A whole Checkup, whose records are all written, has seen this.
  void Note(const CheckupSight& sight) const;
  /// The next Checkup is a whole one.
  void Forget() const { program_.files.KillIfThere(program_.app.LastCheckupFile()); }

  /// The texts that a Checkup hands on to the next one of the same process, as the last one left them.
  void HandOn() const;

 private:
  std::uint64_t Records() const;

  Program& program_;
};

}  // namespace quillon
