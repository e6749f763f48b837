// The first pass of intake: which zips are damaged, none of ours, or candidates.
#pragma once

#include <string>

#include "intake/IntakeState.h"

namespace quillon {

class Classification {
 public:
  explicit Classification(IntakeState& state) : state_(state) {}

  /// Candidates go to ListofRouteZips; the others to their folders.
  void Run();

 private:
  enum class Class { Bad, Patch, Installer, Candidate };

  Class Judge(const std::string& zip);
  void Reject(const std::string& zip, Class verdict);

  IntakeState& state_;
};

}  // namespace quillon
