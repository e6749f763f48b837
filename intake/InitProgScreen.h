// The model of frmInitProg: the intake while it runs, and its end.
#pragma once

#include <string>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

/// What both screens of an intake say while it runs.
inline constexpr const char* kTakesItsTime =
    "This process will vary widely in the amount of time it takes.  The time is entirely dependant on the "
    "complexity of each route being added.";

class InitProgScreen : public ProgressScreen {
 public:
  explicit InitProgScreen(Program& program) : ProgressScreen(program, "frmInitProg") {}

  Label lblMessage;
  /// Where zips belong, when none were found; stands in the place of lblMessage.
  Label lblWhere{"", false};
  Button btnOK{.enabled = false};
  /// "Show full report when finished?"
  bool chkReport = true;
  /// Decorative: moves the bar while the intake runs.
  Timer Timer2{60};

  /// Runs the intake to its end.
  void Activate() override;
  void Timer2Tick();
  void btnOKClick();

 private:
  void CancelCheckpoint();
  void SayWhereZipsBelong();

  std::string txtCancel_ = "txtCancel";
  int decoration_ = 0;
  bool ran_ = false;
};

}  // namespace quillon
