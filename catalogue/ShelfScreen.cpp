#include "catalogue/ShelfScreen.h"

#include "catalogue/Catalogue.h"
#include "core/Text.h"
#include "shelf/Shelf.h"

namespace quillon {
namespace {

std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1u << 10) return std::to_string(bytes) + " bytes";
  return bytes < 1u << 20 ? std::to_string(bytes >> 10) + " KB" : std::to_string(bytes >> 20) + " MB";
}

std::string RowOf(const ShelfEntry& entry) {
  return entry.zip + "   " + ReplaceAll(entry.date, "T", " ") + "   " + std::to_string(entry.files) +
         (entry.files == 1 ? " file, " : " files, ") + SizeText(entry.bytes);
}

}  // namespace

void ShelfScreen::Refresh() {
  program_.Step("Listing the rescued files");
  entries_ = Shelf(program_).List();
  ListShelf.rows.clear();
  for (const auto& entry : entries_) ListShelf.rows.push_back(RowOf(entry));
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
  const std::string obstacle = Shelf(program_).ObstacleOf(Current());
  if (!obstacle.empty()) {
    FileSystem& host = program_.files.Host();
    program_.boxes.Tell("Rescued files",
                        "Another file stands at\r\n" + host.HostPath(obstacle) +
                            "\r\n\r\nNothing was put back. Move that file away first, or take the "
                            "rescued one out of\r\n" +
                            host.HostPath(Current().path));
    return;
  }
  const std::string zip = Current().zip;
  const int row = ListShelf.current;
  PutBack(Current().number);
  ListShelfHover(row);
  SetLabel("lblWhy", lblWhy, "The files of " + zip + " are back where they came from.", true);
}

void ShelfScreen::btnDropClick() {
  if (ListShelf.current < 0) return;
  if (program_.boxes.AskYesNo("Rescued files",
                              "Delete these rescued files for good?\r\n\r\n" + RowOf(Current())))
    Drop(Current().number);
}

void ShelfScreen::btnExploreClick() {
  if (ListShelf.current >= 0) program_.shell.Explore(Current().path + "\\");
}

void ShelfScreen::PutBack(int number) {
  const ShelfEntry entry = entries_.at(static_cast<std::size_t>(number) - 1);
  program_.Step("Putting the rescued files of " + entry.zip + " back");
  const Wait wait(program_.watcher, program_.step + "...");
  Shelf(program_).PutBack(entry);
  const std::string names = entry.path + kShelfRoute;
  if (program_.files.FileExists(names) && program_.files.FileExists(program_.app.RouteFile(entry.zip)))
    Catalogue(program_).Restore(entry.zip, program_.ini.ReadIni("Route", "Name", entry.zip, names));
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
