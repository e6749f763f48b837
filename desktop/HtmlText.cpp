#include "desktop/HtmlText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kEntities = {{
    {"amp", "&"},
    {"lt", "<"},
    {"gt", ">"},
    {"quot", "\""},
    {"apos", "'"},
    {"nbsp", " "},
}};

// Within a word these part nothing; all others end it.
constexpr std::array<std::string_view, 6> kInline = {"a", "b", "i", "em", "span", "strong"};

std::string Utf8(std::uint32_t code) {
  if (code < 0x80) return {static_cast<char>(code)};
  std::string bytes;
  const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  constexpr std::array<int, 4> kLead = {0, 0xC0, 0xE0, 0xF0};
  bytes += static_cast<char>(kLead[static_cast<std::size_t>(more)] | static_cast<int>(code >> (6 * more)));
  for (int i = more; i-- > 0;) bytes += static_cast<char>(0x80 | ((code >> (6 * i)) & 0x3F));
  return bytes;
}

/// Of "amp", "#39" or "#x27"; empty for one that is not known.
std::string CharacterOf(std::string_view entity) {
  if (!entity.starts_with('#')) {
    const auto at = std::find_if(kEntities.begin(), kEntities.end(),
                                 [&](const auto& known) { return known.first == entity; });
    return at == kEntities.end() ? "" : std::string(at->second);
  }
  entity.remove_prefix(1);
  const bool hex = entity.starts_with('x') || entity.starts_with('X');
  if (hex) entity.remove_prefix(1);
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(entity.data(), entity.data() + entity.size(), code, hex ? 16 : 10);
  const bool whole = error == std::errc() && end == entity.data() + entity.size();
  return whole && code > 0 && code < 0x110000 ? Utf8(code) : "";
}

/// Name of a tag in lower case; `tag` is what stands between the angle brackets.
std::string NameOf(std::string_view tag) {
  if (tag.starts_with('/')) tag.remove_prefix(1);
  return LowerCase(tag.substr(0, tag.find_first_of(" \t\r\n/")));
}

/// Behind the closing tag of what begins at `from`; the end of the text without one.
std::size_t BehindElement(std::string_view html, std::string_view name, std::size_t from) {
  const auto end = html.find("</" + std::string(name), from);
  return end == html.npos ? html.size() : std::min(html.find('>', end), html.size() - 1) + 1;
}

/// The page without its tags. Their places are blanks, unless they stand within words.
std::string WithoutTags(std::string_view html) {
  std::string text;
  std::size_t at = 0;
  while (at < html.size()) {
    const auto open = std::min(html.find('<', at), html.size());
    text += html.substr(at, open - at);
    if (open == html.size()) break;
    const bool comment = html.substr(open).starts_with("<!--");
    const auto close = comment ? html.find("-->", open) : html.find('>', open);
    if (close == html.npos) break;
    at = close + (comment ? 3 : 1);
    const std::string name = comment ? "" : NameOf(html.substr(open + 1, close - open - 1));
    if (name == "head" && html[open + 1] != '/') at = BehindElement(html, name, at);
    if (std::find(kInline.begin(), kInline.end(), name) == kInline.end()) text += ' ';
  }
  return text;
}

std::string WithCharacters(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = text[at] == '&' ? text.find(';', at) : text.npos;
    const std::string character = end == text.npos ? "" : CharacterOf(text.substr(at + 1, end - at - 1));
    if (character.empty())
      result += text[at++];
    else
      result += character, at = end + 1;
  }
  return result;
}

}  // namespace

std::string PlainText(std::string_view html) {
  std::string text;
  for (const char c : WithCharacters(WithoutTags(html))) {
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!blank || (!text.empty() && text.back() != ' ')) text += blank ? ' ' : c;
  }
  return Trim(text);
}

}  // namespace quillon
