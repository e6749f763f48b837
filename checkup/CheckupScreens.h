// The models of frmReportOptions and frmActivityCheck.
#pragma once

#include <string>
#include <vector>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

/// frmReportOptions: what the Checkup is to do.
class ReportOptionsScreen : public Screen {
 public:
  explicit ReportOptionsScreen(Program& program) : Screen(program, "frmReportOptions") {}

  /// 0 off, 1 on, 2 on and not to be changed.
  int chkTrains = 1, chkView = 2;

  void Activate() override;
  /// A user's click on a box.
  void chkTrainsClick() { SetTrains(chkTrains == 0 ? 1 : 0); }
  void chkViewClick() { SetView(chkView == 0 ? 1 : 0); }
  /// The words beside the boxes.
  void Label1Click();
  void Label2Click();
  void btnOKClick();
  void btnCancelClick();

  /// What to do first: the page of causes. Off while there is none.
  Button btnCauses{.enabled = false};
  /// Renames misplaced trains, after a question. Off while nothing can be renamed.
  Button btnFix{.enabled = false};
  /// Judges all routes, loaded or not. Off while there is none.
  Button btnRoutes{.enabled = false};
  void btnCausesClick();
  void btnFixClick();
  void btnRoutesClick();
  /// Judges these routes, by their zip names, and opens the page of it when `show` is set.
  void JudgeRoutes(const std::vector<std::string>& zips, bool show);

 private:
  // A changed value fires the box's click handler.
  void SetTrains(int value);
  void SetView(int value);
  void RunCheckup(bool show);
  void CloseWithoutRun();
};

/// frmActivityCheck: a Checkup while it runs, and its end.
class ActivityCheckScreen : public ProgressScreen {
 public:
  explicit ActivityCheckScreen(Program& program) : ProgressScreen(program, "frmActivityCheck") {}

  Button btnOK{.enabled = false};
  /// Opens the page of causes in place of the report. Off until the run has ended.
  Button btnCauses{.enabled = false};
  /// What goes on, or what came of it.
  std::string Message() const;
  /// Decorative: moves the bar while the train database is built.
  Timer Timer1{20, true};

  /// Runs the Checkup to its end.
  void Activate() override;
  void Timer1Tick();
  void btnOKClick();
  void btnCausesClick();

 private:
  /// False when it was given up.
  bool JudgeRoutes();
  void LeaveGivenUp();

  int CheckupCounter_ = 0;
  bool ran_ = false;
  bool ofRoutes_ = false;  // not the game: nothing is told of it elsewhere
};

}  // namespace quillon
