#include "checkup/CheckupScreens.h"

#include "checkup/Checkup.h"
#include "checkup/CheckupReport.h"

namespace quillon {

void ReportOptionsScreen::Activate() {
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

void ReportOptionsScreen::btnCancelClick() {
  program_.Refuse();
  program_.stage.Unload(Name());
}

void ActivityCheckScreen::Activate() {
  if (ran_) return;
  ran_ = true;
  {
    const Work work(*this);
    Checkup(program_, *this, [this] { Timer1.enabled = false; }).Run();
  }
  btnOK.enabled = true;
}

void ActivityCheckScreen::Timer1Tick() {
  CheckupCounter_ += program_.random.Whole(16);
  if (CheckupCounter_ > 100) CheckupCounter_ = 5;
  Value(CheckupCounter_);
}

void ActivityCheckScreen::btnOKClick() {
  SharedState& shared = program_.shared;
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

}  // namespace quillon
