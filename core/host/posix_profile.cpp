#include "core/host/FileProfiles.h"

namespace quillon {

std::unique_ptr<ProfileFunctions> MakeProfileFunctions(FileSystem& files) { return MakeFileProfiles(files); }

}  // namespace quillon
