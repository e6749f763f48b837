// The view of frmRoutes.
#pragma once

#include "intake/RoutesScreen.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmRoutes : public ScreenView {
 public:
  frmRoutes(RoutesScreen& model, Desk& desk);

 protected:
  /// The pane explains the button under the pointer, or the one that the keyboard has reached.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PickRoute();

  RoutesScreen& model_;
};

}  // namespace quillon
