// Every service is judged by the consist that it calls for.
#pragma once

#include <string>
#include <unordered_set>

#include "checkup/ConsistAnalysis.h"
#include "checkup/GameFiles.h"

namespace quillon {

class ServiceVerification {
 public:
  ServiceVerification(Program& program, Progress& progress, const ConsistAnalysis& consists,
                      FinalReport& report);

  /// `again`: a pass that would come to the same as the one before only shows itself, and needs no facts.
  void VerifyServices(const std::vector<GameFile>& lstServices, const std::vector<FileFacts>& facts,
                      bool again);

  /// Whether a service is good; `path` is that of its file.
  bool IsGood(const std::string& path) const;

 private:
  void Verify(const std::string& path, const FileFacts& facts);
  bool ConsistIsPresent(const std::string& lowerConsist) const;
  void Record(const FileOfRoute& file, bool good);

  Program& program_;
  Progress& progress_;
  const ConsistAnalysis& consists_;
  FinalReport& report_;
  std::unordered_set<std::string> VerifiedServices, VerifiedConsists;  // lower case
  std::string name_, consist_;  // carried over to a service that has none
};

}  // namespace quillon
