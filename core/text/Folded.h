// Text for searching: no case, no accents.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// `text` in lower case, letters without their marks: "Ö" and "o" are one. What is no UTF-8 stays.
std::string Folded(std::string_view text);

}  // namespace quillon
