// Path texts of the target platform on a host whose names are exact.
#pragma once

#include <string>
#include <string_view>

#include "core/host/PathText.h"

namespace quillon {

/// A relative path starts in the current folder; no drive is known.
PathText TakeApart(std::string_view path, bool wildcards = false);

/// Whether a disk of the target platform, and of this one, can hold the name.
bool ValidName(std::string_view name);

/// The host's spelling of `text` where every name in it is exact.
std::string ExactHostPath(const PathText& text);

}  // namespace quillon
