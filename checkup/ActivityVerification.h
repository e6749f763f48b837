// Every activity is judged by the services that it calls for and by the trains that it names.
#pragma once

#include <string>
#include <vector>

#include "checkup/FinalReport.h"
#include "checkup/ItemScan.h"
#include "checkup/RouteFiles.h"
#include "checkup/ServiceVerification.h"

namespace quillon {

class ActivityVerification {
 public:
  ActivityVerification(Program& program, Progress& progress, ItemScan& scan,
                       const ServiceVerification& services, FinalReport& report);

  void VerifyActivities(const std::vector<std::string>& lstAllActivities);

 private:
  void Verify(const std::string& path);
  void TakeName(const GameText& text);
  /// Gives the position behind the last good one.
  std::size_t VerifyPlayersService(const GameText& text, const RouteFile& file);
  void VerifyOtherServices(const GameText& text, const RouteFile& file, std::size_t from);
  /// False, with its records, for a service that is missing or bad.
  bool ServiceIsGood(const RouteFile& file, const std::string& service);

  Program& program_;
  Progress& progress_;
  ItemScan& scan_;
  const ServiceVerification& services_;
  FinalReport& report_;
  std::string activityName_;  // carried over to an empty file
};

}  // namespace quillon
