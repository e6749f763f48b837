// The system's UTF-8 as the platform's UTF-16, and back.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

std::wstring Widen(std::string_view text);
std::string Narrow(std::wstring_view text);

/// Bytes as the platform's functions for such text read and write them: by the process's code page, which is
/// UTF-8 where the platform knows of that.
std::wstring WidenBytes(std::string_view bytes);
std::string NarrowBytes(std::wstring_view text);

}  // namespace quillon
