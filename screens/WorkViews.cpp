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
  PictureButton* ok = Bind("btnOK", model.btnOK, "Back to main screen.", [&model] { model.btnOKClick(); });
  SetDefault(ok);
  SetCancel(ok);
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

frmInitProg::frmInitProg(InitProgScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBarUnzip") {
  setWindowTitle("Quillon is adding routes");
  Bind("lblMessage", model.lblMessage);
  const QString report = "Show full report when finished?";
  AddText("lblReport", report);
  BindTick("chkReport", model.chkReport, report, [&model] { model.chkReport = !model.chkReport; });
  PictureButton* ok =
      Bind("btnOK", model.btnOK, "Back to the route manager.", [&model] { model.btnOKClick(); });
  SetDefault(ok);
  SetCancel(ok);
  Bind(model.Timer2, [&model] { model.Timer2Tick(); });
}

frmCleanUp::frmCleanUp(CleanUpScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBar") {
  setWindowTitle("Quillon is cleaning up");
  Bind("lblMessage", model.lblMessage);
  PictureButton* ok = Bind("btnOK", model.btnOK, "Done.", [&model] { model.btnOKClick(); });
  SetDefault(ok);
  SetCancel(ok);
  Bind(model.TimerWait, [&model] { model.TimerWaitTick(); });
}

frmPack::frmPack(PackScreen& model, Desk& desk) : ProgressView(model, desk, "ProgressBarZip") {
  setWindowTitle("Quillon is Working...");
  Bind("lblRouteName", model.lblRouteName);
  PictureButton* ok = Bind("btnOK", model.btnOK, "Done.", [&model] { model.btnOKClick(); });
  SetDefault(ok);
  SetCancel(ok);
}

frmActivityCheck::frmActivityCheck(ActivityCheckScreen& model, Desk& desk)
    : ProgressView(model, desk, "ProgressBar") {
  setWindowTitle("Quillon is checking");
  AddText("lblMessage",
          "All consists, services and activities are being checked.\nThis may take a few minutes...");
  Bind("btnCauses", model.btnCauses, "Open the page of causes, in place of the report.",
       [&model] { model.btnCausesClick(); });
  PictureButton* ok =
      Bind("btnOK", model.btnOK, "Back to the route manager.", [&model] { model.btnOKClick(); });
  SetDefault(ok);
  SetCancel(ok);
  Bind(model.Timer1, [&model] { model.Timer1Tick(); });
}

}  // namespace quillon
