#include "screens/WorkViews.h"

namespace quillon {

frmLoad::frmLoad(LoadScreen& model, Desk& desk)
    : ProgressView(model, desk, "ProgressBarUnzip"), model_(model) {
  setWindowTitle("Quillon is loading a route");
  Bind("lblRouteName", model.lblRouteName);
  Bind("lblFirstMessage", model.lblFirstMessage);
  Bind("lblTerrainInfo", model.lblTerrainInfo);
  Bind("lblMessage", model.lblMessage);
  cardRoom_ = AddText("cardRoom", {});
  cardRoom_->setAccessibleName("Card with a warning");
  lblRoom_ = AddText("lblRoom", {});
  Bind("btnStart", model.btnStart, "Close Quillon and start Train Simulator.",
       [&model] { model.btnStartClick(); });
  BindOK(model.btnOK, "Back to main screen.", [&model] { model.btnOKClick(); });
}

void frmLoad::Sync() {
  ProgressView::Sync();
  const Label& room = model_.lblRoom;
  const bool shown = room.visible && !room.text.empty();
  if (shown) ShowPicture(*cardRoom_, LayoutOf("cardRoom").picture);
  if (shown) ShowWhole(*lblRoom_, room.text);
  cardRoom_->setVisible(shown);
  lblRoom_->setVisible(shown);
}

frmZipCheck::frmZipCheck(ZipCheckScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBarUnzip") {
  setWindowTitle("Quillon is adding routes");
  Bind("lblMessage", model.lblMessage);
  Bind(model.Timer2, [&model] { model.Timer2Tick(); });
}

frmInitProg::frmInitProg(InitProgScreen& model, Desk& desk)
    : ProgressView(model, desk, "ProgressBarUnzip"), model_(model) {
  setWindowTitle("Quillon is adding routes");
  lblMessage_ = Bind("lblMessage", model.lblMessage);
  lblWhere_ = AddText("lblWhere", {});
  const QString report = "Show full report when finished?";
  AddText("lblReport", report);
  BindTick("chkReport", model.chkReport, report, [&model] { model.chkReport = !model.chkReport; });
  BindOK(model.btnOK, "Back to the route manager.", [&model] { model.btnOKClick(); });
  Bind(model.Timer2, [&model] { model.Timer2Tick(); });
}

void frmInitProg::Sync() {
  ProgressView::Sync();
  const Label& where = model_.lblWhere;
  if (where.visible) ShowWhole(*lblWhere_, where.text);
  lblWhere_->setVisible(where.visible);
  lblMessage_->setVisible(model_.lblMessage.visible && !where.visible);
}

frmCleanUp::frmCleanUp(CleanUpScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBar") {
  setWindowTitle("Quillon is cleaning up");
  Bind("lblMessage", model.lblMessage);
  BindOK(model.btnOK, "Done.", [&model] { model.btnOKClick(); });
  Bind(model.TimerWait, [&model] { model.TimerWaitTick(); });
}

frmPack::frmPack(PackScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBarZip") {
  setWindowTitle("Quillon is Working...");
  Bind("lblRouteName", model.lblRouteName);
  BindOK(model.btnOK, "Done.", [&model] { model.btnOKClick(); });
}

frmActivityCheck::frmActivityCheck(ActivityCheckScreen& model, Desk& desk)
    : ProgressView(model, desk, "ProgressBar"), model_(model) {
  setWindowTitle("Quillon is checking");
  lblMessage_ = AddText("lblMessage", {});
  Bind("btnCauses", model.btnCauses, "Open the page of causes, in place of the report.",
       [&model] { model.btnCausesClick(); });
  BindOK(model.btnOK, "Back to the route manager.", [&model] { model.btnOKClick(); });
  Bind(model.Timer1, [&model] { model.Timer1Tick(); });
}

void frmActivityCheck::Sync() {
  ProgressView::Sync();
  ShowWhole(*lblMessage_, model_.Message());
}

}  // namespace quillon
