#include "checkup/GameText.h"

#include <algorithm>

#include "core/text/Text.h"

namespace quillon {
namespace {

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

}  // namespace

GameText::GameText(std::string path, std::string_view bytes)
    : path_(std::move(path)), text_(DecodeGameText(bytes)), lower_(text_.size(), '\0') {
  std::transform(text_.begin(), text_.end(), lower_.begin(), AsciiLower);
}

std::size_t GameText::LineOf(std::size_t position) const {
  std::size_t line = 1;
  for (std::size_t at = 0; at < std::min(position, text_.size()); ++at)
    line += text_[at] == '\r' || (text_[at] == '\n' && (at == 0 || text_[at - 1] != '\r')) ? 1 : 0;
  return line;
}

RunTimeError GameText::ErrorAt(const std::string& path, std::size_t line, const char* reason) {
  return RunTimeError(ErrorNumber::InvalidProcedureCall, path,
                      "line " + std::to_string(line) + ": " + reason + "; mend or remove this file");
}

void GameText::Fail(std::size_t position, const char* reason) const {
  throw ErrorAt(path_, LineOf(position), reason);
}

std::string_view GameText::Between(std::size_t from, std::size_t to, const char* lacking) const {
  if (to == kNone || to < from) Fail(from, lacking);
  return std::string_view(text_).substr(from, to - from);
}

std::string_view GameText::BetweenLessLast(std::size_t from, std::size_t to, const char* lacking) const {
  const std::string_view text = Between(from, to, lacking);
  if (text.empty()) Fail(from, lacking);
  return LessLast(text);
}

std::string_view LessLast(std::string_view text) {
  while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.remove_suffix(1);
  if (!text.empty()) text.remove_suffix(1);
  return text;
}

std::string WithoutQuotes(std::string_view text) { return ReplaceAll(Trim(text), "\"", ""); }

}  // namespace quillon
