// The models of the screens of Pack Route.
#pragma once

#include "core/Controls.h"
#include "core/Screen.h"
#include "core/Text.h"

namespace quillon {

/// frmPackConfirm: asks before a route is packed.
class PackConfirmScreen : public Screen {
 public:
  explicit PackConfirmScreen(Program& program)
      : Screen(program, "frmPackConfirm"), lblRouteName{ProperCase(program.shared.PackNameField)} {}

  Label lblRouteName;

  void btnOKClick() {
    program_.stage.Unload(Name());
    program_.boxes.Tell("Pack Route", "Pack Route is not part of this version yet.");
  }
  void btnCancelClick() {
    program_.Refuse();
    program_.stage.Unload(Name());
  }
};

}  // namespace quillon
