// The model of frmCleanUp: a clean-up while it runs, also the last part of Make permanent.
#pragma once

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class CleanUpScreen : public ProgressScreen {
 public:
  explicit CleanUpScreen(Program& program) : ProgressScreen(program, "frmCleanUp") {}

  Label lblMessage;
  Button btnOK{.enabled = false};
  /// Lets the screen paint before the work starts.
  Timer TimerWait{600};

  void Activate() override;
  /// Runs the clean-up to its end.
  void TimerWaitTick();
  void btnOKClick();

 private:
  void Finish();
  void RebuildCatalogue();
  void BringForeignOriginals();

  bool ran_ = false;
};

}  // namespace quillon
