#include "core/text/Text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillon {
namespace {

void AppendUtf8(std::string& out, std::int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes;
  const auto count = utf8proc_encode_char(codePoint, bytes.data());
  out.append(bytes.begin(), bytes.begin() + count);
}

/// Eight letters at a time: every path passes by here many times.
bool IsAscii(std::string_view text) {
  std::uint64_t letters = 0;
  for (; text.size() >= sizeof letters; text.remove_prefix(sizeof letters)) {
    std::memcpy(&letters, text.data(), sizeof letters);
    if ((letters & 0x8080808080808080) != 0) return false;
  }
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// `map` over each code point; bytes that are no UTF-8 are passed through.
template <class Map>
std::string MapCase(std::string_view text, Map map) {
  std::string out;
  out.reserve(text.size());
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const auto* end = at + text.size();
  while (at < end) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(at, end - at, &codePoint);
    if (length <= 0) {
      out.push_back(static_cast<char>(*at++));
      continue;
    }
    AppendUtf8(out, map(codePoint));
    at += length;
  }
  return out;
}

/// The library gives the sharp s a capital that Unicode's simple mapping, and any disk, does not know.
utf8proc_int32_t ToUpper(utf8proc_int32_t c) { return c == 0xDF ? c : utf8proc_toupper(c); }

utf8proc_int32_t ToLower(utf8proc_int32_t c) {
  const utf8proc_int32_t lower = utf8proc_tolower(c);
  return lower == c || ToUpper(lower) == c ? lower : c;
}

constexpr char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
constexpr char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool IsUtf8(std::string_view text) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const auto* end = at + text.size();
  while (at < end) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(at, end - at, &codePoint);
    if (length <= 0) return false;
    at += length;
  }
  return true;
}

// What Windows-1252 has at 0x80 to 0x9F; elsewhere it equals Latin-1.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::string FromWindows1252(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
  }
  return out;
}

std::string FromUtf16(std::string_view bytes, bool bigEnd) {
  const auto unitAt = [&](std::size_t i) {
    const auto a = static_cast<unsigned char>(bytes[i]), b = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(bigEnd ? a << 8 | b : b << 8 | a);
  };
  std::string out;
  out.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    std::uint32_t unit = unitAt(i);
    if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
      const std::uint32_t low = unitAt(i + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    if (unit >= 0xD800 && unit < 0xE000) unit = 0xFFFD;
    if (unit < 0x80)
      out.push_back(static_cast<char>(unit));
    else
      AppendUtf8(out, static_cast<std::int32_t>(unit));
  }
  return out;
}

}  // namespace

std::string UpperCase(std::string_view text) {
  if (!IsAscii(text)) return MapCase(text, ToUpper);
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), AsciiUpper);
  return out;
}

std::string LowerCase(std::string_view text) {
  if (!IsAscii(text)) return MapCase(text, ToLower);
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), AsciiLower);
  return out;
}

std::string ProperCase(std::string_view text) {
  bool inWord = false;
  return MapCase(text, [&](utf8proc_int32_t c) {
    const bool first = !inWord;
    inWord = c != ' ' && c != 0 && (c < '\t' || c > '\r');
    return first ? ToUpper(c) : ToLower(c);
  });
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    const bool startsCharacter = (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
    if (startsCharacter && count-- == 0) break;
  }
  return text.substr(0, at);
}

std::string Composed(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  utf8proc_uint8_t* composed = nullptr;
  const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                   static_cast<utf8proc_ssize_t>(text.size()), &composed,
                                   static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(composed, &std::free);
  return length < 0 ? std::string(text)
                    : std::string(reinterpret_cast<const char*>(composed), static_cast<std::size_t>(length));
}

bool EqualNoCase(std::string_view a, std::string_view b) { return UpperCase(a) == UpperCase(b); }

bool ComesBefore(std::string_view a, std::string_view b) {
  // What needs two units comes in front of U+E000.
  const auto weight = [](char c) {
    const int byte = static_cast<unsigned char>(c);
    return byte < 0xEE ? byte : byte < 0xF0 ? byte + 16 : byte - 2;
  };
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [&](char x, char y) { return weight(x) < weight(y); });
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string out;
  if (what.empty()) return std::string(text);
  for (auto at = text.find(what); at != text.npos; at = text.find(what)) {
    out.append(text.substr(0, at)).append(with);
    text.remove_prefix(at + what.size());
  }
  return out.append(text);
}

bool Contains(std::string_view text, std::string_view what) { return text.find(what) != text.npos; }

std::string CutAtLastDot(std::string_view name) { return std::string(name.substr(0, name.rfind('.'))); }

std::string_view FileNameOf(std::string_view path) { return path.substr(path.rfind('\\') + 1); }

std::string_view FolderOf(std::string_view path) { return path.substr(0, path.rfind('\\') + 1); }

std::string CutBackslash(std::string_view path) {
  if (path.ends_with('\\')) path.remove_suffix(1);
  return std::string(path);
}

int NumericValue(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::string DecodeGameText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16(bytes.substr(2), false);
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16(bytes.substr(2), true);
  // Without a mark, the zero halves of plain letters tell.
  if (bytes.size() >= 4 && bytes[0] != 0 && bytes[1] == 0 && bytes[3] == 0) return FromUtf16(bytes, false);
  if (bytes.size() >= 4 && bytes[0] == 0 && bytes[2] == 0 && bytes[1] != 0) return FromUtf16(bytes, true);
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::string(bytes.substr(3));
  return IsUtf8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

std::string EncodeGameText(std::string_view text) {
  std::string out = "\xFF\xFE";
  const auto putUnit = [&](std::uint32_t unit) {
    out.push_back(static_cast<char>(unit & 0xFF));
    out.push_back(static_cast<char>(unit >> 8));
  };
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const auto* end = at + text.size();
  while (at < end) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(at, end - at, &codePoint);
    at += length > 0 ? length : 1;
    auto c = length > 0 ? static_cast<std::uint32_t>(codePoint) : 0xFFFD;
    if (c < 0x10000) {
      putUnit(c);
    } else {
      c -= 0x10000;
      putUnit(0xD800 + (c >> 10));
      putUnit(0xDC00 + (c & 0x3FF));
    }
  }
  return out;
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find_first_of("\r\n");
    lines.emplace_back(text.substr(0, end));
    if (end == text.npos) break;
    text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
  }
  return lines;
}

}  // namespace quillon
