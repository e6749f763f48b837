// The rows of the causes as JSON: of the file, and of the program's events.
#pragma once

#include <nlohmann/json.hpp>

#include "checkup/CauseList.h"

namespace quillon {

nlohmann::ordered_json RowOf(const Cause& cause);
nlohmann::ordered_json RowOf(const JudgedActivity& activity);

}  // namespace quillon
