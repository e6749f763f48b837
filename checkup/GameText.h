// A text file of the game as the Checkup searches it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/RunTimeError.h"

namespace quillon {

/// A whole file as UTF-8, line ends as they are. Positions are in bytes from 0.
class GameText {
 public:
  static constexpr std::size_t kNone = std::string_view::npos;

  /// `bytes` are those of the file at `path`.
  GameText(std::string path, std::string_view bytes);

  /// Position of `token`, which is lower-case ASCII and matches in any case, at or behind `from`; kNone when
  /// there is none.
  std::size_t Find(std::string_view token, std::size_t from) const { return lower_.find(token, from); }
  std::size_t FindCharacter(char c, std::size_t from) const { return text_.find(c, from); }
  /// The characters between two positions. Error 5, which names file and line, when `to` lies in front of
  /// `from` or is kNone; `lacking` says what is missing there.
  std::string_view Between(std::size_t from, std::size_t to, const char* lacking) const;
  /// The same less its last character, which is where a closing parenthesis stands.
  std::string_view BetweenLessLast(std::size_t from, std::size_t to, const char* lacking) const;

  bool Empty() const { return text_.empty(); }
  std::string_view Text() const { return text_; }
  std::string_view Lower() const { return lower_; }
  const std::string& Path() const { return path_; }
  /// From 1.
  std::size_t LineOf(std::size_t position) const;
  /// Raises error 5 about the line at `position`.
  [[noreturn]] void Fail(std::size_t position, const char* reason) const;
  /// The error about a line of the file at `path`.
  static RunTimeError ErrorAt(const std::string& path, std::size_t line, const char* reason);

 private:
  std::string path_, text_, lower_;
};

/// `text` without its last character, which may be more than one byte long.
std::string_view LessLast(std::string_view text);

/// Trimmed, and without double quotes.
std::string WithoutQuotes(std::string_view text);

}  // namespace quillon
