#include "screens/frmShelf.h"

namespace quillon {

frmShelf::frmShelf(ShelfScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  setWindowTitle("Quillon: Rescued files");
  AddText("lblHead", "Rescued files");
  rows_ = Bind("ListShelf", model.ListShelf, "Rescued files");
  rows_->SetEmptyText(
      "Here stands what a load, a clean-up, a removal or the Checkup would have deleted for good.");
  // On its way to the buttons the pointer passes over other rows.
  rows_->SetFollowsPointer(false);
  rows_->OnHover = [this](int row, int) { Do([&] { model_.ListShelfHover(row); }); };
  rows_->OnEscape = [this] { Escape(); };
  why_ = AddText("lblWhy", {});
  BindButtons();
}

void frmShelf::BindButtons() {
  ShelfScreen& m = model_;
  Bind("btnPutBack", m.btnPutBack, "Put the files back where they came from.", [&m] { m.btnPutBackClick(); });
  Bind("btnDrop", m.btnDrop, "Delete these rescued files.", [&m] { m.btnDropClick(); });
  Bind("btnExplore", m.btnExplore, "Open the folder of these files.", [&m] { m.btnExploreClick(); });
  ok_ = Bind("btnOK", m.btnOK, "Back to the route manager.", [&m] { m.btnOKClick(); });
  SetDefault(ok_);
  SetCancel(ok_);
}

void frmShelf::Sync() {
  ScreenView::Sync();
  ShowWhole(*why_, model_.lblWhy.text);
  if (filled_ == model_.ListShelf.rows.empty()) GiveKeyboard();
}

void frmShelf::GiveKeyboard() {
  filled_ = !model_.ListShelf.rows.empty();
  filled_ ? rows_->setFocus() : ok_->setFocus();
}

}  // namespace quillon
