#include "core/host/Wildcards.h"

#include <utf8proc.h>

#include <algorithm>
#include <string>

#include "core/host/FileSystem.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

/// Takes one letter off `text`. A byte that is no UTF-8 is a letter of its own, beyond all others.
std::int32_t TakeLetter(std::string_view& text) {
  constexpr std::int32_t kBeyondUnicode = 0x110000;
  std::int32_t letter = static_cast<unsigned char>(text.front());
  utf8proc_ssize_t length = 1;
  if (letter >= 0x80) {
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &letter);
  }
  if (length < 1) {
    letter = kBeyondUnicode + static_cast<unsigned char>(text.front());
    length = 1;
  }
  text.remove_prefix(static_cast<std::size_t>(length));
  return letter;
}

bool OnlyWildcards(std::string_view text) {
  return !text.empty() && text.find_first_not_of("*?") == text.npos;
}

}  // namespace

Wildcard::Wildcard(std::string_view pattern) {
  const std::string upper = UpperCase(pattern);
  const std::string_view trimmed = std::string_view(upper).substr(0, upper.find_last_not_of(" .") + 1);
  Compile(trimmed, trimmed.size() < upper.size() && upper.back() == '.');
}

void Wildcard::Compile(std::string_view upperPattern, bool endedInDot) {
  while (!upperPattern.empty()) {
    const std::int32_t letter = TakeLetter(upperPattern);
    const bool beforeDot = upperPattern.empty() ? endedInDot : upperPattern.front() == '.';
    if (letter == '*')
      tokens_.push_back({beforeDot ? Kind::AnyStem : Kind::AnyText});
    else if (letter == '?')
      tokens_.push_back({Kind::AnyLetter});
    else if (letter == '.' && OnlyWildcards(upperPattern))
      tokens_.push_back({Kind::DotOrNothing});
    else
      tokens_.push_back({Kind::Letter, letter});
  }
}

bool Wildcard::Matches(std::string_view upperName) {
  const bool dots = upperName == "." || upperName == "..";
  const std::size_t lastDot = dots ? upperName.npos : upperName.rfind('.');
  now_.assign(tokens_.size() + 1, 0);
  now_[0] = 1;
  for (std::string_view rest = upperName; !rest.empty();) {
    const std::size_t at = upperName.size() - rest.size();
    Step(TakeLetter(rest), at == lastDot);
    // Most names fail at their first letters.
    if (std::find(now_.begin(), now_.end(), 1) == now_.end()) return false;
  }
  return ReachesEnd();
}

void Wildcard::Step(std::int32_t letter, bool lastDot) {
  next_.assign(tokens_.size() + 1, 0);
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    if (now_[i] == 0) continue;
    const Token& token = tokens_[i];
    switch (token.kind) {
      case Kind::Letter: next_[i + 1] |= letter == token.letter; break;
      case Kind::DotOrNothing: next_[i + 1] |= letter == '.'; break;
      case Kind::AnyLetter: (letter == '.' ? now_ : next_)[i + 1] = 1; break;
      case Kind::AnyText:
      case Kind::AnyStem:
        now_[i + 1] = 1;
        if (token.kind == Kind::AnyText || !lastDot) next_[i] = 1;
        break;
    }
  }
  now_.swap(next_);
}

bool Wildcard::ReachesEnd() {
  for (std::size_t i = 0; i < tokens_.size(); ++i)
    if (tokens_[i].kind != Kind::Letter) now_[i + 1] |= now_[i];
  return now_[tokens_.size()] != 0;
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  return Wildcard(pattern).Matches(UpperCase(name));
}

}  // namespace quillon
