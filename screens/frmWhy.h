// The view of frmWhy.
#pragma once

#include "intake/WhyScreen.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmWhy : public ScreenView {
 public:
  frmWhy(WhyScreen& model, Desk& desk);

  void Sync() override;

 private:
  void AddHeads();
  void GiveKeyboard();

  WhyScreen& model_;
  HoverList* rows_;
  QLabel* reason_;
  PictureButton* ok_;
  bool filled_ = true;
};

}  // namespace quillon
