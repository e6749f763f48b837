// The sample's game: a small Train Simulator folder with all that the system reads there.
#pragma once

#include <string>

namespace quillon {

/// Makes the game in `hostFolder`, which is made when it is missing. Raises RunTimeErrors.
void MakeGame(const std::string& hostFolder);

}  // namespace quillon
