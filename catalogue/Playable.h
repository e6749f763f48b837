// How many activities of a route can be played, as the last look at it has found.
#pragma once

#include <optional>
#include <string>

#include "core/ProfileSnapshot.h"
#include "core/Program.h"

namespace quillon {

struct Playable {
  int playable = 0, of = 0;  // activities

  /// Such as "9 of 12 activities playable".
  std::string Text() const;
};

/// None while nobody has looked.
std::optional<Playable> PlayableOf(const Program& program, const std::string& zip);
/// The same from the file of these notes.
std::optional<Playable> PlayableOf(const ProfileSnapshot& notes, const std::string& zip);
void NotePlayable(Program& program, const std::string& zip, const Playable& playable);
/// The route has been removed.
void ForgetPlayable(Program& program, const std::string& zip);

/// The zip name of the route that was loaded at the last whole Checkup, and that its page tells of.
std::string RouteOfPage(const Program& program);
void NoteRouteOfPage(Program& program, const std::string& zip);

}  // namespace quillon
