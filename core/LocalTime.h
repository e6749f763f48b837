// The present time as text.
#pragma once

#include <string>

namespace quillon {

/// The present local time in `form`, as strftime has it.
std::string LocalTime(const char* form);

}  // namespace quillon
