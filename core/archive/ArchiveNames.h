// The rule that turns an archive's names into names of the target file system, or refuses them.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A stored name in the system's form: backslashes, without drive and leading separators, a folder ending in
/// a backslash.
std::string NormalStoredName(std::string_view stored);

/// What keeps a normal stored name from being written below any folder: "..", characters that the target file
/// system can't hold, a device's name, too long a name. Null when it is harmless.
const char* HarmIn(std::string_view normalName);

/// True when folders can be called `stem`: it is a name, keeps its end on the target, and leads nowhere.
bool IsUsableStem(std::string_view stem);

}  // namespace quillon
