#include "core/text/Folded.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <utility>

#include "core/text/Text.h"

namespace quillon {
namespace {

// Letters whose stroke or tie is no mark that comes off.
constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kLetters = {
    {{"\u00F8", "o"}, {"\u00E6", "ae"}, {"\u0153", "oe"}, {"\u0142", "l"}, {"\u0111", "d"}, {"\u0131", "i"}}};

}  // namespace

std::string Folded(std::string_view text) {
  // Case is all that plain letters have.
  if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
    return LowerCase(text);
  utf8proc_uint8_t* folded = nullptr;
  const auto length =
      utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                   static_cast<utf8proc_ssize_t>(text.size()), &folded,
                   static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE |
                                                  UTF8PROC_STRIPMARK | UTF8PROC_CASEFOLD | UTF8PROC_IGNORE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
  if (length < 0) return LowerCase(text);
  std::string out(reinterpret_cast<const char*>(folded), static_cast<std::size_t>(length));
  for (const auto& [letter, plain] : kLetters)
    if (Contains(out, letter)) out = ReplaceAll(out, letter, plain);
  return out;
}

}  // namespace quillon
