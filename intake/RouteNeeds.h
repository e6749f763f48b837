// What a route needs beside what Quillon does with its zip.
#pragma once

#include <string>
#include <vector>

#include "catalogue/RouteMap.h"
#include "core/archive/ArchiveReader.h"

namespace quillon {

/// A sentence each: an installer script that copies the game's own files (it is read, never run), folders
/// that belong into the game, a second route.
std::vector<std::string> RouteNeeds(const ArchiveReader& archive, const RouteMap& map);

}  // namespace quillon
