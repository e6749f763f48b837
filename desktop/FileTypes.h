// The file types that the system makes, made known to the desktop.
#pragma once

#include <string>

#include "core/host/Registry.h"

namespace quillon {

/// Registers `.qnz` and `.qnc` for the program in `appFolder`. A failure leaves them unregistered.
void RegisterFileTypes(Registry& registry, const std::string& appFolder);

}  // namespace quillon
