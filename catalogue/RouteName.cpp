#include "catalogue/RouteName.h"

#include <algorithm>
#include <cctype>

#include "core/RunTimeError.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::ptrdiff_t kLongestSlice = 32767;
constexpr std::size_t kLongestName = 2000;         // bytes: a longer one could not be read back, numbered
constexpr std::size_t kLongestDescription = 6000;  // characters

/// Position of `what`, which is plain ASCII, in any case.
std::size_t FindNoCase(std::string_view text, std::string_view what) {
  const auto equal = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  const auto at = std::search(text.begin(), text.end(), what.begin(), what.end(), equal);
  return at == text.end() ? text.npos : static_cast<std::size_t>(at - text.begin());
}

std::string Shortened(std::string name) {
  std::size_t end = kLongestName;
  while ((static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  name.resize(end);
  return Trim(name);
}

/// One letter behind a backslash.
char Freed(char c) { return c == 'n' || c == 'r' ? '\n' : c == 't' ? ' ' : c; }

/// What stands in quotes, pieces joined, up to the closing parenthesis; or all up to it, when nothing is
/// quoted.
std::string TextInParentheses(std::string_view text) {
  std::string out, plain;
  bool quoted = false, anyQuoted = false;
  for (std::size_t i = 0; i < text.size() && (quoted || text[i] != ')'); ++i) {
    const bool freed = quoted && text[i] == '\\' && i + 1 < text.size();
    if (freed)
      out += Freed(text[++i]);
    else if (text[i] == '"')
      anyQuoted = true, quoted = !quoted;
    else
      (quoted ? out : plain) += text[i];
  }
  return anyQuoted ? out : plain;
}

/// A name stands on one line of the catalogue.
std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return text;
}

}  // namespace

std::string RouteNameFrom(std::string_view trackText, std::string_view path) {
  const auto refuse = [&](ErrorNumber number, const char* reason) {
    throw RunTimeError(number, std::string(path), reason);
  };
  const auto name = FindNoCase(trackText, "Name "), description = FindNoCase(trackText, "Description");
  if (name == trackText.npos || description == trackText.npos || description < name)
    refuse(ErrorNumber::InvalidProcedureCall, "the track file has no \"Name\" followed by a \"Description\"");
  if (static_cast<std::ptrdiff_t>(description - name) > kLongestSlice)
    refuse(ErrorNumber::Overflow, "the track file's \"Name\" and \"Description\" are too far apart");
  const std::string_view slice = trackText.substr(name, description - name);
  const auto open = slice.find('('), close = slice.find(')');
  const std::size_t from = open == slice.npos ? 0 : open + 1;
  if (close == slice.npos || close < from)
    refuse(ErrorNumber::InvalidProcedureCall, "the track file's \"Name\" has no parentheses");
  return Trim(OnOneLine(ReplaceAll(Trim(slice.substr(from, close - from)), "\"", "")));
}

std::string UsableRouteName(std::string name, std::string_view zip) {
  return name.empty() ? Trim(zip) : name.size() > kLongestName ? Shortened(std::move(name)) : name;
}

std::string StoredRouteName(Program& program, const std::string& zip) {
  const std::string folder = program.app.RouteInfo(zip) + "\\";
  const auto tracks = program.files.ListFiles(folder + "*.trk");
  if (tracks.empty()) return zip;
  const std::string path = folder + tracks.front();
  return UsableRouteName(RouteNameFrom(DecodeGameText(program.files.ReadAll(path, kTrackHead)), path), zip);
}

std::string RouteDescriptionFrom(std::string_view trackText) {
  constexpr std::string_view kWord = "Description";
  const auto at = FindNoCase(trackText, kWord);
  if (at == trackText.npos) return {};
  trackText.remove_prefix(at + kWord.size());
  const auto open = trackText.find_first_not_of(" \t\r\n");
  if (open == trackText.npos || trackText[open] != '(') return {};
  std::string text = ReplaceAll(TextInParentheses(trackText.substr(open + 1)), "\r", "");
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n'; },
      ' ');
  const auto isBlank = [](char c) { return c == ' ' || c == '\n'; };
  text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isBlank));
  text.erase(std::find_if_not(text.rbegin(), text.rend(), isBlank).base(), text.end());
  return std::string(FirstCharacters(text, kLongestDescription));
}

}  // namespace quillon
