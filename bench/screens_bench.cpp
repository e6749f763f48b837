// What the screens cost, for bench/run: each mode is one command.
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <string>

#include "catalogue/MainScreen.h"
#include "catalogue/TimetableScreen.h"
#include "core/host/Console.h"
#include "intake/InitProgScreen.h"
#include "loading/LoadScreen.h"
#include "screens/DesktopFrontEnd.h"

namespace quillon {
namespace {

constexpr int kRows = 500, kLooking = 600;  // milliseconds: a user looks before the click

void WaitUntilPainted(QWidget& window) {
  QElapsedTimer waited;
  waited.start();
  while (!window.windowHandle()->isExposed() && waited.elapsed() < 5000) QApplication::processEvents();
  QApplication::processEvents();
}

/// An empty window of the main screen's size: what the toolkit itself takes.
int Empty() {
  QWidget window;
  window.setFixedSize(700, 480);
  window.show();
  WaitUntilPainted(window);
  return 0;
}

class Desktop {
 public:
  explicit Desktop(const std::string& app) : program_(app, frontEnd_) {
    frontEnd_.Serve(program_);
    program_.TakeLock();
  }
  void Start() { frontEnd_.Start(); }

  DesktopFrontEnd& FrontEnd() { return frontEnd_; }
  MainScreen& Main() { return dynamic_cast<MainScreen&>(*program_.Screens().Find("frmMain")); }
  OpenScreens& Screens() { return program_.Screens(); }

 private:
  DesktopFrontEnd frontEnd_;
  RunningProgram program_;
};

int Paint(const std::string& app) {
  Desktop desktop(app);
  desktop.Start();
  WaitUntilPainted(*desktop.FrontEnd().View("frmMain"));
  return 0;
}

/// Crosses rows of the open list with the pointer; prints milliseconds a row.
int Rows(const std::string& app) {
  Desktop desktop(app);
  desktop.Start();
  desktop.FrontEnd().Handle([&] { desktop.Main().btnRouteListClick(); });
  auto* list = desktop.FrontEnd().View("frmMain")->findChild<HoverList*>("ListRoutes");
  QElapsedTimer time;
  time.start();
  for (int row = 0; row < kRows; ++row) {
    const QModelIndex index = list->model()->index(row, 0);
    list->scrollTo(index);
    const QPointF at = list->visualRect(index).center();
    QMouseEvent move(QEvent::MouseMove, at, list->viewport()->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &move);
    QApplication::processEvents();
  }
  std::printf("%.3f\n", static_cast<double>(time.nsecsElapsed()) / 1e6 / kRows);
  return 0;
}

/// Opens the board of all routes and types a word into its filter; prints the milliseconds until it is on
/// view, and those of the slowest letter until the rows are painted.
int Timetable(const std::string& app) {
  Desktop desktop(app);
  desktop.Start();
  QElapsedTimer time;
  double shown = 0, slowest = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    auto* board = dynamic_cast<TimetableScreen*>(desktop.Screens().Find("frmTimetable"));
    ScreenView* view = desktop.FrontEnd().View("frmTimetable");
    if (board == nullptr || view == nullptr || board->working || !view->windowHandle()->isExposed()) return;
    watch.stop();
    auto* rows = view->findChild<QTableView*>();
    auto* filter = view->findChild<QLineEdit*>();
    rows->viewport()->repaint();
    shown = static_cast<double>(time.nsecsElapsed()) / 1e6;
    for (const char* letter : {"r", "o", "u", "t", "e", " ", "1"}) {
      time.start();
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, letter);
      QApplication::sendEvent(filter, &press);
      rows->viewport()->repaint();
      slowest = std::max(slowest, static_cast<double>(time.nsecsElapsed()) / 1e6);
    }
    desktop.FrontEnd().Handle([&] { board->btnOKClick(); });
  });
  watch.start(1);
  time.start();
  desktop.FrontEnd().Handle([&] { desktop.Main().btnTimetableClick(); });
  std::printf("%.1f\n%.2f\n", shown, slowest);
  return shown > 0 ? 0 : 1;
}

/// Loads the selected route; prints the seconds of the load, and the longest time between two turns of the
/// event loop in milliseconds.
int Load(const std::string& app) {
  Desktop desktop(app);
  desktop.Start();
  QElapsedTimer time;
  time.start();
  while (time.elapsed() < kLooking) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  time.start();
  desktop.FrontEnd().Handle([&] {
    auto& shared = desktop.FrontEnd().TheProgram().shared;
    Catalogue catalogue(desktop.FrontEnd().TheProgram());
    shared.LoadZip = catalogue.ReadCurrent("Zip", kNoData);
    shared.LoadRouteName = catalogue.ReadCurrent("Temp", kNoData);
    desktop.Screens().Show("frmLoad");
  });
  auto* load = dynamic_cast<LoadScreen*>(desktop.Screens().Find("frmLoad"));
  const bool done = load != nullptr && load->btnOK.enabled;
  std::printf("%.4f\n", static_cast<double>(time.nsecsElapsed()) / 1e9);
  std::printf("%lld\n", static_cast<long long>(desktop.FrontEnd().LongestGap()));
  return done ? 0 : 1;
}

/// Takes the downloads in; prints the same.
int Add(const std::string& app) {
  Desktop desktop(app);
  desktop.Start();
  desktop.FrontEnd().Handle([&] {
    // The screen after the intake is modal: it is answered as soon as it waits.
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
      auto* intake = dynamic_cast<InitProgScreen*>(desktop.Screens().Find("frmInitProg"));
      if (intake != nullptr && intake->btnOK.enabled)
        desktop.FrontEnd().Handle([&] { intake->btnOKClick(); });
    });
    answer.start(20);
    desktop.Screens().Show("frmZipCheck");
    desktop.Screens().Find("frmZipCheck")->Activate();
  });
  std::printf("%lld\n", static_cast<long long>(desktop.FrontEnd().LongestGap()));
  return 0;
}

int Run(const std::string& mode, const std::string& app) {
  if (mode == "empty") return Empty();
  if (mode == "paint") return Paint(app);
  if (mode == "rows") return Rows(app);
  if (mode == "timetable") return Timetable(app);
  return mode == "add" ? Add(app) : Load(app);
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv) {
  quillon::PrepareProcess(argc, argv);
  QApplication application(argc, argv);
  return argc > 1 ? quillon::Run(argv[1], argc > 2 ? argv[2] : "") : 2;
}
