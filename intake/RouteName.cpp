#include "intake/RouteName.h"

#include <algorithm>
#include <cctype>

#include "core/RunTimeError.h"
#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::ptrdiff_t kLongestSlice = 32767;

/// Position of `what`, which is plain ASCII, in any case.
std::size_t FindNoCase(std::string_view text, std::string_view what) {
  const auto equal = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  const auto at = std::search(text.begin(), text.end(), what.begin(), what.end(), equal);
  return at == text.end() ? text.npos : static_cast<std::size_t>(at - text.begin());
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

}  // namespace quillon
