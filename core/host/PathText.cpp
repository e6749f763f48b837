#include "core/host/PathText.h"

#include <algorithm>
#include <array>

#include "core/text/Text.h"

namespace quillon {
namespace {

// Every path passes by here many times: these ask about each letter of it.
using Letters = std::array<bool, 256>;

constexpr Letters kRefused = [] {
  Letters letters{};
  for (std::size_t c = 0; c < 0x20; ++c) letters[c] = true;
  for (const char c : {'<', '>', ':', '"', '|'}) letters[static_cast<unsigned char>(c)] = true;
  return letters;
}();

constexpr Letters kNeedStandIn = [] {
  Letters letters = kRefused;
  for (const char c : {'\\', '*', '?'}) letters[static_cast<unsigned char>(c)] = true;
  return letters;
}();

bool HasAny(std::string_view text, const Letters& letters) {
  return std::any_of(text.begin(), text.end(),
                     [&](char c) { return letters[static_cast<unsigned char>(c)]; });
}

bool NeedsStandIn(char c) { return kNeedStandIn[static_cast<unsigned char>(c)]; }

/// The letter whose stand-in `text` begins with; NUL when it begins with none.
char StandsFor(std::string_view text) {
  if (text.size() < 3 || text[0] != '\xEF') return '\0';
  const auto high = static_cast<unsigned char>(text[1]), low = static_cast<unsigned char>(text[2]);
  if (high != 0x80 && high != 0x81) return '\0';
  const char c = static_cast<char>((high & 1) << 6 | (low & 0x3F));
  return NeedsStandIn(c) ? c : '\0';
}

/// ".." never leads above the root.
void AddName(std::string_view name, std::vector<std::string>& names) {
  if (name == "." || name.empty()) return;
  if (name != "..")
    names.emplace_back(name);
  else if (!names.empty())
    names.pop_back();
}

}  // namespace

bool HasDrive(std::string_view path) {
  if (path.size() < 2 || path[1] != ':') return false;
  return (path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z');
}

void AddNames(std::string_view path, bool wildcards, PathText& text) {
  while (!path.empty()) {
    const std::string_view name = path.substr(0, FirstSeparator(path));
    path.remove_prefix(name.size());
    text.wildcard = HasWildcard(name);
    if (HasRefusedLetter(name) || (text.wildcard && (!wildcards || !path.empty()))) {
      text.code = FileCode::InvalidName;
      return;
    }
    AddName(name, text.names);
    if (path.size() == 1) text.closed = true;
    if (!path.empty()) path.remove_prefix(1);
  }
}

bool HasWildcard(std::string_view name) {
  return std::any_of(name.begin(), name.end(), [](char c) { return c == '*' || c == '?'; });
}

bool HasRefusedLetter(std::string_view name) { return HasAny(name, kRefused); }

std::string WithStandIns(std::string_view hostName) {
  if (!HasAny(hostName, kNeedStandIn)) return std::string(hostName);
  std::string text;
  for (const char c : hostName) {
    if (!NeedsStandIn(c)) {
      text += c;
      continue;
    }
    const auto code = static_cast<unsigned char>(c);  // the stand-in is U+F000 and this
    text += {'\xEF', static_cast<char>(0x80 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  }
  return text;
}

std::string WithoutStandIns(std::string_view text) {
  if (text.find('\xEF') == text.npos) return std::string(text);
  std::string name;
  for (std::size_t at = 0; at < text.size();) {
    const char c = StandsFor(text.substr(at));
    name += c != '\0' ? c : text[at];
    at += c != '\0' ? 3 : 1;
  }
  return name;
}

bool HasStandIns(std::string_view text) {
  for (auto at = text.find('\xEF'); at != text.npos; at = text.find('\xEF', at + 1))
    if (StandsFor(text.substr(at)) != '\0') return true;
  return false;
}

std::string_view DropTail(std::string_view name) { return name.substr(0, name.find_last_not_of(" .") + 1); }

bool Creatable(std::string_view name) {
  static constexpr std::array<std::string_view, 4> kDevices = {"CON", "NUL", "AUX", "PRN"};
  if (DropTail(name).empty()) return false;
  const std::string stem = UpperCase(DropTail(name.substr(0, name.find('.'))));
  if (stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")))
    return stem[3] < '1' || stem[3] > '9';
  return std::find(kDevices.begin(), kDevices.end(), stem) == kDevices.end();
}

}  // namespace quillon
