// The tree for a route's custom files.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// Makes the tree of the route `zip`; an existing one is left alone, even when folders are missing in it.
inline void MakeCustomFolders(Program& program, const std::string& zip) {
  if (program.files.FileExists(program.app.Custom(zip))) return;
  for (const auto folder : kCustomFolders)
    program.files.MakeFolder(program.app.Custom(zip) + std::string(folder));
}

}  // namespace quillon
