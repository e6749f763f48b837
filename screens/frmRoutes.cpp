#include "screens/frmRoutes.h"

#include <QEvent>

#include "screens/DroppedZips.h"

namespace quillon {

frmRoutes::frmRoutes(RoutesScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  RoutesScreen& m = model_;
  setWindowTitle("Quillon Route Manager");
  Bind("lblInstructHead", m.lblInstructHead);
  Bind("lblInstructMid", m.lblInstructMid);
  SetDefault(
      Bind("cmdAddRoutes", m.cmdAddRoutes, "Add new routes to Quillon.", [&m] { m.cmdAddRoutesClick(); }));
  Bind("btnWhy", m.btnWhy, "Why was a route not added?", [&m] { m.btnWhyClick(); });
  Bind("btnPack", m.btnPack, "Pack a route that's already installed.", [this] { PickRoute(); });
  Bind("btnZips", m.btnZips, "Browse original route zip files.", [&m] { m.btnZipsClick(); });
  Bind("btnShelf", m.btnShelf, "Rescued files.", [&m] { m.btnShelfClick(); });
  Bind("btnClean", m.btnClean, "Perform clean up operation.", [&m] { m.btnCleanClick(); });
  Bind("btnCheckup", m.btnCheckup, "Check for problems.", [&m] { m.btnCheckupClick(); });
  Bind("btnHelp", m.btnHelp, "Need help?", [&m] { m.btnHelpClick(); })->setShortcut(Qt::Key_F1);
  SetCancel(Bind("btnOK", m.btnOK, "Back to main screen.", [&m] { m.btnOKClick(); }));
  Bind(m.TimerFlashOn, [&m] { m.TimerFlashOnTick(); });
  Bind(m.TimerFlashOff, [&m] { m.TimerFlashOffTick(); });
  for (PictureButton* button : findChildren<PictureButton*>()) button->installEventFilter(this);
  new DroppedZips(*this, desk);
}

bool frmRoutes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Enter || event->type() == QEvent::FocusIn)
    Do([&] { model_.Explain(watched->objectName().toStdString()); });
  return ScreenView::eventFilter(watched, event);
}

void frmRoutes::PickRoute() {
  const QString folder =
      TheDesk().PickFolder("Please select the route you'd like to pack.", model_.btnPackClick());
  model_.PackFolderPicked(folder.toStdString());
}

}  // namespace quillon
