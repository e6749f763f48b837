// The front end with a display: views over the models, driven by the event loop.
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <exception>
#include <map>
#include <memory>
#include <string>

#include "screens/Desk.h"
#include "screens/Errands.h"
#include "screens/HelpDesk.h"
#include "screens/ScreenView.h"
#include "stage/RunningProgram.h"

namespace quillon {

class DesktopFrontEnd : public FrontEnd, public Desk {
 public:
  DesktopFrontEnd();
  ~DesktopFrontEnd() override;

  /// The program that this front end serves; outlives the views. To be called before anything is shown.
  void Serve(RunningProgram& program);
  /// Shows the first screen.
  void Start();
  /// Start, and serves the user until the last screen has gone. 0, or 1 after a run-time error, which the
  /// user has been told of. When they want to go on after it, with a new program: kAddAgain by GoOn,
  /// kStartAgain by Run.
  int Run();
  /// Run, with a click on Add routes to begin with.
  int GoOn();
  static constexpr int kAddAgain = -1, kStartAgain = -2;
  /// Starts the game if the user has asked for it. After the program has gone.
  void StartGameIfAsked() { errands_.StartGame(); }

  /// Takes the views away: no event reaches the program from then on.
  void Leave();

  /// The view of an open screen; null without one. The front end owns it.
  ScreenView* View(std::string_view screen) const;
  /// The window of the help; null while nobody has asked for it. The front end owns it.
  HelpWindow* Help() const { return help_.Window(); }
  /// The longest time between two turns of the event loop while a pipeline ran, in milliseconds.
  qint64 LongestGap() const { return longestGap_; }

  void Handle(const std::function<void()>& action) override;
  QString PickFolder(const QString& title, const std::string& start) override;
  QString HostPath(const std::string& text) override;
  Program& TheProgram() override { return running_->Get(); }

  void Tell(std::string_view title, std::string_view text) override;
  bool AskYesNo(std::string_view title, std::string_view text) override;
  void OpenInShell(std::string_view path) override;
  void Explore(std::string_view folder) override;
  void StartGame(std::string_view trainExe, std::string_view command) override;
  void ShowHelp(std::string_view file, std::string_view command) override;
  void BarChanged(std::string_view, const ProgressBar&, BarChange) override {}
  void LabelChanged(std::string_view, std::string_view, const Label&) override {}
  void DetailChanged(std::string_view screen, unsigned long long done, unsigned long long total,
                     std::string_view unit) override;
  void WaitChanged(std::string_view what) override;
  void Yield() override;
  void ScreenShown(Screen& screen, bool modal) override;
  void ScreenActivated(Screen& screen) override;
  void ScreenUnloaded(const std::string& name) override;
  void RunModal(Screen& screen, const std::function<bool()>& isOpen) override;
  void CopyFoundNothing(std::string_view) override {}
  void CopyMoved(int position) override;
  void CopyFailed(std::string_view path, FileCode code) override;
  void ShelfChanged(const ShelfEntry& entry, bool dropped) override;
  void VerdictGiven(const Verdict& verdict) override;

 private:
  QWidget* ActiveScreen() const;
  QWidget* ScreenBelow(const ScreenView& view) const;
  void HelpAskedByKey();
  bool PipelineRuns() const;
  void SyncAll();
  void TurnEvents(QEventLoop::ProcessEventsFlags flags, int milliseconds = 0);
  void WaitUntilSeen(QPointer<ScreenView> view);
  void Fail(std::exception_ptr failure);
  void RethrowFailure();
  void LookAround();
  void ShowOnTop();
  int ServeUser();
  void AddRoutesAgain();
  int TellFailure();
  int TellOf(const RunTimeError& error);
  void Place(ScreenView& view) const;
  void RememberPlace(const ScreenView& view);
  void DrawBackgroundAhead(const QString& screen) const;
  QPoint StoredCentre() const;
  double StoredScale() const;
  QString ReadWindow(std::string_view key) const;

  RunningProgram* running_ = nullptr;
  std::map<std::string, std::unique_ptr<ScreenView>, std::less<>> views_;
  /// A handler failed. It goes up through every handler that waits below it.
  std::exception_ptr failure_;
  int depth_ = 0;
  QElapsedTimer sinceTurn_;
  qint64 longestGap_ = 0;
  bool inLoop_ = false, wasRunning_ = false, waiting_ = false;
  int toldNumber_ = 0;  // of the error on view
  HelpDesk help_;
  Errands errands_;
  std::unique_ptr<StartCalls> otherStarts_;
  QTimer watch_;  // for what nobody tells by an event
};

}  // namespace quillon
