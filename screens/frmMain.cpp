#include "screens/frmMain.h"

#include <QImageReader>
#include <QMouseEvent>
#include <QShortcut>
#include <algorithm>

#include "screens/DroppedZips.h"

namespace quillon {
namespace {

constexpr int kYes = 1, kNo = 2;  // rows of the menu
constexpr int kRowsInView = 5;

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
  imgRoute_->setScaledContents(true);
  lampLoaded_ = AddText("lampLoaded", {});
  lampLoaded_->setAccessibleName("Lamp: this route is loaded");
  Bind("lblRouteName", model.lblRouteName);
  Bind("lblLoaded", model.lblLoaded);
  Bind("lblRightClick", model.lblRightClick);
  hint_ = AddText("lblHint", {});
  BindButtons();
  BindLists();
  BindTimers();
  new DroppedZips(*this, desk);
  Dress([this] { shown_.clear(); });
}

void frmMain::BindButtons() {
  MainScreen& m = model_;
  Bind("btnRouteList", m.btnRouteList, "Routes list.", [&m] {
    m.btnRouteListClick();
  })->setShortcut(Qt::ALT | Qt::Key_Down);
  Bind("btnInfo", m.btnInfo, "Route information.", [&m] {
    m.btnInfoClick();
  })->setShortcut(Qt::ALT | Qt::Key_I);
  BindTimetable();
  BindPlayable();
  SetDefault(Bind("btnLoad", m.btnLoad, "Load the selected route into Train Simulator.",
                  [&m] { m.btnLoadClick(); }));
  Bind("btnOptions", m.btnOptions, "Various Quillon settings.", [&m] { m.btnOptionsClick(); });
  Bind("btnManage", m.btnManage, "Add routes, check for problems, etc.", [&m] { m.btnManageClick(); });
  Bind("btnHelp", m.btnHelp, "Need help?", [&m] { m.btnHelpClick(); })->setShortcut(Qt::Key_F1);
  btnExit_ = Bind("btnExit", m.btnExit, "Exit Quillon.", [&m] { m.btnExitClick(); });
}

/// Its place belongs to the hint while the list is open; its keys do not.
void frmMain::BindTimetable() {
  const auto open = [this] { model_.btnTimetableClick(); };
  Bind("btnTimetable", timetable_, "All routes.", open);
  for (const QKeySequence& keys : {QKeySequence(Qt::Key_F3), QKeySequence(Qt::CTRL | Qt::Key_F)})
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, open] {
      if (model_.btnTimetable.enabled) Do(open);
    });
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
  routes_ = Bind("ListRoutes", m.ListRoutes, "Routes");
  routes_->OnHover = [this, &m](int row, int y) { Do([&] { m.ListRoutesHover(row, y); }); };
  routes_->OnLeftPress = [this, &m] { Do([&m] { m.ListRoutesLeftPress(); }); };
  routes_->OnRightPress = [this, &m] { Do([&m] { m.ListRoutesRightPress(); }); };
  routes_->OnMenuKey = [this, &m] {
    Do([&m] {
      m.ListRoutesRightPress();
      m.toolsListHover(kNo);
    });
  };
  routes_->OnEscape = [this] { Escape(); };

  Bind("toolsListHeader", m.toolsListHeader, "Route")->setFocusPolicy(Qt::NoFocus);
  HoverList* tools = Bind("toolsList", m.toolsList, "What to do with the route");
  tools->OnHover = [this, &m](int row, int) { Do([&] { m.toolsListHover(row); }); };
  tools->OnLeftPress = [this, &m] { Do([&m] { m.toolsListLeftPress(); }); };
  tools->OnEscape = [this] { Escape(); };
  tools->SetFirstRow(kYes);
  tools->SetStart(kNo);

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

/// What was chosen before stands in the middle of the list when it opens.
void frmMain::OpenAtChoice() {
  List& list = model_.ListRoutes;
  const auto chosen = std::find_if(list.rows.begin(), list.rows.end(), [&](const std::string& row) {
    return NameOfRow(row) == model_.lblRouteName.text;
  });
  const int row = chosen == list.rows.end() ? 0 : static_cast<int>(chosen - list.rows.begin());
  routes_->SetStart(row);
  list.top = std::max(0, row - kRowsInView / 2);
}

void frmMain::Sync() {
  ShowPlayable();
  timetable_ = model_.btnTimetable;
  timetable_.visible = !model_.lblRightClick.visible;
  if (model_.ListRoutes.visible && routes_->isHidden()) OpenAtChoice();
  ScreenView::Sync();
  if (offersExit_ && btnExit_->isEnabled()) {
    offersExit_ = false;
    btnExit_->setFocus();
  }
  ShowLamp();
  ShowHint();
  if (shown_ != model_.imgRoute) ShowPreview();
}

void frmMain::ShowLamp() {
  const bool lit = !model_.lblLoaded.text.empty();
  if (lit) ShowPicture(*lampLoaded_, LayoutOf("lampLoaded").picture);
  lampLoaded_->setVisible(lit);
}

void frmMain::ShowPlayable() {
  const QString aspect = AspectOf(model_.lblPlayable);
  playable_.visible = !aspect.isEmpty();
  if (playable_.visible) {
    ShowWhole(*lblPlayable_, model_.lblPlayable.text);
    signPlayable_->setAccessibleName(lblPlayable_->accessibleName());
    ShowPicture(*lampPlayable_, "frmMain/signal" + aspect);
    lampPlayable_->setAccessibleName("Signal: " + aspect);
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

void frmMain::CloseAsked() {
  Do([this] {
    if (ListIsOpen()) model_.CloseList();
    model_.btnExitClick();
  });
}

/// A click on the background closes the list; so does one on the hint of the list. What is disabled counts as
/// background.
void frmMain::mousePressEvent(QMouseEvent* event) {
  const QWidget* pressed = childAt(event->pos());
  if (pressed == nullptr || !pressed->isEnabled() || pressed->objectName() == "lblRightClick")
    Do([this] { model_.CloseList(); });
}

}  // namespace quillon
