// The models of the screens of Pack Route.
#pragma once

#include <string>

#include "core/Controls.h"
#include "core/Screen.h"
#include "repair/PackRoute.h"

namespace quillon {

/// frmPackConfirm: asks before a route is packed.
class PackConfirmScreen : public Screen {
 public:
  explicit PackConfirmScreen(Program& program);

  Label lblRouteName;

  void Activate() override;
  void btnOKClick();
  void btnCancelClick();
};

/// frmPack: a route while it is packed, and the question about its folder.
class PackScreen : public ProgressScreen {
 public:
  explicit PackScreen(Program& program);

  Label lblRouteName;
  Button btnOK{.enabled = false};

  /// Packs the route to the end.
  void Activate() override;
  void btnOKClick();

 private:
  void RemoveRouteFolder();

  const std::string txtRoutePath_, txtZipRoute_;
  PackRoute pack_;
  bool ran_ = false;
};

}  // namespace quillon
