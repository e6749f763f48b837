#include "screens/frmMain.h"

#include <QImageReader>
#include <QMouseEvent>

#include "screens/Art.h"
#include "screens/DroppedZips.h"
#include "screens/Fonts.h"

namespace quillon {
namespace {

/// The light of the signal, by the numbers in the text; none while nothing is known, or without activities.
QString AspectOf(const Label& label) {
  const QStringList words = QString::fromStdString(label.text).split(' ');
  const int playable = words[0].toInt(), of = words.value(2).toInt();
  if (!label.visible || of <= 0) return {};
  return playable >= of ? "green" : playable > 0 ? "amber" : "red";
}

}  // namespace

frmMain::frmMain(MainScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  imgRoute_ = AddText("imgRoute", {});
  imgRoute_->setAccessibleName("Preview of the route");
  lampLoaded_ = AddText("lampLoaded", {});
  Bind("lblRouteName", model.lblRouteName);
  Bind("lblLoaded", model.lblLoaded);
  Bind("lblRightClick", model.lblRightClick);
  hint_ = AddText("lblHint", {});
  BindButtons();
  BindLists();
  BindTimers();
  new DroppedZips(*this, desk);
}

void frmMain::BindButtons() {
  MainScreen& m = model_;
  Bind("btnRouteList", m.btnRouteList, "Routes list.", [&m] {
    m.btnRouteListClick();
  })->setShortcut(Qt::ALT | Qt::Key_Down);
  Bind("btnInfo", m.btnInfo, "Route information.", [&m] {
    m.btnInfoClick();
  })->setShortcut(Qt::ALT | Qt::Key_I);
  BindPlayable();
  SetDefault(Bind("btnLoad", m.btnLoad, "Load the selected route into Train Simulator.",
                  [&m] { m.btnLoadClick(); }));
  Bind("btnOptions", m.btnOptions, "Various Quillon settings.", [&m] { m.btnOptionsClick(); });
  Bind("btnManage", m.btnManage, "Add routes, check for problems, etc.", [&m] { m.btnManageClick(); });
  Bind("btnHelp", m.btnHelp, "Need help?", [&m] { m.btnHelpClick(); })->setShortcut(Qt::Key_F1);
  SetCancel(Bind("btnExit", m.btnExit, "Exit Quillon.", [&m] { m.btnExitClick(); }));
}

/// A sign by the line, its signal, and the words, which both leave the pointer to the sign.
void frmMain::BindPlayable() {
  signPlayable_ =
      Bind("signPlayable", playable_, "Open the page of causes at this route: what to do first.", [this] {
        if (ListIsOpen()) model_.CloseList();
        model_.lblPlayableClick();
      });
  lampPlayable_ = AddText("lampPlayable", {});
  lblPlayable_ = AddText("lblPlayable", {});
  for (QLabel* label : {lampPlayable_, lblPlayable_}) label->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void frmMain::BindLists() {
  MainScreen& m = model_;
  HoverList* routes = Bind("ListRoutes", m.ListRoutes, "Routes");
  routes->OnHover = [this, &m](int row, int y) { Do([&] { m.ListRoutesHover(row, y); }); };
  routes->OnLeftPress = [this, &m] { Do([&m] { m.ListRoutesLeftPress(); }); };
  routes->OnRightPress = [this, &m] { Do([&m] { m.ListRoutesRightPress(); }); };
  routes->OnEscape = [this] { Escape(); };

  Bind("toolsListHeader", m.toolsListHeader, "Route")->setFocusPolicy(Qt::NoFocus);
  HoverList* tools = Bind("toolsList", m.toolsList, "What to do with the route");
  tools->OnHover = [this, &m](int row, int) { Do([&] { m.toolsListHover(row); }); };
  tools->OnLeftPress = [this, &m] { Do([&m] { m.toolsListLeftPress(); }); };
  tools->OnEscape = [this] { Escape(); };

  HoverList* info = Bind("infoList", m.infoList, "Files about the route");
  info->SetEmptyText("This route came without documents. Read-me files and pictures of a route stand here.");
  info->OnHover = [this, &m](int row, int) { Do([&] { m.infoListHover(row); }); };
  info->OnLeftPress = [this, &m] { Do([&m] { m.infoListLeftPress(m.infoList.current); }); };
  info->OnEscape = [this] { Escape(); };
}

void frmMain::BindTimers() {
  MainScreen& m = model_;
  Bind(m.TimerChecker, [&m] { m.TimerCheckerTick(); });
  Bind(m.TimerFlashOn, [&m] { m.TimerFlashOnTick(); });
  Bind(m.TimerFlashOff, [&m] { m.TimerFlashOffTick(); });
  Bind(m.TimerWait, [&m] { m.TimerWaitTick(); });
  Bind(m.TimerUp, [&m] { m.TimerUpTick(); });
  Bind(m.TimerDown, [&m] { m.TimerDownTick(); });
  Bind(m.Timer1, [&m] { m.Timer1Tick(); });
}

void frmMain::Sync() {
  ShowPlayable();
  ScreenView::Sync();
  ShowLamp();
  ShowHint();
  if (shown_ != model_.imgRoute) ShowPreview();
}

void frmMain::ShowLamp() {
  const bool lit = !model_.lblLoaded.text.empty();
  if (lit && lampLoaded_->pixmap().isNull())
    lampLoaded_->setPixmap(Picture(LayoutOf("lampLoaded").picture, lampLoaded_->size(), devicePixelRatioF()));
  lampLoaded_->setVisible(lit);
}

void frmMain::ShowPlayable() {
  const QString aspect = AspectOf(model_.lblPlayable);
  playable_.visible = !aspect.isEmpty();
  if (playable_.visible) {
    ShowWhole(*lblPlayable_, model_.lblPlayable.text);
    signPlayable_->setAccessibleName(lblPlayable_->accessibleName());
    if (aspect != aspect_)
      lampPlayable_->setPixmap(
          Picture("frmMain/signal" + aspect, lampPlayable_->size(), devicePixelRatioF()));
    aspect_ = aspect;
  }
  for (QLabel* label : {lampPlayable_, lblPlayable_}) label->setVisible(playable_.visible);
}

/// The picture fills its frame; what stands over is cut off evenly.
void frmMain::ShowPreview() {
  shown_ = model_.imgRoute;
  const QSize frame = (QSizeF(imgRoute_->size()) * devicePixelRatioF()).toSize();
  QImageReader reader(TheDesk().HostPath(shown_));
  const QSize scaled = reader.size().scaled(frame, Qt::KeepAspectRatioByExpanding);
  QImage picture = reader.read();
  if (picture.isNull()) {
    imgRoute_->clear();
    return;
  }
  picture = picture.scaled(scaled, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  picture = picture.copy(
      QRect(QPoint((scaled.width() - frame.width()) / 2, (scaled.height() - frame.height()) / 2), frame));
  picture.setDevicePixelRatio(devicePixelRatioF());
  imgRoute_->setPixmap(QPixmap::fromImage(picture));
}

void frmMain::ShowHint() {
  ShowWhole(*hint_, wait_.empty() ? model_.Hint() : wait_);
  hint_->setVisible(!ListIsOpen());
}

bool frmMain::ListIsOpen() const { return model_.ListRoutes.visible || model_.infoList.visible; }

void frmMain::Escape() {
  if (!ListIsOpen()) return;
  Do([this] { model_.CloseList(); });
}

/// A click on the background closes the list; so does one on the hint, which passes its clicks on.
void frmMain::mousePressEvent(QMouseEvent*) {
  Do([this] { model_.CloseList(); });
}

}  // namespace quillon
