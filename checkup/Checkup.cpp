#include "checkup/Checkup.h"

#include <utility>

namespace quillon {

Checkup::Checkup(Program& program, Progress& progress, std::function<void()> stopTimer)
    : program_(program),
      progress_(progress),
      stopTimer_(std::move(stopTimer)),
      trains_(program),
      scan_(trains_, program.shared.LastVerifiedItem),
      report_(program),
      consists_(program, progress, scan_, report_),
      services_(program, progress, consists_, report_),
      activities_(program, progress, scan_, services_, report_) {}

void Checkup::Run() {
  ClearRecords();
  if (!InitCheckupPaths()) return;
  if (program_.shared.CheckTrains) CheckEverything();
  Finish();
}

void Checkup::ClearRecords() {
  if (!program_.shared.CheckTrains) return;
  program_.Step("Removing the records of the last Checkup");
  const std::string trains = program_.app.TrainRecords();
  if (program_.files.IsPathAFolder(trains)) program_.files.DelTree(trains);
  program_.files.MakeFolderIfMissing(trains);
}

/// False, and said so, when the options name no game.
bool Checkup::InitCheckupPaths() {
  program_.Step("Looking for Train Simulator");
  const std::string settings = program_.app.SettingsIni();
  if (program_.ini.ReadIni("TrainSim", "Train.exe", "No", settings) == "No") {
    program_.boxes.Tell("Train Simulator not found!",
                        "You must enter the correct path to Train Simulator on the Quillon Options screen.");
    stopTimer_();
    progress_.Colour(kRed);
    progress_.Value(100);
    progress_.Caption("Go to Options...");
    program_.Refuse();
    return false;
  }
  progress_.Caption("Initializing paths...");
  program_.shared.TrainSimPath = program_.ini.ReadIni("TrainSim", "Path", kNoData, settings);
  return true;
}

void Checkup::CheckEverything() {
  const FileSystem::Pass pass(program_.files.Host());
  const auto records = program_.ini.Batch();
  report_.Create();
  progress_.Caption("Creating train database...");
  program_.Step("Creating the train database");
  trains_.BuildTrainDatabase([this] { progress_.Yield(); });
  stopTimer_();
  progress_.Value(0);
  progress_.Caption("Analyzing consists...");
  consists_.LoadConsistList();
  progress_.Caption("Verifying consists...");
  consists_.VerifyConsists();
  progress_.Maximum(100);
  progress_.Caption("Verifying services...");
  program_.Step("Looking for services and activities");
  const RouteFileLists lists = WalkRoutes(program_);
  services_.VerifyServices(lists.lstServices);
  progress_.Caption("Verifying activities...");
  activities_.VerifyActivities(lists.lstAllActivities);
  barMaximum_ = static_cast<int>(lists.lstAllActivities.size());
}

void Checkup::Finish() {
  stopTimer_();
  progress_.Colour(kGreen);
  progress_.Value(barMaximum_);
  progress_.Caption("Finished!");
}

}  // namespace quillon
