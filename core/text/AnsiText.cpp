#include "core/text/AnsiText.h"

#include <array>
#include <cstddef>
#include <unordered_map>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kAscii = 128;

/// The upper half of the code page, which the reading of game text knows: a lone such byte is no UTF-8.
const std::array<std::string, kAscii>& UpperHalf() {
  static const auto characters = [] {
    std::array<std::string, kAscii> all;
    for (std::size_t i = 0; i < kAscii; ++i)
      all[i] = DecodeGameText(std::string(1, static_cast<char>(kAscii + i)));
    return all;
  }();
  return characters;
}

const std::unordered_map<std::string_view, char>& BytesOfUpperHalf() {
  static const auto bytes = [] {
    std::unordered_map<std::string_view, char> all;
    for (std::size_t i = 0; i < kAscii; ++i) all.emplace(UpperHalf()[i], static_cast<char>(kAscii + i));
    return all;
  }();
  return bytes;
}

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string AnsiToUtf8(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    if (code < kAscii)
      text.push_back(c);
    else
      text += UpperHalf()[code - kAscii];
  }
  return text;
}

std::string Utf8ToAnsi(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    std::size_t length = 1;
    while (length < text.size() && ContinuesCharacter(text[length])) ++length;
    const auto found = BytesOfUpperHalf().find(text.substr(0, length));
    const bool ascii = static_cast<unsigned char>(text.front()) < kAscii;
    bytes.push_back(ascii ? text.front() : found == BytesOfUpperHalf().end() ? '?' : found->second);
    text.remove_prefix(length);
  }
  return bytes;
}

}  // namespace quillon
