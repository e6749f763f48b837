#include "catalogue/Saves.h"

namespace quillon {

void CopyForSure(Files& files, const std::string& source, const std::string& destination,
                 std::string_view pattern) {
  files.CopyAllFiles(source, destination, pattern);
  for (const auto& name : files.ListFiles(source + std::string(pattern))) {
    const std::string from = source + name, to = destination + name;
    if (!files.FileExists(to) || files.Size(to) != files.Size(from)) files.FileCopy(from, to);
  }
}

void RescueSaves(Program& program, const std::string& zip) {
  Files& files = program.files;
  const std::string store = program.app.Saves(zip), game = program.BelowGame(kWorkingSaves);
  if (files.IsPathAFolder(store)) files.DelTree(store);
  files.MakeFolderIfMissing(store);
  CopyForSure(files, game + "\\", store + "\\", "*.sav");
  files.DelTree(game);
}

}  // namespace quillon
