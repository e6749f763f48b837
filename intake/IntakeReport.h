// The pages of an intake: routereport.html, and routereporttemp.html, which leads to it and makes a browser
// fetch it anew.
#pragma once

#include "core/Program.h"

namespace quillon {

/// Writes both from routereport.ini, opens the second one and clears `ShowIntakeReport`. Without a record it
/// says so. Raises RunTimeErrors.
void WriteIntakeReport(Program& program);

}  // namespace quillon
