// What an intake thinks of each download, said wherever a person may look for it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "intake/IntakeLog.h"

namespace quillon {

class Verdicts {
 public:
  explicit Verdicts(Program& program) : program_(program), log_(program) {}

  /// The zip `rebuilt` stands for the download `zip` from here on.
  void Rebuilt(const std::string& zip, const std::string& rebuilt) { downloadOf_[rebuilt] = zip; }
  /// The download that `zip` stands for, mostly itself.
  std::string DownloadOf(std::string zip) const;
  /// A sentence that belongs to the verdict on `zip`, which comes later.
  void Note(const std::string& zip, const std::string& sentence);
  void Give(const std::string& zip, const char* kind, const std::string& reason);

 private:
  Program& program_;
  IntakeLog log_;
  std::map<std::string, std::string> notes_, downloadOf_;
};

}  // namespace quillon
