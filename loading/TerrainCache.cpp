#include "loading/TerrainCache.h"

namespace quillon {

void TerrainCache::Clear() {
  for (const auto* pattern : {"\\Tiles\\*.raw", "\\LO_Tiles\\*.raw", "\\LO_Tiles\\*.t", "\\Tiles\\*.t"}) {
    const std::string path = WorkingRoute + pattern;
    const std::string folder = path.substr(0, path.rfind('\\') + 1);
    for (const auto& name : program_.files.ListFiles(path)) program_.files.KillReadOnly(folder + name);
  }
}

}  // namespace quillon
