// Files of a route in the working route that no list of this installation names.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// Such a file: a track file at the top or a world file. Another installation has put it there, or the game's
/// folder was exchanged. Files of the default state and of custom folders are none. Empty without one.
std::string StrangerInWorkingRoute(Program& program);

/// True when there is none, or the user goes on all the same; else the command is refused.
bool GoesOnBesideStrangers(Program& program);

}  // namespace quillon
