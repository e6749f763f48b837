// The view of frmOptions.
#pragma once

#include "catalogue/OptionsScreen.h"
#include "screens/ScreenView.h"
#include "screens/controls/TextLink.h"

class QLineEdit;

namespace quillon {

class frmOptions : public ScreenView {
 public:
  frmOptions(OptionsScreen& model, Desk& desk);

  void Sync() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void AddPathField();
  void AddLink();
  void HideLink();
  void Locate();

  OptionsScreen& model_;
  QLineEdit* txtTSPath_;
  QLabel *label5_, *label7_, *hint_, *rights_;
  TextLink* goToWebPage_;
};

}  // namespace quillon
