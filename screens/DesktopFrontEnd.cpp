#include "screens/DesktopFrontEnd.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "catalogue/MainScreen.h"
#include "intake/RoutesScreen.h"
#include "repair/CleanUpScreen.h"
#include "screens/Art.h"
#include "screens/Layout.h"
#include "screens/LineBreaks.h"
#include "screens/Roles.h"
#include "screens/Views.h"
#include "screens/WayOn.h"
#include "screens/WorkViews.h"
#include "screens/frmMain.h"
#include "stage/Advice.h"

namespace quillon {
namespace {

constexpr int kPictureCache = 128 << 10;       // kilobytes
constexpr QMargins kWindowFrame(8, 36, 8, 8);  // pixels that a window manager may add
constexpr int kTurnInterval = 33;              // milliseconds of work between two turns of the event loop
constexpr int kIdleTime = 300;                 // milliseconds after which the user is taken to be looking
constexpr int kWatchInterval = 250;            // milliseconds
constexpr int kExposeTime = 1000;              // milliseconds that a window may take to come up

constexpr int kTallestText = 380, kWidestText = 640;  // pixels of a question
constexpr int kBesideText = 140;                      // pixels of its buttons, margins and frame

constexpr std::string_view kErrorPage = "error";  // stands among the screens of the help's table

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).remove('\r');
}

/// Line for line, whatever a name in it looks like. A long list is scrolled: the buttons stay on the display.
void ShowAsWritten(QMessageBox& box) {
  box.setTextFormat(Qt::PlainText);
  box.setText(BreakableInLongWords(box.text()));
  box.ensurePolished();
  auto* label = box.findChild<QLabel*>("qt_msgbox_label");
  const int tallest = std::min(kTallestText, box.screen()->availableGeometry().height() - kBesideText);
  if (label == nullptr || label->sizeHint().height() <= tallest) return;
  auto* area = new QScrollArea(&box);
  delete box.layout()->replaceWidget(label, area);
  label->setMargin(4);
  const int beside = area->verticalScrollBar()->sizeHint().width() + 2 * area->frameWidth();
  area->setMinimumSize(std::min(label->sizeHint().width(), kWidestText) + beside, tallest);
  area->setWidget(label);
  area->setWidgetResizable(true);
  for (QWidget* paper : {static_cast<QWidget*>(label), area->viewport()}) paper->setAutoFillBackground(false);
}

/// The primary one where there is none.
const QScreen& DisplayAt(QPoint position) {
  const QScreen* display = QApplication::screenAt(position);
  return display != nullptr ? *display : *QApplication::primaryScreen();
}

QRect RoomOf(const QScreen& display) { return display.availableGeometry().marginsRemoved(kWindowFrame); }

}  // namespace

DesktopFrontEnd::DesktopFrontEnd() : help_(*this, [this] { HelpAskedByKey(); }) {
  QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { LookAround(); });
  QPixmapCache::setCacheLimit(kPictureCache);
  TeachRoles();
  sinceTurn_.start();
}

DesktopFrontEnd::~DesktopFrontEnd() { FinishDrawing(); }

void DesktopFrontEnd::Serve(RunningProgram& program) {
  running_ = &program;
  failure_ = nullptr;
  wasRunning_ = false;
  toldNumber_ = 0;
  DrawBackgroundAhead("frmMain");
}

void DesktopFrontEnd::Start() {
  if (!TheProgram().otherInstanceRuns) otherStarts_ = running_->HearOthers();
  watch_.start(kWatchInterval);
  Handle([this] { running_->Screens().Show("frmMain"); });
}

int DesktopFrontEnd::Run() {
  Start();
  return ServeUser();
}

int DesktopFrontEnd::GoOn() {
  Start();
  AddRoutesAgain();
  return ServeUser();
}

int DesktopFrontEnd::ServeUser() {
  if (!failure_ && !running_->Screens().Ended()) {
    inLoop_ = true;
    QApplication::exec();
    inLoop_ = false;
  }
  const int status = failure_ ? TellFailure() : 0;
  Leave();
  return status;
}

/// As a user would. The start may have led elsewhere.
void DesktopFrontEnd::AddRoutesAgain() {
  Handle([this] {
    if (auto* main = dynamic_cast<MainScreen*>(running_->Screens().Top())) main->btnManageClick();
  });
  Handle([this] {
    if (auto* routes = dynamic_cast<RoutesScreen*>(running_->Screens().Top())) routes->cmdAddRoutesClick();
  });
}

void DesktopFrontEnd::LookAround() {
  errands_.Look(ActiveScreen());
  if (otherStarts_ && otherStarts_->Any()) ShowOnTop();
}

/// With what stands over it.
void DesktopFrontEnd::ShowOnTop() {
  const Screen* top = running_->Screens().Top();
  QWidget* view = top == nullptr ? nullptr : View(top->Name());
  for (QWidget* window : {view, QApplication::activeModalWidget()}) {
    if (window == nullptr) continue;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
    QApplication::alert(window);  // where no program may raise its own windows
  }
}

void DesktopFrontEnd::Leave() {
  watch_.stop();
  otherStarts_.reset();
  running_ = nullptr;
  for (const auto& [name, view] : views_) view->Retire();
  views_.clear();
  help_.Close();
}

ScreenView* DesktopFrontEnd::View(std::string_view screen) const {
  const auto at = views_.find(screen);
  return at == views_.end() ? nullptr : at->second.get();
}

void DesktopFrontEnd::Handle(const std::function<void()>& action) {
  if (failure_ || running_ == nullptr || running_->Screens().Ended()) return;
  if (waiting_ || toldNumber_ != 0)
    return;  // a timer's tick in the middle of an act, or behind an error's box
  ++depth_;
  try {
    running_->Screens().Do(action);
    RethrowFailure();
  } catch (...) {
    Fail(std::current_exception());
  }
  --depth_;
  SyncAll();
  // Outside the loop it would end the one of the box that tells the failure; quit() would ask the windows
  // first.
  if (inLoop_ && depth_ == 0 && (failure_ || running_->Screens().Ended())) QApplication::exit();
}

/// Nothing can be thrown through the toolkit's event loop: it is kept, and thrown again by whoever runs the
/// loop.
void DesktopFrontEnd::Fail(std::exception_ptr failure) { failure_ = std::move(failure); }

void DesktopFrontEnd::RethrowFailure() {
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

/// The status that Run gives.
int DesktopFrontEnd::TellFailure() {
  try {
    RethrowFailure();
  } catch (const RunTimeError& error) {
    return TellOf(error);
  } catch (const std::bad_alloc&) {
    return TellOf(RunTimeError(ErrorNumber::OutOfMemory));
  } catch (const std::exception& error) {
    return TellOf(RunTimeError(ErrorNumber::InternalError, {}, error.what()));
  }
  return 0;
}

int DesktopFrontEnd::TellOf(const RunTimeError& error) {
  // An error of another remedy is none of a download.
  const WayOn way = WayOnAfter(TheProgram(), error, toldNumber_ == 0);
  const std::string report = ErrorReport(TheProgram(), error);
  std::fprintf(stderr, "Larkmoor: %s\n", report.c_str());
  QMessageBox box(QMessageBox::Critical, "Quillon has to close", Text(report + way.hint), QMessageBox::Close);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  const QAbstractButton* onward =
      way.button.empty() ? nullptr : box.addButton(Text(way.button), QMessageBox::AcceptRole);
  box.setDefaultButton(QMessageBox::Close);
  box.setEscapeButton(QMessageBox::Close);
  toldNumber_ = error.number();
  box.exec();
  if (onward == nullptr || box.clickedButton() != onward) return 1;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  try {
    way.act();
  } catch (...) {
    Fail(std::current_exception());
  }
  QApplication::restoreOverrideCursor();
  if (failure_) return TellFailure();
  return way.addsAgain ? kAddAgain : kStartAgain;
}

void DesktopFrontEnd::SyncAll() {
  for (const auto& [name, view] : views_) view->Sync();
}

QString DesktopFrontEnd::HostPath(const std::string& text) {
  return QString::fromStdString(TheProgram().files.Host().HostPath(text));
}

QString DesktopFrontEnd::PickFolder(const QString& title, const std::string& start) {
  SyncAll();
  // A drive alone would be the folder that is current on it.
  const QString from = HostPath(start.ends_with(':') ? start + "\\" : start);
  const QString folder = QFileDialog::getExistingDirectory(ActiveScreen(), title, from);
  RethrowFailure();
  return QDir::toNativeSeparators(folder);
}

void DesktopFrontEnd::Tell(std::string_view title, std::string_view text) {
  SyncAll();
  QMessageBox box(QMessageBox::Information, Text(title), Text(text), QMessageBox::Ok, ActiveScreen());
  ShowAsWritten(box);
  box.exec();
  RethrowFailure();
}

bool DesktopFrontEnd::AskYesNo(std::string_view title, std::string_view text) {
  SyncAll();
  QMessageBox box(QMessageBox::Warning, Text(title), Text(text), QMessageBox::Yes | QMessageBox::No,
                  ActiveScreen());
  box.setDefaultButton(QMessageBox::No);
  ShowAsWritten(box);
  const bool yes = box.exec() == QMessageBox::Yes;
  RethrowFailure();  // of a timer that ticked below the box
  return yes;
}

void DesktopFrontEnd::OpenInShell(std::string_view path) {
  const bool address = path.find("://") != path.npos;
  errands_.Open(address ? Text(path) : HostPath(std::string(path)));
}

void DesktopFrontEnd::Explore(std::string_view folder) { errands_.Explore(HostPath(std::string(folder))); }

void DesktopFrontEnd::StartGame(std::string_view trainExe, std::string_view command) {
  errands_.AskForGame(HostPath(std::string(trainExe)), Text(command),
                      HostPath(TheProgram().app.SettingsIni()));
}

void DesktopFrontEnd::ShowHelp(std::string_view file, std::string_view command) {
  help_.Show(std::string(file), command);
}

/// F1 explains the screen on top; when the program has to close, what to do then.
void DesktopFrontEnd::HelpAskedByKey() {
  if (running_ == nullptr) return;
  const std::string file = TheProgram().app.HelpFile();
  if (toldNumber_ != 0) return help_.ShowPageOf(file, kErrorPage, "e" + QString::number(toldNumber_));
  Handle([&] {
    const Screen* top = running_->Screens().Top();
    help_.ShowPageOf(file, top == nullptr ? "" : top->Name());
  });
}

/// Nothing that comes over the help belongs to it: the help may come to belong to that.
QWidget* DesktopFrontEnd::ActiveScreen() const {
  QWidget* active = QApplication::activeWindow();
  return active == help_.Window() ? nullptr : active;
}

/// What a new screen stands over: the active one may be gone already.
QWidget* DesktopFrontEnd::ScreenBelow(const ScreenView& view) const {
  if (QWidget* active = ActiveScreen(); active != nullptr && active != &view) return active;
  const auto below = std::find_if(views_.begin(), views_.end(), [&](const auto& open) {
    return open.second.get() != &view && open.second->isVisible();
  });
  return below == views_.end() ? nullptr : below->second.get();
}

void DesktopFrontEnd::DetailChanged(std::string_view screen, unsigned long long done,
                                    unsigned long long total, std::string_view unit) {
  if (ScreenView* view = View(screen)) view->Measure(done, total, std::string(unit));
}

void DesktopFrontEnd::CopyMoved(int position) {
  if (auto* cleanUp = dynamic_cast<CleanUpScreen*>(running_->Screens().Find("frmCleanUp")))
    cleanUp->Value(position);
}

void DesktopFrontEnd::CopyFailed(std::string_view path, FileCode code) {
  const std::string text = HostPath(std::string(path)).toStdString() +
                           " could not be copied: " + RunTimeError(NumberOf(code)).text() + ".";
  std::fprintf(stderr, "Larkmoor: %s\n", text.c_str());
  for (const auto& [name, view] : views_) view->Notice(Text(text));
}

void DesktopFrontEnd::ShelfChanged(const ShelfEntry& entry, bool dropped) {
  const std::string files =
      std::to_string(entry.files) + (entry.files == 1 ? " file of " : " files of ") + entry.zip;
  const std::string text = dropped ? "Left the rescued files for newer ones: " + files : "Rescued: " + files;
  for (const auto& [name, view] : views_) view->Notice(Text(text));
}

void DesktopFrontEnd::VerdictGiven(const Verdict& verdict) {
  for (const auto& [name, view] : views_) view->PassingNotice(Text(verdict.zip + ": " + verdict.reason));
}

bool DesktopFrontEnd::PipelineRuns() const {
  const auto* top = running_ == nullptr ? nullptr : dynamic_cast<ProgressScreen*>(running_->Screens().Top());
  return top != nullptr && top->working;
}

/// The pointer says so, and whichever screen has room for it.
void DesktopFrontEnd::WaitChanged(std::string_view what) {
  waiting_ = !what.empty();
  if (waiting_)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
  for (const auto& [name, view] : views_) view->ShowWait(Text(what));
  SyncAll();
  if (waiting_) TurnEvents(QEventLoop::ExcludeUserInputEvents);
}

void DesktopFrontEnd::Yield() {
  const bool runs = PipelineRuns();
  if (runs && !wasRunning_) sinceTurn_.start();
  wasRunning_ = runs;
  if ((!runs && !waiting_) || sinceTurn_.elapsed() < kTurnInterval) return;
  longestGap_ = std::max(longestGap_, sinceTurn_.elapsed());
  SyncAll();
  TurnEvents(runs ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
  sinceTurn_.start();
}

void DesktopFrontEnd::TurnEvents(QEventLoop::ProcessEventsFlags flags, int milliseconds) {
  if (milliseconds > 0)
    QApplication::processEvents(flags, milliseconds);
  else
    QApplication::processEvents(flags);
  RethrowFailure();
}

void DesktopFrontEnd::ScreenShown(Screen& screen, bool asked) {
  // The options of the Checkup stand over the route manager without being waited for.
  const bool modal = asked || screen.Name() == "frmReportOptions" || screen.Name() == "frmZipCheck";
  if (View(screen.Name()) == nullptr) {
    if (screen.Name() != "frmTimetable") DrawBackgroundAhead(QString::fromStdString(screen.Name()));
    auto view = MakeView(screen, *this);
    view->setWindowFlags(modal ? Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                     Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint
                               : Qt::Window | Qt::WindowTitleHint | Qt::WindowMinMaxButtonsHint |
                                     Qt::WindowCloseButtonHint);
    if (modal) view->setWindowModality(Qt::ApplicationModal);
    Place(*view);
    views_[screen.Name()] = std::move(view);
  }
  ScreenView* view = View(screen.Name());
  view->Sync();
  if (const QWidget* owner = modal ? ScreenBelow(*view) : nullptr; owner != nullptr) {
    view->winId();  // makes the window: some desktops take its owner only before it is shown
    view->windowHandle()->setTransientParent(owner->windowHandle());
  }
  view->show();
  view->raise();
  view->activateWindow();
  WaitUntilSeen(view);
}

/// A pipeline starts behind a screen that can be seen. The screen may go while it comes.
void DesktopFrontEnd::WaitUntilSeen(QPointer<ScreenView> view) {
  QElapsedTimer waited;
  waited.start();
  while (view && !view->windowHandle()->isExposed() && waited.elapsed() < kExposeTime)
    TurnEvents(QEventLoop::ExcludeUserInputEvents, 10);
  TurnEvents(QEventLoop::ExcludeUserInputEvents);
}

void DesktopFrontEnd::ScreenActivated(Screen& screen) {
  if (ScreenView* view = View(screen.Name())) {
    view->Sync();
    view->activateWindow();
  }
  // The next screen is mostly the load's: its picture is ready when it is asked for.
  if (screen.Name() == "frmMain")
    QTimer::singleShot(kIdleTime, &help_, [this] {
      if (running_ != nullptr) DrawBackgroundAhead("frmLoad");
    });
}

void DesktopFrontEnd::ScreenUnloaded(const std::string& name) {
  const auto at = views_.find(name);
  if (at == views_.end()) return;
  const auto* load = dynamic_cast<frmLoad*>(at->second.get());
  if (auto* main = dynamic_cast<frmMain*>(View("frmMain"));
      main != nullptr && load != nullptr && load->HasFinished())
    main->OfferExit();
  RememberPlace(*at->second);
  at->second->Retire();
  // Its handler may be the one that runs.
  at->second.release()->deleteLater();
  views_.erase(at);
}

void DesktopFrontEnd::RunModal(Screen&, const std::function<bool()>& isOpen) {
  SyncAll();
  while (isOpen()) TurnEvents(QEventLoop::WaitForMoreEvents);
}

/// Around the same point as the screen before, as large as the user had it, and whole on the display.
void DesktopFrontEnd::Place(ScreenView& view) const {
  view.PlaceAt(StoredCentre(), RoomOf(DisplayAt(StoredCentre())), StoredScale());
}

void DesktopFrontEnd::DrawBackgroundAhead(const QString& screen) const {
  const ScreenLayout layout(screen);
  const QScreen& display = DisplayAt(StoredCentre());
  DrawAhead(layout.Background(), layout.SizeIn(RoomOf(display).size(), StoredScale()),
            display.devicePixelRatio());
}

QPoint DesktopFrontEnd::StoredCentre() const {
  const QStringList stored = ReadWindow("Centre").split(',');
  return stored.size() == 2 ? QPoint(stored[0].toInt(), stored[1].toInt())
                            : QApplication::primaryScreen()->availableGeometry().center();
}

/// What a window may be larger than drawn.
double DesktopFrontEnd::StoredScale() const { return std::max(100, ReadWindow("Scale").toInt()) / 100.0; }

QString DesktopFrontEnd::ReadWindow(std::string_view key) const {
  Program& program = running_->Get();
  return Text(program.ini.ReadIni("Window", key, "", program.app.SettingsIni()));
}

void DesktopFrontEnd::RememberPlace(const ScreenView& view) {
  if (!view.WasMoved() && !view.WasResized()) return;
  Program& program = running_->Get();
  const auto remember = [&](std::string_view key, const std::string& value) {
    program.ini.WriteIni("Window", key, value, program.app.SettingsIni());
  };
  const QPoint centre = view.geometry().center();
  remember("Centre", std::to_string(centre.x()) + "," + std::to_string(centre.y()));
  if (view.WasResized()) remember("Scale", std::to_string(std::lround(view.Scale() * 100)));
}

}  // namespace quillon
