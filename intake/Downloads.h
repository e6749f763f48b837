// Files that a user hands over, to be added as routes.
#pragma once

#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Copies the zips among `paths` (host paths) to downloaded_routes and says in one box what was taken and why
/// the others were not: no zip, a name that is taken, a copy that failed. Nothing there is replaced.
void TakeDownloads(Program& program, const std::vector<std::string>& paths);

}  // namespace quillon
