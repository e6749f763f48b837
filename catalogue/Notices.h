// The models of the small screens that stand between frmMain and its work: a message in their picture, two
// buttons.
#pragma once

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

/// frmWelcome: the working route does not exist yet.
class WelcomeScreen : public Screen {
 public:
  explicit WelcomeScreen(Program& program) : Screen(program, "frmWelcome") {}

  /// Hands over to clean-up, which builds the working route.
  void btnOKClick() {
    program_.shared.WelcomeSeen = true;
    program_.stage.Unload(Name());
    program_.stage.ShowModal("frmCleanUp");
  }
  void btnCancelClick() {
    program_.shared.WelcomeSeen = true;
    program_.stage.Unload(Name());
  }
};

/// frmNoAct: the selected route has no activity.
class NoActScreen : public Screen {
 public:
  explicit NoActScreen(Program& program) : Screen(program, "frmNoAct") {}

  void btnLoadClick() {
    program_.shared.LoadZip = program_.ini.ReadIni("Current", "Zip", kNoData, program_.app.RoutesIni());
    program_.stage.ShowModal("frmLoad");
    program_.stage.Unload(Name());
  }
  void btnCancelClick() {
    program_.Refuse();
    program_.stage.Unload(Name());
  }
};

/// frmCleanUpNotice: the confirmation before a clean-up.
class CleanUpNoticeScreen : public Screen {
 public:
  explicit CleanUpNoticeScreen(Program& program) : Screen(program, "frmCleanUpNotice") {}

  void btnOKClick() {
    program_.stage.Unload(Name());
    program_.stage.ShowModal("frmCleanUp");
  }
  void btnCancelClick() {
    program_.Refuse();
    program_.stage.Unload(Name());
  }
};

/// frmCustomMessage: what the route's script has to say.
class CustomMessageScreen : public Screen {
 public:
  explicit CustomMessageScreen(Program& program)
      : Screen(program, "frmCustomMessage"), lblMessage{program.shared.CustomMessage} {}

  Label lblMessage;

  void Activate() override { program_.shared.CustomMessagePending = false; }
  void btnOKClick() { program_.stage.Unload(Name()); }
};

/// frmCustomConsist: the load brought consists that the game did not have.
class CustomConsistScreen : public Screen {
 public:
  explicit CustomConsistScreen(Program& program) : Screen(program, "frmCustomConsist") {}

  void btnOKClick() {
    program_.stage.Unload(Name());
    if (program_.shared.CustomMessagePending) program_.stage.ShowModal("frmCustomMessage");
  }
};

}  // namespace quillon
