#include "checkup/CheckupScreens.h"

#include <utility>

#include "catalogue/Catalogue.h"
#include "checkup/CauseFile.h"
#include "checkup/Checkup.h"
#include "checkup/CheckupReport.h"
#include "checkup/RouteCheckup.h"
#include "checkup/TrainMoves.h"

namespace quillon {

void ReportOptionsScreen::Activate() {
  const auto counts = ReadCauseCounts(program_, program_.app.CausesJson());
  btnCauses.enabled = counts.has_value();
  // The whole list is long, and mostly there is nothing to move.
  const auto causes = counts && counts->moves > 0 ? ReadCauses(program_) : std::nullopt;
  btnFix.enabled = causes && !PossibleMoves(program_, *causes).empty();
  btnRoutes.enabled = Catalogue(program_).AnyRoute();
  if (program_.files.FileExists(program_.app.TrainRecord("finalreport.ini"))) return;
  SetTrains(2);
  program_.shared.CheckTrains = true;
}

void ReportOptionsScreen::SetTrains(int value) {
  chkTrains = value;
  if (program_.shared.CheckTrains && chkTrains != 2) chkTrains = 2;
  if (chkTrains > 0)
    SetView(2);
  else if (chkView == 2)
    SetView(1);
}

void ReportOptionsScreen::SetView(int value) { chkView = chkTrains > 0 ? 2 : value; }

void ReportOptionsScreen::Label1Click() {
  if (chkTrains == 1)
    SetTrains(0);
  else
    SetTrains(chkTrains == 0 ? 1 : 2);
}

void ReportOptionsScreen::Label2Click() {
  if (chkView == 0)
    SetView(1);
  else if (chkView == 1 && chkTrains < 1)
    SetView(0);
}

void ReportOptionsScreen::btnOKClick() {
  program_.shared.CheckTrains = chkTrains > 0;
  if (chkTrains > 0) {
    RunCheckup(chkView > 0);
    return;
  }
  if (chkView > 0) program_.shell.OpenInShell(CheckupPage(program_));
  CloseWithoutRun();
}

void ReportOptionsScreen::RunCheckup(bool show) {
  program_.shared.ShowReportWhenDone = show;
  program_.stage.Unload(Name());
  program_.stage.ShowModal("frmActivityCheck");
}

void ReportOptionsScreen::CloseWithoutRun() {
  program_.shared.ShowReportWhenDone = program_.shared.BuildReportOnReturn = program_.shared.CheckTrains =
      false;
  program_.stage.Unload(Name());
}

void ReportOptionsScreen::btnCausesClick() {
  if (!btnCauses.enabled) return;
  program_.shell.OpenInShell(program_.app.CausesHtml());
  CloseWithoutRun();
}

void ReportOptionsScreen::btnFixClick() {
  const auto causes = ReadCauses(program_);
  const auto moves = causes ? PossibleMoves(program_, *causes) : std::vector<TrainMove>();
  btnFix.enabled = btnFix.enabled && !moves.empty();  // they may have been made by hand since
  if (!btnFix.enabled || !AskAndMove(program_, moves)) return;
  program_.shared.CheckTrains = true;
  RunCheckup(true);
}

void ReportOptionsScreen::btnRoutesClick() {
  if (btnRoutes.enabled) JudgeRoutes(Catalogue(program_).BuildList().zips, true);
}

void ReportOptionsScreen::JudgeRoutes(const std::vector<std::string>& zips, bool show) {
  if (zips.empty()) return;
  program_.shared.RoutesToJudge = zips;
  RunCheckup(show);
}

void ReportOptionsScreen::btnCancelClick() {
  program_.Refuse();
  program_.stage.Unload(Name());
}

void ActivityCheckScreen::Activate() {
  if (ran_) return;
  ran_ = true;
  ofRoutes_ = !program_.shared.RoutesToJudge.empty();
  bool done = false;
  {
    const Work work(*this);
    done = ofRoutes_ ? JudgeRoutes() : Checkup(program_, *this, [this] { Timer1.enabled = false; }).Run();
  }
  if (!done) return LeaveGivenUp();
  btnOK.enabled = true;
  btnCauses.enabled = !ofRoutes_ && program_.files.FileExists(program_.app.CausesHtml());
}

/// As by OK, without a report.
void ActivityCheckScreen::LeaveGivenUp() {
  SharedState& shared = program_.shared;
  shared.ShowReportWhenDone = shared.BuildReportOnReturn = shared.CheckTrains = false;
  program_.Refuse();
  program_.stage.Unload(Name());
}

std::string ActivityCheckScreen::Message() const {
  if (!btnOK.enabled)
    return "All consists, services and activities are being checked.\nThis may take a few minutes...";
  if (bar.colour == kRed) return "Train Simulator was not found, so nothing was checked.";
  if (ofRoutes_) return "Your routes have been judged.\nClick OK to see what each of them lacks.";
  return "The Checkup has finished. Click OK to read its report,\nor What to do first to see what is "
         "missing.";
}

bool ActivityCheckScreen::JudgeRoutes() {
  const auto zips = std::exchange(program_.shared.RoutesToJudge, {});
  const auto stopTimer = [this] { Timer1.enabled = false; };
  program_.shared.CheckTrains = false;
  if (!GameIsKnown(program_, *this, stopTimer)) {
    program_.shared.ShowReportWhenDone = false;
    return true;
  }
  Caption("Judging routes...");
  try {
    const MayBeGivenUp scope(*this);  // nothing is written before all are judged
    WriteRouteCauses(program_, RouteCheckup(program_, *this).Judge(zips));
  } catch (const GivenUp&) {
    return false;
  }
  Detail(0, 0, {});
  stopTimer();
  Colour(kGreen);
  Value(100);
  Caption("Finished!");
  return true;
}

void ActivityCheckScreen::Timer1Tick() {
  CheckupCounter_ += program_.random.Whole(16);
  if (CheckupCounter_ > 100) CheckupCounter_ = 5;
  Value(CheckupCounter_);
}

void ActivityCheckScreen::btnOKClick() {
  SharedState& shared = program_.shared;
  if (ofRoutes_) {
    if (shared.ShowReportWhenDone) program_.shell.OpenInShell(program_.app.CausesOfRoutes());
    shared.ShowReportWhenDone = false;
    program_.stage.Unload(Name());
    return;
  }
  Caption("Generating report...");
  if (shared.ShowReportWhenDone && !shared.CheckTrains) {
    program_.shell.OpenInShell(CheckupPage(program_));
    shared.BuildReportOnReturn = shared.ShowReportWhenDone = false;
  } else if (shared.ShowReportWhenDone) {
    shared.BuildReportOnReturn = true;
  }
  shared.CheckTrains = false;
  program_.stage.Unload(Name());
}

/// The report is written all the same.
void ActivityCheckScreen::btnCausesClick() {
  if (!btnCauses.enabled) return;
  program_.shell.OpenInShell(program_.app.CausesHtml());
  const bool report = program_.shared.ShowReportWhenDone;
  btnOKClick();
  program_.shared.ShowReportWhenDone = false;
  program_.shared.BuildReportOnReturn = report;
}

}  // namespace quillon
