// The host's error numbers as the target platform's codes.
#pragma once

#include <string>

#include "core/host/FileSystem.h"

namespace quillon {

/// What `error`, an errno or 0, means for the host path `host`: whether its folder is there tells the two
/// kinds of "not found" apart.
FileCode CodeOf(int error, const std::string& host);

}  // namespace quillon
