#include "catalogue/ShelfScreen.h"

#include "catalogue/PutBack.h"
#include "shelf/Shelf.h"

namespace quillon {
void ShelfScreen::Refresh() {
  program_.Step("Listing the rescued files");
  entries_ = Shelf(program_).List();
  ListShelf.rows.clear();
  for (const auto& entry : entries_) ListShelf.rows.push_back(ShelfRowOf(entry));
  ListShelf.current = -1;
  for (Button* button : {&btnPutBack, &btnDrop, &btnExplore}) button->enabled = false;
  SetLabel("lblWhy", lblWhy, entries_.empty() ? "Nothing had to be rescued." : "Choose a rescue.", true);
}

void ShelfScreen::ListShelfHover(int row) {
  if (row < 0 || row >= static_cast<int>(entries_.size())) return;
  ListShelf.current = row;
  for (Button* button : {&btnPutBack, &btnDrop, &btnExplore}) button->enabled = true;
  SetLabel("lblWhy", lblWhy, Current().why + "\r\n" + program_.files.Host().HostPath(Current().path), true);
}

void ShelfScreen::btnPutBackClick() {
  if (ListShelf.current < 0) return;
  const std::string zip = Current().zip;
  const int row = ListShelf.current;
  if (!TryToPutBack(program_, Current())) return;
  Refresh();
  ListShelfHover(row);
  SetLabel("lblWhy", lblWhy, "The files of " + zip + " are back where they came from.", true);
}

void ShelfScreen::btnDropClick() {
  if (ListShelf.current < 0) return;
  if (program_.boxes.AskYesNo("Rescued files",
                              "Delete these rescued files for good?\r\n\r\n" + ShelfRowOf(Current())))
    Drop(Current().number);
}

void ShelfScreen::btnExploreClick() {
  if (ListShelf.current >= 0) program_.shell.Explore(Current().path + "\\");
}

void ShelfScreen::PutBack(int number) {
  PutBackRescue(program_, entries_.at(static_cast<std::size_t>(number) - 1));
  Refresh();
}

void ShelfScreen::Drop(int number) {
  const ShelfEntry entry = entries_.at(static_cast<std::size_t>(number) - 1);
  program_.Step("Deleting the rescued files of " + entry.zip);
  const Wait wait(program_.watcher, program_.step + "...");
  Shelf(program_).Drop(entry);
  Refresh();
}

}  // namespace quillon
