#include "checkup/Checkup.h"

#include <utility>

#include "catalogue/Catalogue.h"
#include "checkup/CheckupReport.h"
#include "core/host/Memory.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kBigGame = 60'000;  // files

}  // namespace

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
      last_(program),
      before_(program),
      cache_(program),
      trains_(program),
      scan_(trains_, cache_.Items(), program.shared.LastVerifiedItem),
      report_(program),
      consists_(program, progress, reader_, scan_, report_),
      services_(program, progress, consists_, report_),
      activities_(program, progress, scan_, services_, report_),
      reader_(program, cache_) {}

bool Checkup::Run() {
  pass_.emplace(program_.files.Host());
  const bool again = WouldBeTheSame();
  if (!again && program_.shared.CheckTrains) before_.SetRecordsAside();
  if (!InitCheckupPaths()) {
    before_.Drop();
    return true;
  }
  try {
    if (again)
      RunPasses(true);
    else if (program_.shared.CheckTrains)
      CheckEverything();
  } catch (const GivenUp&) {
    stopTimer_();
    before_.TakeBack();
    return false;
  }
  Finish();
  return true;
}

/// A look at the files' names and times is enough to know.
bool Checkup::WouldBeTheSame() {
  const std::string settings = program_.app.SettingsIni();
  if (!program_.shared.CheckTrains || !last_.IsNoted() ||
      program_.ini.ReadIni("TrainSim", "Train.exe", "No", settings) == "No" ||
      program_.ini.ReadIni("TrainSim", "Path", kNoData, settings) != program_.shared.TrainSimPath)
    return false;
  program_.Step("Looking for what has changed");
  consists_.ListAsBroughtBack();
  lists_ = WalkRoutes(program_);
  CheckupSight sight = Sight();
  sight.Add(std::uint64_t{consists_.Standing()});
  if (!last_.WouldBeTheSame(sight) || !CauseRecord(program_).Renew()) return false;
  last_.HandOn();
  last_.Note(sight);
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
  try {
    RunPasses(false);
  } catch (const RunTimeError& error) {
    const std::string step = program_.step;
    before_.Drop();
    try {
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
  sight_->Add(std::uint64_t{consists_.Standing()});
  if (!consists_.BackupsStood()) last_.Note(*sight_);
}

void Checkup::RunPasses(bool again) {
  const auto records = program_.ini.Batch();
  ReadTrainsAndConsists(again);
  progress_.Caption("Verifying consists...");
  consists_.VerifyConsists(again);
  progress_.Maximum(100);
  progress_.Caption("Verifying services...");
  services_.VerifyServices(lists_->lstServices, serviceFacts_, again);
  progress_.Caption("Verifying activities...");
  activities_.VerifyActivities(lists_->lstAllActivities, activityFacts_, again);
  progress_.Detail(0, 0, {});
  barMaximum_ = static_cast<int>(lists_->lstAllActivities.size());
}

/// Until the end of this, a Checkup may be given up.
void Checkup::ReadTrainsAndConsists(bool again) {
  std::optional<MayBeGivenUp> scope;
  if (!again) {
    scope.emplace(progress_);
    before_.NoteConsists();
    report_.Create();
  }
  progress_.Caption("Creating train database...");
  program_.Step("Creating the train database");
  if (!again) trains_.BuildTrainDatabase([this] { progress_.Yield(); });
  stopTimer_();
  progress_.Value(0);
  progress_.Caption("Analyzing consists...");
  if (!again) ReadGame();
  consists_.LoadConsistList(again);
  if (again) return;
  progress_.Yield();  // the last moment to give it up
  last_.Forget();
  before_.Drop();
}

/// Much is read while the rest is looked for.
void Checkup::ReadGame() {
  consists_.BeginReading();
  program_.Step("Looking for services and activities");
  if (!lists_) lists_ = WalkRoutes(program_);
  reader_.Begin(FileKind::Service, lists_->lstServices, serviceFacts_);
  reader_.Begin(FileKind::Activity, lists_->lstAllActivities, activityFacts_);
  sight_ = Sight();
  places_.emplace(program_);
  program_.Step("Reading the consists");
  reader_.Finish([&](std::size_t done, std::size_t all) {
    progress_.Detail(done, all, "files");
    progress_.Yield();
  });
  progress_.Detail(0, 0, {});
  cache_.LetGo();
  gameIsRead_ = true;
  // The passes leave the facts as they are, and the causes can be found meanwhile; those of a very big game
  // afterwards, when there is more room.
  if (consists_.Facts().size() + serviceFacts_.size() + activityFacts_.size() < kBigGame)
    BeginJudging(std::launch::async | std::launch::deferred);
  else
    GiveFreedMemoryBack();
}

CheckupSight Checkup::Sight() {
  CheckupSight sight;
  for (const std::string& text : {program_.shared.TrainSimPath, Catalogue(program_).Loaded(),
                                  program_.shared.LastConsistName, program_.shared.LastVerifiedItem})
    sight.Add(text);
  sight.Add(consists_.Consists());
  sight.Add(lists_->lstServices);
  sight.Add(lists_->lstAllActivities);
  sight.AddTrains(program_);
  return sight;
}

void Checkup::BeginJudging(std::launch when) {
  input_.emplace(CauseInput{reader_.Items(), trains_, *places_, {}, {}, {}});
  input_->consists.reserve(consists_.Facts().size());
  for (std::size_t i = 0; i < consists_.Facts().size(); ++i)
    input_->consists.push_back(CauseInput::Of(consists_.Consists()[i].shown, consists_.Facts()[i]));
  for (std::size_t i = 0; i < serviceFacts_.size(); ++i)
    input_->services.push_back(CauseInput::Place(lists_->lstServices[i].shown, serviceFacts_[i]));
  for (std::size_t i = 0; i < activityFacts_.size(); ++i)
    input_->activities.push_back(CauseInput::Place(lists_->lstAllActivities[i].shown, activityFacts_[i]));
  record_.emplace(program_);
  judging_ = std::async(when, [this] { record_->Make(FindCauses(*input_)); });
}

/// Nothing is known yet when the reading itself was ended. What is needed no more goes at once: a big game
/// takes much room.
void Checkup::RecordCauses(const std::string& upTo) {
  if (!gameIsRead_) return;
  pass_.reset();
  const bool big = !judging_.valid();
  if (big) {
    GiveFreedMemoryBack();
    BeginJudging(std::launch::deferred);
  }
  judging_.get();
  input_.reset();
  if (big) GiveFreedMemoryBack();
  cache_.Save({{FileKind::Consist, consists_.Consists(), consists_.Facts()},
               {FileKind::Service, lists_->lstServices, serviceFacts_},
               {FileKind::Activity, lists_->lstAllActivities, activityFacts_}});
  consists_.Forget();
  lists_.reset();
  serviceFacts_ = std::vector<FileFacts>();
  activityFacts_ = std::vector<FileFacts>();
  if (!upTo.empty()) record_->EndedEarly(upTo);
  record_->Write();
}

void Checkup::Finish() {
  stopTimer_();
  progress_.Colour(kGreen);
  progress_.Value(barMaximum_);
  progress_.Caption("Finished!");
}

}  // namespace quillon
