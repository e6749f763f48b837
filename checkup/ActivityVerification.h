// Every activity is judged by the services that it calls for and by the trains that it names.
#pragma once

#include <string>
#include <vector>

#include "checkup/FinalReport.h"
#include "checkup/GameFiles.h"
#include "checkup/ItemScan.h"
#include "checkup/ServiceVerification.h"

namespace quillon {

class ActivityVerification {
 public:
  ActivityVerification(Program& program, Progress& progress, ItemScan& scan,
                       const ServiceVerification& services, FinalReport& report);

  /// `again`: a pass that would come to the same as the one before only shows itself, and needs no facts.
  void VerifyActivities(const std::vector<GameFile>& lstAllActivities, const std::vector<FileFacts>& facts,
                        bool again);

 private:
  void Verify(const std::string& path, const FileFacts& facts);
  /// Gives the position behind the last good one.
  std::uint32_t VerifyPlayersService(const FileFacts& facts, const FileOfRoute& file);
  void VerifyOtherServices(const FileFacts& facts, const FileOfRoute& file, std::uint32_t from);
  /// False, with its records, for a service that is missing or bad.
  bool ServiceIsGood(const FileOfRoute& file, const std::string& service);

  Program& program_;
  Progress& progress_;
  ItemScan& scan_;
  const ServiceVerification& services_;
  FinalReport& report_;
  std::string activityName_;  // carried over to an empty file
};

}  // namespace quillon
