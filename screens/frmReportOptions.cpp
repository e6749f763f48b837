#include "screens/frmReportOptions.h"

#include <QEvent>

namespace quillon {

frmReportOptions::frmReportOptions(ReportOptionsScreen& model, Desk& desk)
    : ScreenView(model, desk), model_(model) {
  ReportOptionsScreen& m = model_;
  setWindowTitle("Quillon Checkup");
  AddText("lblHead", "Checkup");
  AddText("lblText",
          "The Checkup looks through all the trains, consists, services and activities of Train Simulator "
          "and finds "
          "those that cannot work because something is missing.\n\nIt may take a few minutes. Faulty "
          "consists are put "
          "aside, and come back at the next Checkup after their trains were installed.");
  BindChoices();
  label1_ = AddText("Label1", "Check Trains: all trains, consists, services, activities");
  label2_ = AddText("Label2", "View Report: the full one, when the Checkup has finished");
  chkTrains_ = BindTick("chkTrains", trains_, label1_->text(), [&m] { m.chkTrainsClick(); });
  chkView_ = BindTick("chkView", view_, label2_->text(), [&m] { m.chkViewClick(); });
  static const Button always;
  SetDefault(Bind("btnOK", always, "Do what is ticked.", [&m] { m.btnOKClick(); }));
  SetCancel(Bind("btnCancel", always, "Back to the route manager.", [&m] { m.btnCancelClick(); }));
  for (QLabel* label : {label1_, label2_}) label->installEventFilter(this);
}

void frmReportOptions::BindChoices() {
  ReportOptionsScreen& m = model_;
  causes_ = Bind("btnCauses", m.btnCauses, {}, [&m] { m.btnCausesClick(); });
  fix_ = Bind("btnFix", m.btnFix, {}, [&m] { m.btnFixClick(); });
  routes_ = Bind("btnRoutes", m.btnRoutes, {}, [&m] { m.btnRoutesClick(); });
}

void frmReportOptions::TellWhatTheyDo() {
  const ReportOptionsScreen& m = model_;
  const QString first = "A Checkup must run first: click OK.";
  causes_->SetTip(m.btnCauses.enabled
                      ? "Open the page of causes: what to install first, so that most activities run."
                      : first);
  fix_->SetTip(m.btnFix.enabled      ? "Show which train folders would be renamed, and ask."
               : m.btnCauses.enabled ? "No train folder is known that a rename would put right."
                                     : first);
  routes_->SetTip(m.btnRoutes.enabled
                      ? "Tell for each route which activities can be played, without loading it."
                      : "There are no routes yet.");
}

void frmReportOptions::Sync() {
  trains_ = model_.chkTrains > 0;
  view_ = model_.chkView > 0;
  chkTrains_->SetGrey(model_.chkTrains == 2);
  chkView_->SetGrey(model_.chkView == 2);
  TellWhatTheyDo();
  ScreenView::Sync();
  // Where there is a result, it is what the user most likely came for.
  if (model_.btnCauses.enabled && !hasCauses_) causes_->setFocus();
  hasCauses_ = model_.btnCauses.enabled;
}

bool frmReportOptions::eventFilter(QObject* watched, QEvent* event) {
  if (watched == label1_ && event->type() == QEvent::MouseButtonRelease) Do([this] { model_.Label1Click(); });
  if (watched == label2_ && event->type() == QEvent::MouseButtonRelease) Do([this] { model_.Label2Click(); });
  return ScreenView::eventFilter(watched, event);
}

}  // namespace quillon
