// When routes were taken in and last loaded.
#pragma once

#include <string>
#include <string_view>

#include "core/ProfileSnapshot.h"
#include "core/Program.h"

namespace quillon {

/// Times are ISO 8601, local. A note that can't be written is lost, and nothing else.
class RouteDates {
 public:
  explicit RouteDates(Program& program) : program_(program) {}

  void NoteAdded(std::string_view zip) const { Note("Added", zip); }
  void NoteLoaded(std::string_view zip) const { Note("Loaded", zip); }
  // From the file of dates; empty when nothing was noted.
  static std::string Added(const ProfileSnapshot& dates, std::string_view zip);
  static std::string LastLoaded(const ProfileSnapshot& dates, std::string_view zip);
  /// The route has been removed.
  void Forget(std::string_view zip) const;

 private:
  void Note(const char* what, std::string_view zip) const;

  Program& program_;
};

}  // namespace quillon
