#include "screens/frmWhy.h"

namespace quillon {

frmWhy::frmWhy(WhyScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  WhyScreen& m = model_;
  setWindowTitle("Quillon: Why?");
  AddHeads();
  Bind("lblWhen", m.lblWhen);
  rows_ = Bind("ListWhy", m.ListWhy, "What became of each download");
  rows_->SetEmptyText("Here stands each download of the last time that routes were added.");
  // On its way to the button the pointer passes over other rows.
  rows_->SetFollowsPointer(false);
  rows_->OnHover = [this](int row, int) { Do([&] { model_.ListWhyHover(row); }); };
  rows_->OnEscape = rows_->OnEnter = [this] { Escape(); };
  reason_ = AddText("lblReason", {});
  Bind("btnExplore", m.btnExplore, "Open the folder where this download lies now.",
       [&m] { m.btnExploreClick(); });
  ok_ = Bind("btnOK", m.btnOK, "Back to the route manager.", [&m] { m.btnOKClick(); });
  SetDefault(ok_);
  SetCancel(ok_);
}

void frmWhy::AddHeads() {
  AddText("lblHead", "Why?");
  AddText("lblKind", "Result");
  AddText("lblZip", "Download");
  AddText("lblText", "Reason");
}

void frmWhy::Sync() {
  ScreenView::Sync();
  ShowWhole(*reason_, model_.lblReason.text);
  if (filled_ == model_.ListWhy.rows.empty()) GiveKeyboard();
}

void frmWhy::GiveKeyboard() {
  filled_ = !model_.ListWhy.rows.empty();
  filled_ ? rows_->setFocus() : ok_->setFocus();
}

}  // namespace quillon
