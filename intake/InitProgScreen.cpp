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
  if (bar.caption == kNothingFound) SayWhereZipsBelong();
  SharedState& shared = program_.shared;
  if (shared.RebuildAfterCleanUp) {
    shared.RebuildAfterCleanUp = false;
    shared.ReturnToCleanUp = true;
    program_.stage.Unload(Name());
    program_.stage.ShowModal("frmCleanUp");
  }
  btnOK.enabled = true;
}

/// What lies there all the same is of no kind that can be added.
void InitProgScreen::SayWhereZipsBelong() {
  const std::string folder = program_.app.DownloadedRoutes();
  const auto others = program_.files.ListFiles(folder + "\\*.*");
  std::string waiting = "None waits there now.";
  if (others.size() == 1)
    waiting = "What waits there can't be added: " + others.front();
  else if (!others.empty())
    waiting =
        std::to_string(others.size()) + " files wait there that can't be added, such as " + others.front();
  SetLabel("lblWhere", lblWhere,
           "Route zips belong in\r\n" + program_.files.Host().HostPath(folder) + "\r\n" + waiting, true);
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
