// The model of frmShelf: what was rescued, to be put back or dropped.
#pragma once

#include <string>
#include <vector>

#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class ShelfScreen : public Screen {
 public:
  explicit ShelfScreen(Program& program) : Screen(program, "frmShelf") {}

  /// One row a rescue, the newest first.
  List ListShelf{.enabled = true, .visible = true};
  /// Why the rescue of the current row was made, and where it lies.
  Label lblWhy;
  Button btnPutBack{.enabled = false}, btnDrop{.enabled = false}, btnExplore{.enabled = false}, btnOK;

  const std::vector<ShelfEntry>& Entries() const { return entries_; }

  void Activate() override { Refresh(); }
  void ListShelfHover(int row);

  // Of the current row. In the way stands a file: a box says so, and nothing is changed.
  void btnPutBackClick();
  /// Asks first.
  void btnDropClick();
  void btnExploreClick();
  void btnOKClick() { program_.stage.Unload(Name()); }

  /// By the rescue's number. Raise RunTimeErrors.
  void PutBack(int number);
  void Drop(int number);

 private:
  void Refresh();
  const ShelfEntry& Current() const { return entries_.at(static_cast<std::size_t>(ListShelf.current)); }

  std::vector<ShelfEntry> entries_;
};

}  // namespace quillon
