// The saved activities of the working route.
#pragma once

#include <string>

#include "core/Program.h"

namespace quillon {

/// Puts the saved activities of the working route into the store of the route `zip` and empties the game's
/// folder. Raises a RunTimeError, and deletes nothing, when one could not be copied.
void RescueSaves(Program& program, const std::string& zip);

}  // namespace quillon
