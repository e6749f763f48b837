// When routes were taken in and last loaded.
#pragma once

#include <string>
#include <string_view>

#include "core/Program.h"

namespace quillon {

/// Times are ISO 8601, local. A note that can't be written is lost, and nothing else.
class RouteDates {
 public:
  explicit RouteDates(Program& program) : program_(program) {}

  void NoteAdded(std::string_view zip) const { Note("Added", zip); }
  void NoteLoaded(std::string_view zip) const { Note("Loaded", zip); }
  /// Empty when nothing was noted.
  std::string Added(std::string_view zip) const { return Noted("Added", zip); }
  std::string LastLoaded(std::string_view zip) const { return Noted("Loaded", zip); }
  /// The route has been removed.
  void Forget(std::string_view zip) const;

 private:
  void Note(const char* what, std::string_view zip) const;
  std::string Noted(const char* what, std::string_view zip) const;

  Program& program_;
};

}  // namespace quillon
