// Text of UTF-16 files for callers whose text is bytes: by the target platform's code page, Windows-1252.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// Each byte as the character that the code page has for it.
std::string AnsiToUtf8(std::string_view bytes);

/// Each character of `text`, which is UTF-8, as its byte; "?" for what the code page lacks.
std::string Utf8ToAnsi(std::string_view text);

}  // namespace quillon
