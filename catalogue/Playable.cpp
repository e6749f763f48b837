#include "catalogue/Playable.h"

#include "core/Installation.h"
#include "core/text/Text.h"

namespace quillon {

std::string Playable::Text() const {
  return std::to_string(playable) + " of " + std::to_string(of) +
         (of == 1 ? " activity playable" : " activities playable");
}

namespace {

std::optional<Playable> PlayableBy(const auto& read) {
  const std::string of = read("Of", "");
  if (of.empty()) return {};
  return Playable{NumericValue(read("Playable", "0")), NumericValue(of)};
}

}  // namespace

std::optional<Playable> PlayableOf(const Program& program, const std::string& zip) {
  return PlayableBy([&](const char* key, const char* otherwise) {
    return program.ini.ReadIni(zip, key, otherwise, program.app.PlayableIni());
  });
}

std::optional<Playable> PlayableOf(const ProfileSnapshot& notes, const std::string& zip) {
  return PlayableBy([&](const char* key, const char* otherwise) { return notes.Read(zip, key, otherwise); });
}

void NotePlayable(Program& program, const std::string& zip, const Playable& playable) {
  program.ini.WriteIni(zip, "Playable", std::to_string(playable.playable), program.app.PlayableIni());
  program.ini.WriteIni(zip, "Of", std::to_string(playable.of), program.app.PlayableIni());
}

/// A deletion would make a file that is missing.
void ForgetPlayable(Program& program, const std::string& zip) {
  if (PlayableOf(program, zip)) program.ini.DeleteIniSection(zip, program.app.PlayableIni());
}

std::string RouteOfPage(const Program& program) {
  return program.ini.ReadIni(FileNameOf(kWorkingRoute), "Route", "", program.app.PlayableIni());
}

void NoteRouteOfPage(Program& program, const std::string& zip) {
  program.ini.WriteIni(FileNameOf(kWorkingRoute), "Route", zip, program.app.PlayableIni());
}

}  // namespace quillon
