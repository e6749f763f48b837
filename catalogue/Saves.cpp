#include "catalogue/Saves.h"

namespace quillon {

void RescueSaves(Program& program, const std::string& zip) {
  Files& files = program.files;
  const std::string store = program.app.Saves(zip), game = program.BelowGame(kWorkingSaves);
  if (files.IsPathAFolder(store)) files.DelTree(store);
  files.MakeFolderIfMissing(store);
  files.CopyAllFiles(game + "\\", store + "\\", "*.sav");
  // The originals go next: a copy that failed in silence must not cost the user a saved game.
  for (const auto& name : files.ListFiles(game + "\\*.sav")) {
    const std::string from = game + "\\" + name, to = store + "\\" + name;
    if (!files.FileExists(to) || files.Size(to) != files.Size(from)) files.FileCopy(from, to);
  }
  files.DelTree(game);
}

}  // namespace quillon
