#include "checkup/Checkup.h"

#include <utility>

#include "checkup/CauseFile.h"
#include "checkup/Causes.h"
#include "checkup/CheckupReport.h"
#include "core/Text.h"

namespace quillon {

bool GameIsKnown(Program& program, Progress& progress, const std::function<void()>& stopTimer) {
  program.Step("Looking for Train Simulator");
  if (program.ini.ReadIni("TrainSim", "Train.exe", "No", program.app.SettingsIni()) != "No") return true;
  program.boxes.Tell("Train Simulator not found!",
                     "You must enter the correct path to Train Simulator on the Quillon Options screen.");
  stopTimer();
  progress.Colour(kRed);
  progress.Value(100);
  progress.Caption("Go to Options...");
  program.Refuse();
  return false;
}

Checkup::Checkup(Program& program, Progress& progress, std::function<void()> stopTimer)
    : program_(program),
      progress_(progress),
      stopTimer_(std::move(stopTimer)),
      before_(program),
      cache_(program),
      reader_(program, cache_),
      trains_(program),
      scan_(trains_, reader_.Items(), program.shared.LastVerifiedItem),
      report_(program),
      consists_(program, progress, reader_, scan_, report_),
      services_(program, progress, consists_, report_),
      activities_(program, progress, scan_, services_, report_) {}

bool Checkup::Run() {
  if (program_.shared.CheckTrains) before_.SetRecordsAside();
  if (!InitCheckupPaths()) {
    before_.Drop();
    return true;
  }
  try {
    if (program_.shared.CheckTrains) CheckEverything();
  } catch (const GivenUp&) {
    stopTimer_();
    before_.TakeBack();
    return false;
  }
  Finish();
  return true;
}

bool Checkup::InitCheckupPaths() {
  if (!GameIsKnown(program_, progress_, stopTimer_)) return false;
  progress_.Caption("Initializing paths...");
  program_.shared.TrainSimPath =
      program_.ini.ReadIni("TrainSim", "Path", kNoData, program_.app.SettingsIni());
  return true;
}

void Checkup::CheckEverything() {
  const FileSystem::Pass pass(program_.files.Host());
  try {
    RunPasses();
  } catch (const RunTimeError& error) {
    const std::string step = program_.step;
    before_.Drop();
    try {
      if (consists_.AreRead())
        RecordCauses(error.text() + ": " + program_.files.Host().HostPath(error.path()) +
                     (error.reason().empty() ? "" : ", " + error.reason()));
      program_.shared.ShowReportWhenDone = false;
      WriteCheckupReport(program_);
    } catch (const RunTimeError&) {  // the first error is the one to tell
    }
    program_.Step(step);
    throw;
  }
  RecordCauses("");
}

void Checkup::RunPasses() {
  const auto records = program_.ini.Batch();
  report_.Create();
  ReadTrainsAndConsists();
  before_.Drop();
  progress_.Caption("Verifying consists...");
  consists_.VerifyConsists();
  progress_.Detail(0, 0, {});
  progress_.Maximum(100);
  progress_.Caption("Verifying services...");
  ReadServices();
  services_.VerifyServices(lists_->lstServices, *serviceFacts_);
  progress_.Caption("Verifying activities...");
  ReadActivities();
  activities_.VerifyActivities(lists_->lstAllActivities, *activityFacts_);
  progress_.Detail(0, 0, {});
  barMaximum_ = static_cast<int>(lists_->lstAllActivities.size());
}

void Checkup::ReadTrainsAndConsists() {
  const MayBeGivenUp scope(progress_);
  before_.NoteConsists();
  progress_.Caption("Creating train database...");
  program_.Step("Creating the train database");
  trains_.BuildTrainDatabase([this] { progress_.Yield(); });
  stopTimer_();
  progress_.Value(0);
  progress_.Caption("Analyzing consists...");
  consists_.LoadConsistList();
  progress_.Yield();  // the last moment to give it up
}

void Checkup::ReadServices() {
  program_.Step("Looking for services and activities");
  if (!lists_) lists_ = WalkRoutes(program_);
  if (!serviceFacts_) serviceFacts_ = Read(FileKind::Service, lists_->lstServices, "services");
}

void Checkup::ReadActivities() {
  if (!activityFacts_) activityFacts_ = Read(FileKind::Activity, lists_->lstAllActivities, "activities");
}

std::vector<FileFacts> Checkup::Read(FileKind kind, const std::vector<GameFile>& files, const char* unit) {
  auto facts = reader_.Read(kind, files, [&](std::size_t done) {
    progress_.Detail(done, files.size(), unit);
    progress_.Yield();
  });
  progress_.Detail(0, 0, {});
  return facts;
}

void Checkup::RecordCauses(const std::string& upTo) {
  ReadServices();  // a Checkup that ended early has not come to them
  ReadActivities();
  CauseInput input{reader_.Items(), trains_, {}, {}, {}};
  for (std::size_t i = 0; i < consists_.Facts().size(); ++i)
    input.consists.push_back({CutAtLastDot(consists_.Consists()[i].shown), &consists_.Facts()[i]});
  for (std::size_t i = 0; i < serviceFacts_->size(); ++i)
    input.services.push_back(CauseInput::Place(lists_->lstServices[i].shown, (*serviceFacts_)[i]));
  for (std::size_t i = 0; i < activityFacts_->size(); ++i)
    input.activities.push_back(CauseInput::Place(lists_->lstAllActivities[i].shown, (*activityFacts_)[i]));
  CauseList list = FindCauses(program_, input);
  list.upTo = upTo;
  cache_.Save({{FileKind::Consist, consists_.Consists(), consists_.Facts()},
               {FileKind::Service, lists_->lstServices, *serviceFacts_},
               {FileKind::Activity, lists_->lstAllActivities, *activityFacts_}});
  // The pages need none of the facts, and the facts much room.
  consists_.Forget();
  lists_.reset();
  serviceFacts_.reset();
  activityFacts_.reset();
  WriteCauses(program_, list);
}

void Checkup::Finish() {
  stopTimer_();
  progress_.Colour(kGreen);
  progress_.Value(barMaximum_);
  progress_.Caption("Finished!");
}

}  // namespace quillon
