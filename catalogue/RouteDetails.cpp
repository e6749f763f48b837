#include "catalogue/RouteDetails.h"

#include <algorithm>
#include <set>
#include <utility>

#include "catalogue/Catalogue.h"
#include "catalogue/DetailsCache.h"
#include "catalogue/LoadMark.h"
#include "catalogue/RouteDates.h"
#include "core/LocalTime.h"
#include "core/Text.h"

namespace quillon {
namespace {

int CountFiles(Program& program, const std::string& pattern) {
  return static_cast<int>(program.files.ListFiles(pattern).size());
}

/// Its own and those that come with the program, each name once.
int CountStoredActivities(Program& program, const std::string& zip) {
  const auto own = program.files.ListFiles(program.app.Activities(zip) + "\\*.act");
  const auto delivered =
      program.files.ListFiles(program.app.DefaultActivities() + "\\activities\\" + zip + "\\*.act");
  if (delivered.empty()) return static_cast<int>(own.size());
  std::set<std::string> names;
  for (const auto* list : {&own, &delivered})
    for (const auto& name : *list) names.insert(UpperCase(name));
  return static_cast<int>(names.size());
}

void CountWork(Program& program, bool inGame, RouteDetails& route) {
  if (inGame) {
    route.activities = CountFiles(program, program.BelowGame(kWorkingRoute) + "\\Activities\\*.act");
    route.saves = CountFiles(program, program.BelowGame(kWorkingSaves) + "\\*.sav");
  } else {
    route.activities = CountStoredActivities(program, route.zip);
    route.saves = CountFiles(program, program.app.Saves(route.zip) + "\\*.sav");
  }
}

/// What is noted; a route from before the notes was taken in when its file was made.
void FillDates(Program& program, std::int64_t modified, RouteDetails& route) {
  const RouteDates dates(program);
  route.added = dates.Added(route.zip);
  if (route.added.empty()) route.added = LocalTime(kIsoTime, modified);
  route.lastLoaded = dates.LastLoaded(route.zip);
}

void SortAsList(std::vector<RouteDetails>& routes) {
  std::vector<std::pair<std::string, std::size_t>> keys;
  for (std::size_t i = 0; i < routes.size(); ++i)
    keys.emplace_back(
        UpperCase(routes[i].loaded ? routes[i].name + std::string(kLoadedMark) : routes[i].name), i);
  std::stable_sort(keys.begin(), keys.end(),
                   [](const auto& a, const auto& b) { return ComesBefore(a.first, b.first); });
  std::vector<RouteDetails> sorted;
  for (const auto& [key, i] : keys) sorted.push_back(std::move(routes[i]));
  routes = std::move(sorted);
}

}  // namespace

std::vector<RouteDetails> DetailsOfRoutes(
    Program& program, const std::function<void(std::size_t done, std::size_t all)>& tick) {
  program.Step("Reading what is known of the routes");
  const FileSystem::Pass pass(program.files.Host());
  const Catalogue catalogue(program);
  const std::string loaded = catalogue.Loaded();
  // The stores are the only copy while a load is cut short.
  const bool gameHasIt =
      program.files.IsPathAFolder(program.BelowGame(kWorkingRoute)) && !LoadMark(program).Stands();
  const auto files = ListRouteFiles(program);
  auto contents = ContentsOf(program, files, tick);
  std::vector<RouteDetails> routes(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    RouteDetails& route = routes[i];
    route.zip = files[i].zip;
    route.name = catalogue.NameOf(route.zip, kRunCleanup);
    route.catalogued = route.name != kRunCleanup;
    route.loaded = route.zip == loaded;
    route.packed = files[i].size;
    route.files = contents[i].files;
    route.bytes = contents[i].bytes;
    route.damaged = contents[i].damaged;
    route.description = std::move(contents[i].description);
    route.playable = PlayableOf(program, route.zip);
    FillDates(program, files[i].modified, route);
    CountWork(program, route.loaded && gameHasIt, route);
  }
  SortAsList(routes);
  return routes;
}

}  // namespace quillon
