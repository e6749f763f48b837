// finalreport.ini: what a Checkup found, one record a line.
#pragma once

#include <string>

#include "checkup/ItemScan.h"
#include "core/Program.h"

namespace quillon {

class FinalReport {
 public:
  explicit FinalReport(Program& program);

  /// The six sections, empty.
  void Create();

  // Names are put into proper case here, save that of an activity.
  void AddActivity(const std::string& route, const std::string& activityName, const std::string& file);
  void AddMissingService(const std::string& route, const std::string& service,
                         const std::string& activityName);
  void AddService(const std::string& route, const std::string& baseName, const std::string& consist);
  /// `file` with its extension.
  void AddConsist(const std::string& file);
  /// A consist that a service calls for: it lies nowhere, or was backed up for its trains.
  void AddCalledConsist(const std::string& consist, bool missing);
  void AddTrain(const TrainFault& fault);

 private:
  void Write(std::string_view section, const std::string& key, const std::string& value = {});

  Program& program_;
  const std::string FinalReportPath;
};

}  // namespace quillon
