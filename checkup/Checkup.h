// The Checkup: every consist, service and activity, judged by the trains that are installed.
#pragma once

#include <functional>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "checkup/ActivityVerification.h"
#include "checkup/CauseFile.h"
#include "checkup/Causes.h"
#include "checkup/CheckupBefore.h"
#include "checkup/ConsistAnalysis.h"
#include "checkup/FinalReport.h"
#include "checkup/ItemScan.h"
#include "checkup/LastCheckup.h"
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
  /// The last whole Checkup has seen the same.
  bool WouldBeTheSame();
  bool InitCheckupPaths();
  void CheckEverything();
  /// `again`: they only show what they showed the last time.
  void RunPasses(bool again);
  void ReadTrainsAndConsists(bool again);
  void ReadGame();
  void BeginJudging(std::launch when);
  CheckupSight Sight();
  /// `upTo` says what ended the passes; empty after whole ones.
  void RecordCauses(const std::string& upTo);
  void Finish();

  Program& program_;
  int barMaximum_ = 100;
  Progress& progress_;
  const std::function<void()> stopTimer_;
  std::optional<FileSystem::Pass> pass_;
  const LastCheckup last_;
  CheckupBefore before_;
  FactsCache cache_;
  TrainDatabase trains_;
  ItemScan scan_;
  FinalReport report_;
  ConsistAnalysis consists_;
  ServiceVerification services_;
  ActivityVerification activities_;
  std::optional<RouteFileLists> lists_;
  std::vector<FileFacts> serviceFacts_, activityFacts_;
  bool gameIsRead_ = false;
  FactsReader reader_;  // goes before what it reads into
  std::optional<TrainPlaces> places_;
  std::optional<CauseInput> input_;
  std::optional<CauseRecord> record_;
  std::optional<CheckupSight> sight_;
  std::future<void> judging_;  // goes first: it uses the others
};

}  // namespace quillon
