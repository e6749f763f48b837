// The saved activities of the working route.
#pragma once

#include <string>
#include <string_view>

#include "core/Program.h"

namespace quillon {

/// Copies what matches from `source` to `destination`, both with a closing backslash, and makes sure of it:
/// the originals go next, and a copy that failed in silence must not cost the user a file. Raises the
/// RunTimeError of one that fails.
void CopyForSure(Files& files, const std::string& source, const std::string& destination,
                 std::string_view pattern);

/// Puts the saved activities of the working route into the store of the route `zip` and empties the game's
/// folder. Raises a RunTimeError, and deletes nothing, when one could not be copied.
void RescueSaves(Program& program, const std::string& zip);

}  // namespace quillon
