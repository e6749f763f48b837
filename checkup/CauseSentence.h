// A cause in a sentence, and what its words are made of.
#pragma once

#include <string>
#include <string_view>

#include "checkup/CauseList.h"

namespace quillon {

/// A stranger's name as text of a page, within quotes, too.
std::string Safe(std::string_view name);

/// How many there are, for Count.
int Size(const auto& things) { return static_cast<int>(things.size()); }
/// A number with its noun, such as "no cats", "1 cat", "9 cats".
std::string Count(int number, const char* one, const char* many);

/// What is missing, who needs it and what heals by it, in HTML and without a full stop.
std::string CauseSentence(const Cause& cause);

}  // namespace quillon
