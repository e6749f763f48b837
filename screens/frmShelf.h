// The view of frmShelf.
#pragma once

#include "catalogue/ShelfScreen.h"
#include "screens/ScreenView.h"

namespace quillon {

class frmShelf : public ScreenView {
 public:
  frmShelf(ShelfScreen& model, Desk& desk);

  void Sync() override;

 private:
  void BindButtons();
  void GiveKeyboard();

  ShelfScreen& model_;
  HoverList* rows_;
  QLabel* why_;
  PictureButton* ok_;
  bool filled_ = true;
};

}  // namespace quillon
