#include "screens/frmOptions.h"

#include <QEvent>
#include <QLineEdit>

#include "screens/Fonts.h"

namespace quillon {

frmOptions::frmOptions(OptionsScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  OptionsScreen& m = model_;
  setWindowTitle("Quillon Options");
  AddText("lblWhere", "Is this where Train Simulator is located?");
  AddText("lblLocate", "If not, please click \"Locate\" to find it.");
  AddText("lblEasier", "This will make it much easier to add new routes to Quillon.");
  label7_ = AddText("Label7", "Show shortcut to downloaded routes folder on desktop?");
  label5_ = AddText("Label5", "Check for updates, post questions to the forum, and get news.");
  hint_ = AddText("lblHint", {});
  rights_ = AddText("lblRights", {});
  AddLink();
  Bind("lblVersion", m.lblVersion);
  AddPathField();
  Bind("btnLocate", m.btnLocate, "Browse for Train simulator folder.", [this] { Locate(); });
  BindTick("chkShortcut", m.chkShortcut, label7_->text(), [&m] { m.Label7Click(); });
  static const Button always;
  SetDefault(Bind("btnOK", always, "Back to main screen.", [&m] { m.btnOKClick(); }));
  SetCancel(Bind("btnCancel", always, "Cancel all changes.", [&m] { m.btnCancelClick(); }));
  Bind(m.TimerFlashOn, [&m] { m.TimerFlashOnTick(); });
  Bind(m.TimerFlashOff, [&m] { m.TimerFlashOffTick(); });
  setMouseTracking(true);
  label7_->installEventFilter(this);
}

/// Lies over Label5 and comes into view under the pointer, or when Tab reaches it.
void frmOptions::AddLink() {
  goToWebPage_ = new TextLink(LayoutOf("goToWebPage"), this);
  goToWebPage_->setObjectName("goToWebPage");
  goToWebPage_->setAccessibleName(label5_->text());
  goToWebPage_->setAccessibleDescription("Opens the web page of Quillon.");
  goToWebPage_->installEventFilter(this);
  Dress([this] { goToWebPage_->setGeometry(LayoutOf("goToWebPage").rect); });
  connect(goToWebPage_, &QAbstractButton::clicked, this,
          [this] { Do([this] { model_.goToWebPageClick(); }); });
}

void frmOptions::AddPathField() {
  const ControlLayout& layout = LayoutOf("txtTSPath");
  txtTSPath_ = new QLineEdit(this);
  txtTSPath_->setObjectName("txtTSPath");
  Dress([this, &layout] {
    txtTSPath_->setGeometry(layout.rect);
    txtTSPath_->setFont(FontOf(layout));
  });
  txtTSPath_->setFrame(false);
  txtTSPath_->setAccessibleName("Train Simulator folder");
  txtTSPath_->setStyleSheet(QStringLiteral("QLineEdit { color: %1; background: %2; "
                                           "selection-background-color: #000080; border: 2px solid %2; }"
                                           "QLineEdit:focus { border-color: #000080; }")
                                .arg(layout.colour.name(), layout.background.name()));
  connect(txtTSPath_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Do([&] { model_.SetTSPath(text.toStdString()); }); });
}

void frmOptions::Sync() {
  ScreenView::Sync();
  const QString path = QString::fromStdString(model_.txtTSPath());
  if (txtTSPath_->text() != path) txtTSPath_->setText(path);
  ShowWhole(*hint_, model_.Hint());
  ShowWhole(*rights_, model_.RightsHint());
  label5_->setVisible(!model_.goToWebPage.visible);
  goToWebPage_->ShowText(model_.goToWebPage.visible ? QString::fromStdString(model_.goToWebPage.text)
                                                    : QString());
}

void frmOptions::Locate() {
  const std::string start = model_.btnLocateClick();
  const QString folder = TheDesk().PickFolder("Where is Train Simulator?", start);
  model_.FolderPicked(folder.toStdString());
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched == goToWebPage_ && (type == QEvent::Enter || type == QEvent::FocusIn))
    Do([this] { model_.Label5Hover(); });
  if (watched == goToWebPage_ && type == QEvent::FocusOut) HideLink();
  if (watched == label7_ && type == QEvent::MouseButtonRelease) Do([this] { model_.Label7Click(); });
  return ScreenView::eventFilter(watched, event);
}

void frmOptions::HideLink() {
  if (model_.goToWebPage.visible) Do([this] { model_.ScreenHover(); });
}

void frmOptions::mouseMoveEvent(QMouseEvent*) {
  if (!goToWebPage_->hasFocus()) HideLink();
}

}  // namespace quillon
