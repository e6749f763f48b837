// The model of frmRoutes, the route manager: the hub for everything beside loading a route.
#pragma once

#include <string>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class RoutesScreen : public Screen {
 public:
  explicit RoutesScreen(Program& program) : Screen(program, "frmRoutes") {}

  Button cmdAddRoutes{"addoff"}, btnClean, btnZips, btnHelp, btnOK;

  void Activate() override;

  void cmdAddRoutesClick() { program_.stage.Show("frmZipCheck"); }
  void btnCleanClick() { program_.stage.ShowModal("frmCleanUpNotice"); }
  void btnZipsClick() { program_.shell.Explore(program_.app.OriginalZips() + "\\"); }
  void btnHelpClick() { program_.shell.ShowHelp(program_.app.HelpFile(), "TOC"); }
  void btnOKClick();
};

}  // namespace quillon
