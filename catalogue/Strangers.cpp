#include "catalogue/Strangers.h"

#include <algorithm>
#include <unordered_set>

#include "catalogue/LoadLists.h"
#include "core/text/Text.h"
#include "shelf/PlacedRecord.h"

namespace quillon {
namespace {

constexpr std::string_view kPatterns[] = {"\\*.trk", "\\WORLD\\*.w"};

bool IsInACustomFolder(Program& program, const std::string& below) {
  std::vector<FoundFile> routes;
  program.files.Host().Find(program.app.Custom("*.*"), routes);
  return std::any_of(routes.begin(), routes.end(), [&](const FoundFile& route) {
    return !route.dots() && program.files.FileExists(program.app.Custom(route.name) + below);
  });
}

/// In upper case.
std::unordered_set<std::string> ListedFiles(Program& program) {
  const LoadLists lists(program);
  std::unordered_set<std::string> listed;
  for (const auto& line : lists.Current()) listed.insert(UpperCase(line));
  return listed;
}

/// A track file may be among the default files.
bool IsOfTheDefaultState(Program& program, const std::string& below) {
  const auto isIn = [&](std::string_view folder) {
    return program.files.FileExists(program.BelowGame(folder) + below);
  };
  return isIn("\\TEMPLATE") || std::any_of(kDefaultRoutes.begin(), kDefaultRoutes.end(), isIn);
}

}  // namespace

std::string StrangerInWorkingRoute(Program& program) {
  Files& files = program.files;
  // Lists that can't be read are the load's to tell of.
  if (!files.FileExists(program.app.CurrentList()) || !files.FileExists(program.app.DefaultList())) return {};
  const FileSystem::Pass pass(files.Host());
  const PlacedRecord placed(program);
  const std::string route = program.BelowGame(kWorkingRoute);
  std::unordered_set<std::string> listed;
  std::string stranger;
  for (const auto pattern : kPatterns) {
    const auto names = files.ListFiles(route + std::string(pattern));
    // A few world files more are a user's with a route editor; a track file more, or no known one, is a
    // route.
    std::size_t strangers = 0;
    for (const auto& name : names) {
      const std::string below = std::string(FolderOf(pattern)) + name;
      FileSystem::Stamp stamp;
      // What a load, a script or a custom folder has put there. The lists are only read when that is not
      // known.
      if (files.Host().GetStamp(route + below, stamp) != FileCode::Ok || placed.Covers(stamp.changed))
        continue;
      if (listed.empty()) listed = ListedFiles(program);
      if (listed.contains(UpperCase(route + below)) || IsInACustomFolder(program, below) ||
          IsOfTheDefaultState(program, below))
        continue;
      stranger = route + below;
      ++strangers;
    }
    if (strangers > 0 && (pattern == kPatterns[0] || strangers == names.size())) return stranger;
  }
  return {};
}

bool GoesOnBesideStrangers(Program& program) {
  const std::string stranger = StrangerInWorkingRoute(program);
  if (stranger.empty() ||
      program.boxes.AskYesNo(
          "Another route stands there",
          "The working route holds files of a route that this Quillon has not put there, such as\r\n" +
              stranger +
              "\r\n\r\nAnother Quillon folder may work with the same game, or the game's folder "
              "was changed. Loaded beside them, a route will not work properly.\r\n"
              "Click No, and then Clean in the route manager ('quillon clean').\r\n\r\n"
              "Load the route all the same?"))
    return true;
  program.Refuse();
  return false;
}

}  // namespace quillon
