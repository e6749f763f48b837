#include "catalogue/PutBack.h"

#include "catalogue/Catalogue.h"
#include "core/text/SizeText.h"
#include "core/text/Text.h"
#include "shelf/Shelf.h"

namespace quillon {

std::string ShelfRowOf(const ShelfEntry& entry) {
  return entry.zip + "   " + ReplaceAll(entry.date, "T", " ") + "   " + std::to_string(entry.files) +
         (entry.files == 1 ? " file, " : " files, ") + SizeText(entry.bytes);
}

void PutBackRescue(Program& program, const ShelfEntry& entry) {
  program.Step("Putting the rescued files of " + entry.zip + " back");
  const Wait wait(program.watcher, program.step + "...");
  Shelf(program).PutBack(entry);
  const std::string names = entry.path + kShelfRoute;
  if (program.files.FileExists(names) && program.files.FileExists(program.app.RouteFile(entry.zip)))
    Catalogue(program).Restore(entry.zip, program.ini.ReadIni("Route", "Name", entry.zip, names));
}

bool TryToPutBack(Program& program, const ShelfEntry& entry) {
  const std::string obstacle = Shelf(program).ObstacleOf(entry);
  if (obstacle.empty()) {
    PutBackRescue(program, entry);
    return true;
  }
  FileSystem& host = program.files.Host();
  program.boxes.Tell("Rescued files",
                     "Another file stands at\r\n" + host.HostPath(obstacle) +
                         "\r\n\r\nNothing was put back. Move that file away first, or take the "
                         "rescued one out of\r\n" +
                         host.HostPath(entry.path));
  return false;
}

}  // namespace quillon
