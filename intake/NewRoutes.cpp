#include "intake/NewRoutes.h"

#include <algorithm>

#include "catalogue/Playable.h"
#include "checkup/RouteCheckup.h"
#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kMostNames = 5;

bool IsTrain(const Cause& cause) {
  return cause.kind != Cause::Kind::MissingConsist && cause.kind != Cause::Kind::MissingService;
}

/// The train folders that the route's activities wait for; a missing file by its folder, too.
std::string Lacks(const CauseList& list, const std::string& zip) {
  std::vector<std::string> names;
  for (const auto& cause : list.causes)
    if (IsTrain(cause) && std::any_of(cause.activities.begin(), cause.activities.end(),
                                      [&](const std::string& path) { return path.starts_with(zip + "\\"); }))
      names.push_back(cause.place.empty() ? cause.name : cause.place + "\\" + cause.name);
  if (names.empty()) return {};
  std::string text = ", it lacks the trains ";
  for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i)
    text += (i == 0 ? "" : ", ") + names[i];
  return names.size() > kMostNames ? text + " and " + std::to_string(names.size() - kMostNames) + " more"
                                   : text;
}

}  // namespace

void NoteWhatCanBePlayed(IntakeState& state) {
  Program& program = state.program;
  if (state.ListofRouteZips.empty() ||
      program.ini.ReadIni("TrainSim", "Train.exe", "No", program.app.SettingsIni()) == "No")
    return;
  try {
    const CauseList list = RouteCheckup(program, state.progress).Judge(state.ListofRouteZips);
    for (const auto& zip : state.ListofRouteZips) {
      if (list.Activities(zip) == 0) continue;
      state.verdicts.Note(zip, Playable{list.Playable(zip), list.Activities(zip)}.Text() + Lacks(list, zip));
    }
  } catch (
      const RunTimeError&) {  // the routes are in: what can't be read of the game is the Checkup's to say
  }
}

}  // namespace quillon
