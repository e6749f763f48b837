// A wildcard pattern, made ready for many names.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillon {

/// The rule of MatchesPattern over names that are in upper case already.
class Wildcard {
 public:
  explicit Wildcard(std::string_view pattern);

  /// `upperName` is a name as UpperCase gives it.
  bool Matches(std::string_view upperName);

 private:
  enum class Kind : std::uint8_t {
    Letter,
    AnyLetter,    // one letter but a dot; none in front of a dot or at the end
    AnyText,      // letters, dots included
    AnyStem,      // letters, dots included but not the name's last one
    DotOrNothing  // a dot, or the end
  };
  struct Token {
    Kind kind;
    std::int32_t letter = 0;
  };

  void Compile(std::string_view upperPattern, bool endedInDot);
  void Step(std::int32_t letter, bool lastDot);
  bool ReachesEnd();

  std::vector<Token> tokens_;
  // Marks the tokens that may come next; two sets, kept from name to name.
  std::vector<char> now_, next_;
};

}  // namespace quillon
