// Files that a user hands over, to be added as routes.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Hears how many files are done, and the name of the next one; empty when all are.
using TakeMeter = std::function<void(std::size_t done, std::size_t total, const std::string& name)>;

/// Copies the zips among `paths` (host paths) to downloaded_routes and says in one box what was taken and why
/// the others were not: no zip, a name that is taken, a copy that failed. Nothing there is replaced.
void TakeDownloads(Program& program, const std::vector<std::string>& paths, const TakeMeter& meter = {});

}  // namespace quillon
