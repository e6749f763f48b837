// The platform's own error numbers as the codes that the system tells apart.
#pragma once

#include <windows.h>

#include "core/host/FileSystem.h"

namespace quillon {

/// What `error`, as GetLastError gives it, means; Ok for 0.
FileCode CodeOf(DWORD error);

/// What GetLastError means, for a call that has failed.
FileCode LastCode();

}  // namespace quillon
