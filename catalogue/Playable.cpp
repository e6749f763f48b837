#include "catalogue/Playable.h"

#include "core/Installation.h"
#include "core/Text.h"

namespace quillon {

std::string Playable::Text() const {
  return std::to_string(playable) + " of " + std::to_string(of) +
         (of == 1 ? " activity playable" : " activities playable");
}

std::optional<Playable> PlayableOf(const Program& program, const std::string& zip) {
  const std::string of = program.ini.ReadIni(zip, "Of", "", program.app.PlayableIni());
  if (of.empty()) return {};
  return Playable{NumericValue(program.ini.ReadIni(zip, "Playable", "0", program.app.PlayableIni())),
                  NumericValue(of)};
}

std::optional<Playable> PlayableOf(const ProfileSnapshot& notes, const std::string& zip) {
  const std::string of = notes.Read(zip, "Of", "");
  if (of.empty()) return {};
  return Playable{NumericValue(notes.Read(zip, "Playable", "0")), NumericValue(of)};
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
