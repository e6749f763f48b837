#include "catalogue/RouteDetails.h"

#include <algorithm>
#include <set>
#include <utility>

#include "catalogue/Catalogue.h"
#include "catalogue/DetailsCache.h"
#include "catalogue/LoadMark.h"
#include "catalogue/RouteDates.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

int CountFiles(Program& program, const std::string& pattern) {
  return static_cast<int>(program.files.ListFiles(pattern).size());
}

/// What is asked of every route, read once.
class Notes {
 public:
  explicit Notes(Program& program)
      : program_(program),
        names_(program.files, program.app.RoutesIni()),
        dates_(program.files, program.app.DatesIni()),
        playable_(program.files, program.app.PlayableIni()) {
    std::vector<FoundFile> found;
    program.files.Host().Find(Delivered("*"), found);
    for (const auto& folder : found) delivered_.insert(UpperCase(folder.name));
  }

  /// A route from before the notes was taken in when its file was made.
  void Fill(std::int64_t modified, RouteDetails& route) const {
    route.name = names_.Read(route.zip, "Name", kRunCleanup);
    route.catalogued = route.name != kRunCleanup && !Trim(route.name).empty() &&
                       EqualNoCase(names_.Read(route.name, "Zip", ""), route.zip);
    route.playable = PlayableOf(playable_, route.zip);
    route.added = RouteDates::Added(dates_, route.zip);
    if (route.added.empty()) route.added = LocalTime(kIsoTime, modified);
    route.lastLoaded = RouteDates::LastLoaded(dates_, route.zip);
  }

  void CountWork(bool inGame, RouteDetails& route) const {
    if (inGame) {
      route.activities = CountFiles(program_, program_.BelowGame(kWorkingRoute) + "\\Activities\\*.act");
      route.saves = CountFiles(program_, program_.BelowGame(kWorkingSaves) + "\\*.sav");
    } else {
      route.activities = CountStoredActivities(route.zip);
      route.saves = CountFiles(program_, program_.app.Saves(route.zip) + "\\*.sav");
    }
  }

 private:
  std::string Delivered(const std::string& zip) const {
    return program_.app.DefaultActivities() + "\\activities\\" + zip;
  }

  /// Its own and those that come with the program, each name once.
  int CountStoredActivities(const std::string& zip) const {
    const auto own = program_.files.ListFiles(program_.app.Activities(zip) + "\\*.act");
    if (!delivered_.contains(UpperCase(zip))) return static_cast<int>(own.size());
    std::set<std::string> names;
    for (const auto& name : own) names.insert(UpperCase(name));
    for (const auto& name : program_.files.ListFiles(Delivered(zip) + "\\*.act"))
      names.insert(UpperCase(name));
    return static_cast<int>(names.size());
  }

  Program& program_;
  const ProfileSnapshot names_, dates_, playable_;
  std::set<std::string> delivered_;  // zip names with activities that come with the program, in upper case
};

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
  const Notes notes(program);
  const std::string loaded = Catalogue(program).Loaded();
  // The stores are the only copy while a load is cut short.
  const bool gameHasIt =
      program.files.IsPathAFolder(program.BelowGame(kWorkingRoute)) && !LoadMark(program).Stands();
  const auto files = ListRouteFiles(program);
  auto contents = ContentsOf(program, files, tick);
  std::vector<RouteDetails> routes(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    RouteDetails& route = routes[i];
    route.zip = files[i].zip;
    route.loaded = route.zip == loaded;
    route.packed = files[i].size;
    route.files = contents[i].files;
    route.bytes = contents[i].bytes;
    route.damaged = contents[i].damaged;
    route.description = std::move(contents[i].description);
    notes.Fill(files[i].modified, route);
    notes.CountWork(route.loaded && gameHasIt, route);
  }
  SortAsList(routes);
  return routes;
}

}  // namespace quillon
