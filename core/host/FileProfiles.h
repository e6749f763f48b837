// The profile functions over plain files, which are kept parsed as long as their stamps stay the same.
#pragma once

#include <memory>

#include "core/host/ProfileFunctions.h"

namespace quillon {

/// `files` outlives the result.
std::unique_ptr<ProfileFunctions> MakeFileProfiles(FileSystem& files);

}  // namespace quillon
