#include "intake/InitProgScreen.h"

#include "intake/AddRoutes.h"

namespace quillon {

void InitProgScreen::Activate() {
  if (ran_) return;
  ran_ = true;
  SetLabel("lblMessage", lblMessage, kTakesItsTime, true);
  Timer2.enabled = true;
  {
    const Work work(*this);
    AddRoutes(program_, *this, [this] { CancelCheckpoint(); }).Run();
  }
  Timer2.enabled = false;
  SharedState& shared = program_.shared;
  if (shared.RebuildAfterCleanUp) {
    shared.RebuildAfterCleanUp = false;
    shared.ReturnToCleanUp = true;
    program_.stage.Unload(Name());
    program_.stage.ShowModal("frmCleanUp");
  }
  btnOK.enabled = true;
}

void InitProgScreen::CancelCheckpoint() {
  if (txtCancel_ != "CANCEL") return;
  txtCancel_ = "harnoke";
  program_.stage.Unload(Name());
}

void InitProgScreen::Timer2Tick() {
  decoration_ += program_.random.Whole(10);
  if (decoration_ > 100) decoration_ = 5;
  Value(decoration_);
}

void InitProgScreen::btnOKClick() {
  program_.shared.ShowIntakeReport = chkReport;
  program_.shared.ZipsSetAside = false;
  program_.stage.Unload(Name());
  program_.stage.Show("frmRoutes");
}

}  // namespace quillon
