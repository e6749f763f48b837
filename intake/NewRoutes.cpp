#include "intake/NewRoutes.h"

#include <algorithm>
#include <map>
#include <set>

#include "catalogue/Playable.h"
#include "checkup/RouteCheckup.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kMostTrains = 5;

bool IsTrain(const Cause& cause) {
  return cause.kind != Cause::Kind::MissingConsist && cause.kind != Cause::Kind::MissingService;
}

/// The train folders that each route's activities wait for, by its zip name; a missing file by its folder,
/// too.
std::map<std::string, std::vector<std::string>> LackingTrains(const CauseList& list) {
  std::map<std::string, std::vector<std::string>> lacking;
  for (const auto& cause : list.causes) {
    if (!IsTrain(cause)) continue;
    std::set<std::string> zips;
    for (const auto& path : cause.activities) zips.insert(path.substr(0, path.rfind('\\')));
    for (const auto& zip : zips)
      lacking[zip].push_back(cause.place.empty() ? cause.name : cause.place + "\\" + cause.name);
  }
  return lacking;
}

std::string Lacks(const std::vector<std::string>& names) {
  if (names.empty()) return {};
  std::string text = ", it lacks the trains ";
  for (std::size_t i = 0; i < std::min(names.size(), kMostTrains); ++i)
    text += (i == 0 ? "" : ", ") + names[i];
  return names.size() > kMostTrains ? text + " and " + std::to_string(names.size() - kMostTrains) + " more"
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
    auto counts = list.PlayableByRoute();
    auto lacking = LackingTrains(list);
    for (const auto& zip : state.ListofRouteZips)
      if (const auto [playable, all] = counts[LowerCase(zip)]; all > 0)
        state.verdicts.Note(zip, Playable{playable, all}.Text() + Lacks(lacking[zip]));
  } catch (
      const RunTimeError&) {  // the routes are in: what can't be read of the game is the Checkup's to say
  }
}

}  // namespace quillon
