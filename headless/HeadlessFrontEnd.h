// The front end without a display: tells what happens as events, and presses the buttons of modal screens.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

#include "core/host/Desktop.h"
#include "headless/CommandLine.h"
#include "headless/Output.h"
#include "stage/RunningProgram.h"

namespace quillon {

class HeadlessFrontEnd : public FrontEnd {
 public:
  /// Both outlive the object.
  HeadlessFrontEnd(Output& output, const Options& options) : output_(output), options_(options) {}

  /// Turns a text of the system into the host's name; needed before anything is really opened.
  void SetHostPath(std::function<std::string(std::string_view)> hostPath) { hostPath_ = std::move(hostPath); }
  /// chkReport of the next intake.
  void SetReport(bool report) { report_ = report; }
  /// Sends what was held back.
  void Flush();

  void Tell(std::string_view title, std::string_view text) override;
  bool AskYesNo(std::string_view title, std::string_view text) override;
  void OpenInShell(std::string_view path) override;
  void Explore(std::string_view folder) override;
  void StartGame(std::string_view trainExe, std::string_view command) override;
  void ShowHelp(std::string_view file, std::string_view command) override;
  void BarChanged(std::string_view screen, const ProgressBar& bar, BarChange change) override;
  void LabelChanged(std::string_view screen, std::string_view control, const Label& label) override;
  void DetailChanged(std::string_view, unsigned long long done, unsigned long long total,
                     std::string_view unit) override {
    output_.Detail(done, total, std::string(unit));
  }
  void WaitChanged(std::string_view) override {}
  void Yield() override {}
  void ScreenShown(Screen& screen, bool modal) override;
  void ScreenActivated(Screen& screen) override;
  void ScreenUnloaded(const std::string& name) override;
  void RunModal(Screen& screen, const std::function<bool()>& isOpen) override;
  void CopyFoundNothing(std::string_view caption) override;
  void CopyMoved(int position) override;
  void CopyFailed(std::string_view path, FileCode code) override;
  void VerdictGiven(const Verdict& verdict) override;
  void ShelfChanged(const ShelfEntry& entry, bool dropped) override;

 private:
  void TellUnopened(DesktopAnswer answer, const std::string& hostPath);

  struct HeldBar {
    int value = 0, maximum = 0;
    bool held = false;
    std::chrono::steady_clock::time_point sent;
  };

  void PutBar(const std::string& screen, HeldBar& bar);
  static bool NamesOneFile(std::string_view screen, std::string_view caption);
  void PressButtons(Screen& screen);

  Output& output_;
  const Options& options_;
  std::function<std::string(std::string_view)> hostPath_ = [](std::string_view path) {
    return std::string(path);
  };
  bool report_ = true;
  std::string lastScreen_;
  bool intakeOpen_ = false, cleanUpOpen_ = false;
  std::map<std::string, HeldBar, std::less<>> bars_;
};

}  // namespace quillon
