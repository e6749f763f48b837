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

  /// What a zip is, and why.
  struct Judgement {
    Class verdict;
    std::string reason;
  };

  Judgement Judge(const std::string& zip);
  std::string ReasonAgainst(const ArchiveReader& unzip1) const;
  void Reject(const std::string& zip, const Judgement& judgement);

  IntakeState& state_;
};

}  // namespace quillon
