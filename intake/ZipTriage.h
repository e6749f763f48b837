// What comes before the add-routes driver: a fresh record, known files that are no routes, and routes that
// come as programs.
#pragma once

#include <string>

#include "core/Screen.h"
#include "intake/IntakeState.h"

namespace quillon {

class ZipTriage {
 public:
  ZipTriage(Program& program, ProgressScreen& screen);

  /// Leaves plain zips as they are, and so does a damaged one: the driver tells what it is. Nothing that came
  /// in a zip is ever executed. Raises RunTimeErrors.
  void Run();

 private:
  void SetKnownNonRoutesAside();
  void CheckSelfExtracting();
  void Check(const std::string& zip);
  bool FindExecutable(const std::string& zip);
  bool OpenExecutableAsZip();
  void Rebuild(const std::string& zip);
  ArchiveReader SilentReader();

  ProgressScreen& screen_;
  IntakeState state_;
  ArchiveReader unzip1_, unzip2_;  // the download; the program in it
  int executableIndex_ = -1;       // its entry
  std::string stem_;               // its stored path in lower case, without ".exe"
};

}  // namespace quillon
