// The way of a rescue back from the shelf, for every screen that offers it.
#pragma once

#include "core/Program.h"

namespace quillon {

/// What of a rescue is listed in a row.
std::string ShelfRowOf(const ShelfEntry& entry);

/// Copies the files back to where they came from; a removed route is entered again. Raises RunTimeErrors, 58
/// where another file stands in the way.
void PutBackRescue(Program& program, const ShelfEntry& entry);

/// The same, but what stands in the way is told by a box. False when it was.
bool TryToPutBack(Program& program, const ShelfEntry& entry);

}  // namespace quillon
