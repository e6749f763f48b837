// The Checkup: every consist, service and activity, judged by the trains that are installed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "checkup/ActivityVerification.h"
#include "checkup/CheckupBefore.h"
#include "checkup/ConsistAnalysis.h"
#include "checkup/FinalReport.h"
#include "checkup/ItemScan.h"
#include "checkup/ServiceVerification.h"
#include "checkup/TrainDatabase.h"
#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

/// False, and said so, when the options name no game.
bool GameIsKnown(Program& program, Progress& progress, const std::function<void()>& stopTimer);

class Checkup {
 public:
  /// `stopTimer` ends the decoration of the bar: from then on it counts.
  Checkup(Program& program, Progress& progress, std::function<void()> stopTimer);

  /// `CheckTrains` of the shared state says whether there is anything to do. Consists are moved in the game;
  /// services and activities are only read. False when the user has given it up, which they may until the
  /// first consist is moved: all is as before then.
  bool Run();

 private:
  bool InitCheckupPaths();
  void CheckEverything();
  void RunPasses();
  void ReadTrainsAndConsists();
  void ReadServices();
  void ReadActivities();
  std::vector<FileFacts> Read(FileKind kind, const std::vector<GameFile>& files, const char* unit);
  /// `upTo` says what ended the passes; empty after whole ones.
  void RecordCauses(const std::string& upTo);
  void Finish();

  Program& program_;
  int barMaximum_ = 100;
  Progress& progress_;
  const std::function<void()> stopTimer_;
  CheckupBefore before_;
  FactsCache cache_;
  FactsReader reader_;
  TrainDatabase trains_;
  ItemScan scan_;
  FinalReport report_;
  ConsistAnalysis consists_;
  ServiceVerification services_;
  ActivityVerification activities_;
  std::optional<RouteFileLists> lists_;
  std::optional<std::vector<FileFacts>> serviceFacts_, activityFacts_;
};

}  // namespace quillon
