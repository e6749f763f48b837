// The rule that turns an archive's names into names of the target file system, or refuses them.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A stored name in the system's form: backslashes, without drive and leading separators, a folder ending in
/// a backslash. What no file name may have on the target is "_".
std::string NormalStoredName(std::string_view stored);

/// A name that is no UTF-8, as `decoded` from the code page of old, one character for each byte of `raw`,
/// with
/// "_" for what is no letter there: control characters, and a bar or backslash that is the second half of a
/// Japanese letter. Where `backslashSeparates`, a backslash is taken for what it looks like.
std::string LegacyStoredName(std::string_view raw, std::string_view decoded, bool backslashSeparates);

/// What keeps a normal stored name from being written below any folder: "..", no name at all, too long a
/// name. Null when it is harmless.
const char* HarmIn(std::string_view normalName);

/// True for what the programs of another system keep beside its files; no file of a route's is called so.
bool IsSystemsOwn(std::string_view normalName);

/// True when folders can be called `stem`, with or without the blanks and dots at its end: it is a name, and
/// leads nowhere.
bool IsUsableStem(std::string_view stem);

/// `name`, of one file, as the target can hold it.
std::string UsableFileName(std::string_view name);

}  // namespace quillon
