// intake.log: what became of each download and why, for a person to look up.
#pragma once

#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// How the log writes when an intake began, for LocalTime.
inline constexpr const char* kLogTime = "%Y-%m-%d %H:%M:%S";

class IntakeLog {
 public:
  explicit IntakeLog(Program& program) : program_(program) {}

  /// "date  kind  zip  reason". The oldest lines go when the file comes to more than 1 MB.
  void Add(const Verdict& verdict) const;

  struct Line {
    std::string date, kind, zip, reason;
  };
  /// Those of the last intake, the newest first.
  std::vector<Line> LastIntake() const;

 private:
  Program& program_;
};

}  // namespace quillon
