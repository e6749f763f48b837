// An installation's many routes, as if they had been taken in over the years: for pictures and benchmarks.
#pragma once

#include <string>

namespace quillon {

/// Puts `count` tiny routes with their previews, stores, dates and catalogue entries into the application
/// folder `hostApp`, which has been set up and has no routes. Two runs give the same bytes. Raises
/// RunTimeErrors.
void MakeCataloguedRoutes(const std::string& hostApp, int count);

}  // namespace quillon
