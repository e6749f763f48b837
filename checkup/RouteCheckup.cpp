#include "checkup/RouteCheckup.h"

#include <algorithm>
#include <map>
#include <unordered_set>

#include "catalogue/Catalogue.h"
#include "catalogue/Playable.h"
#include "catalogue/RouteMap.h"
#include "checkup/Causes.h"
#include "core/archive/ArchiveReader.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::uint64_t kMostBytes = 64u << 20;  // of a text file in an archive

struct KindOfFile {
  FileKind kind;
  const char* folder;
  const char* extension;
};
constexpr KindOfFile kServices{FileKind::Service, "services\\", ".srv"},
    kActivities{FileKind::Activity, "activities\\", ".act"};

}  // namespace

/// One route while it is read.
struct RouteCheckup::Route {
  std::string zip;
  std::vector<GameFile> services, activities;
  std::vector<FileFacts> serviceFacts, activityFacts;
};

RouteCheckup::RouteCheckup(Program& program, Progress& progress)
    : program_(program),
      progress_(progress),
      cache_(program),
      reader_(program, cache_),
      trains_(program, false) {}

CauseList RouteCheckup::Judge(const std::vector<std::string>& zips) {
  const FileSystem::Pass pass(program_.files.Host());
  program_.Step("Looking for trains and consists");
  trains_.BuildTrainDatabase([this] { progress_.Yield(); });
  ReadConsists(zips);
  std::vector<Route> routes;
  const std::string loaded = Catalogue(program_).Loaded();
  for (const auto& zip : zips) {
    program_.Step("Judging the activities of " + zip);
    routes.push_back(EqualNoCase(zip, loaded) ? ReadWorkingRoute(zip) : ReadRoute(zip));
    progress_.Detail(routes.size(), zips.size(), "routes");
    progress_.Yield();
  }
  const TrainPlaces places(program_);
  CauseInput input{reader_.Items(), trains_, places, {}, {}, {}};
  for (std::size_t i = 0; i < consists_.size(); ++i)
    input.consists.push_back(CauseInput::Of(consists_[i].file.shown, consists_[i].facts, consists_[i].zip));
  for (const auto& route : routes) {
    for (std::size_t i = 0; i < route.services.size(); ++i)
      input.services.push_back({route.zip, route.services[i].shown, &route.serviceFacts[i]});
    for (std::size_t i = 0; i < route.activities.size(); ++i)
      input.activities.push_back({route.zip, route.activities[i].shown, &route.activityFacts[i]});
  }
  CauseList list = FindCauses(input);
  list.made = LocalTime("%Y-%m-%d %H:%M:%S");
  if (zips.size() == 1) list.route = zips.front();
  const auto batch = program_.ini.Batch();
  auto counts = list.PlayableByRoute();
  for (const auto& zip : zips) {
    const auto [playable, all] = counts[LowerCase(zip)];
    NotePlayable(program_, zip, {playable, all});
  }
  return list;
}

/// Those that the game has, those that the Checkup has moved away, and those that a load would bring.
void RouteCheckup::ReadConsists(const std::vector<std::string>& zips) {
  std::unordered_set<std::string> known;
  const auto read = [&](const std::string& folder, const std::string& zip) {
    auto files = ListGameFiles(program_, folder, ".con");
    std::erase_if(files, [&](const GameFile& file) {
      const std::string name = UpperCase(file.shown);
      return known.contains(name) || known.contains(UpperCase(zip) + "\\" + name);
    });
    std::vector<FileFacts> facts;
    reader_.Begin(FileKind::Consist, files, facts);
    reader_.Finish([this](std::size_t done, std::size_t all) {
      progress_.Detail(done, all, "consists");
      progress_.Yield();
    });
    for (std::size_t i = 0; i < files.size(); ++i) {
      known.insert((zip.empty() ? "" : UpperCase(zip) + "\\") + UpperCase(files[i].shown));
      consists_.push_back({std::move(files[i]), std::move(facts[i]), zip});
    }
  };
  read(program_.BelowGame(kGameConsists), "");
  read(program_.BelowGame(kBackedUpConsists), "");
  for (const auto& zip : zips) read(program_.app.Consists(zip) + "\\", zip);
}

/// The loaded one: its stores are older.
RouteCheckup::Route RouteCheckup::ReadWorkingRoute(const std::string& zip) {
  Route route;
  route.zip = zip;
  const std::string working = program_.BelowGame(kWorkingRoute) + "\\";
  route.services = ListGameFiles(program_, working + kServices.folder, kServices.extension);
  route.activities = ListGameFiles(program_, working + kActivities.folder, kActivities.extension);
  route.serviceFacts = reader_.Read(FileKind::Service, route.services);
  route.activityFacts = reader_.Read(FileKind::Activity, route.activities);
  return route;
}

RouteCheckup::Route RouteCheckup::ReadRoute(const std::string& zip) {
  Route route;
  route.zip = zip;
  ArchiveReader archive(program_.files, [] {});  // a damaged one has no entries
  archive.InputFile = program_.app.RouteFile(zip);
  archive.ReadDirectory();
  const RouteMap map = MapRoute(archive);
  const auto read = [&](const KindOfFile& kind, const std::string& store, std::vector<GameFile>& files,
                        std::vector<FileFacts>& facts) {
    std::map<std::string, GameFile> stored;  // what comes later covers the earlier
    for (const auto& folder :
         {program_.app.DefaultActivities() + "\\" + kind.folder + zip + "\\", store + "\\"})
      for (auto& file : ListGameFiles(program_, folder, kind.extension))
        stored.insert_or_assign(UpperCase(file.shown), std::move(file));
    for (auto& [name, file] : stored) files.push_back(std::move(file));
    facts = reader_.Read(kind.kind, files);
    const auto folder = std::make_shared<const std::string>(archive.InputFile + "\\" + kind.folder);
    for (std::size_t i = 0; i < map.entries.size(); ++i) {
      const std::string& path = map.lstRouteStrippedPath[i];
      const std::string name(FileNameOf(path));
      if (path != kind.folder + name || !name.ends_with(kind.extension) || stored.contains(UpperCase(name)))
        continue;
      files.push_back({folder, name});
      facts.push_back(
          reader_.Take(kind.kind, files.back().Path(), archive.Bytes(map.entries[i], kMostBytes)));
    }
  };
  read(kServices, program_.app.Services(zip), route.services, route.serviceFacts);
  read(kActivities, program_.app.Activities(zip), route.activities, route.activityFacts);
  return route;
}

}  // namespace quillon
