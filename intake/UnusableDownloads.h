// Downloads that could never be taken in, and would end the intake of all others.
#pragma once

#include <map>
#include <string>

#include "intake/IntakeState.h"

namespace quillon {

class UnusableDownloads {
 public:
  explicit UnusableDownloads(IntakeState& state) : state_(state) {}

  /// Sets aside what is no file, what has a name that folders can't have, and what a known route would be
  /// taken for.
  void Run();

 private:
  std::string ReasonAgainst(const FoundFile& download, const std::string& zip);
  void SetAside(const FoundFile& download, const std::string& zip, const std::string& reason);

  IntakeState& state_;
  std::map<std::string, std::string> owners_;  // of names without their blanks and dots, the whole name
};

}  // namespace quillon
