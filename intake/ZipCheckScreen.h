// The model of frmZipCheck: zip triage while it runs; it moves on by itself.
#pragma once

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class ZipCheckScreen : public ProgressScreen {
 public:
  explicit ZipCheckScreen(Program& program) : ProgressScreen(program, "frmZipCheck") {}

  Label lblMessage;
  /// Decorative: moves the bar while triage runs.
  Timer Timer2{60, true};

  /// Runs triage and leads to frmInitProg.
  void Activate() override;
  void Timer2Tick();

 private:
  int decoration_ = 0;
};

}  // namespace quillon
