#include "sample/CataloguedRoutes.h"

#include <array>
#include <cstdio>
#include <vector>

#include "core/text/Text.h"
#include "sample/ActivityFiles.h"
#include "sample/FileBytes.h"
#include "sample/FileTexts.h"
#include "sample/HostFiles.h"
#include "sample/Pictures.h"
#include "sample/SampleFile.h"

namespace quillon {
namespace {

constexpr int kPreviews = 48;  // different ones; a preview takes longer than all else of a route
constexpr std::array kPlaces = {
    "Grosstal",    "Kestrel Valley", "Mühlenbach",  "Île-aux-Grues",  "Hochmoor",  "Lowmoor",    "Åsfjord",
    "Stillwater",  "São Pedro",      "Eberswinkel", "Pine Ridge",     "Žďárnice",  "Porth Wenn", "Übersee",
    "Coldharbour", "Val d'Orin",     "Tamarack",    "Weiße Lütschen", "Nørrelund", "Ox"};
constexpr std::array kKinds = {"",
                               " Railway",
                               " Branch",
                               " Kleinbahn",
                               " & Northern Light Railway",
                               " Coal and Iron Company, Mine Lines",
                               " Bergbahn",
                               " Subdivision"};
constexpr std::array kStories = {
    "A branch line up a wide valley, from the mill to the pass.",
    "Forty miles of single track through the forest, with three passing loops and a long climb.\n\n"
    "Timber goes down to the harbour, and empty wagons come back. In winter the plough goes first.",
    "Schmalspur im Tal der Mühlen, für Grün und Öl.",
    "Along the cliffs, in any weather.",
    "",
    "The main line as it was in 1938: steam, express trains that leave on the minute, milk and mail at every "
    "station, and a steep bank where the heavy goods need an engine behind. All signals work, and all of the "
    "platforms have the length that they had. Allow two hours from end to end."};

struct Route {
  std::string zip, name, story;
  int number = 0, activities = 0, saves = 0, playable = -1;
  std::string added, loaded;
};

std::string Date(int year, int days, Numbers& numbers) {
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", year, 1 + days / 28 % 12,
                1 + days % 28, numbers.Between(6, 22), numbers.Between(0, 59), numbers.Between(0, 59));
  return text.data();
}

Route PlanRoute(int number) {
  Numbers numbers("route " + std::to_string(number));
  const auto n = static_cast<std::size_t>(number);
  const std::size_t round = n / (kPlaces.size() * kKinds.size());
  Route route;
  route.number = number;
  route.name = std::string(kPlaces[n % kPlaces.size()]) + kKinds[n / kPlaces.size() % kKinds.size()] +
               (round == 0 ? "" : " " + std::to_string(round + 1));
  // Never equal to a display name: both are sections of the catalogue.
  route.zip = ReplaceAll(numbers.Between(0, 1) == 0 ? LowerCase(route.name) : route.name, " ", "_") + "_v" +
              std::to_string(numbers.Between(1, 4));
  route.story = kStories[n * 7 % kStories.size()];
  route.activities = numbers.Between(0, 9);
  route.saves = numbers.Between(0, 3) == 0 ? numbers.Between(1, 4) : 0;
  if (numbers.Between(0, 2) > 0) route.playable = numbers.Between(0, route.activities);
  route.added = Date(numbers.Between(2019, 2024), numbers.Between(0, 335), numbers);
  if (numbers.Between(0, 3) > 0) route.loaded = Date(2025, numbers.Between(0, 335), numbers);
  return route;
}

SampleFiles FilesOf(const Route& route) {
  const std::string id = "R" + std::to_string(route.number);
  const Numbers seed(id);
  SampleFiles files;
  files.push_back({id + ".trk", [=] { return TrackFileText(id, route.name, route.story); }});
  files.push_back({"readme.txt", [=] { return ReadmeText(route.name, route.story); }});
  files.push_back({"TILES\\-01a4b8c0.t", [=] { return TerrainBytes(seed, 900 + route.number % 7 * 1400); }});
  files.push_back({"WORLD\\w-011008+014318.w", [=] { return WorldText(seed, 1200); }});
  const ActivityPlan plan{id, LowerCase(id), {}};
  for (int number = 1; number <= route.activities; ++number)
    for (const auto make : {PathFile, ServiceFile, TrafficFile, ActivityFile})
      files.push_back(make(plan, number));
  return files;
}

/// As an intake lays them out.
std::string StoreOf(const std::string& name, const std::string& zip) {
  const std::string ending = LowerCase(name.substr(name.rfind('.')));
  const auto in = [&](const char* store) { return std::string(store) + "/" + zip; };
  if (ending == ".trk" || ending == ".txt") return in("route_info");
  if (ending == ".act") return in("activities/activities");
  if (ending == ".srv") return in("activities/services");
  if (ending == ".pat") return in("activities/paths");
  return ending == ".trf" ? in("activities/traffic") : "";
}

class Maker {
 public:
  explicit Maker(const std::string& hostApp)
      : routes_(hostApp + "/routes"), data_(hostApp + "/resources/Do_Not_Delete!") {}

  void Make(int count) {
    MakeHostFolder(routes_);
    for (int i = 0; i < kPreviews; ++i)
      previews_.push_back(LandscapePicture("preview " + std::to_string(i), i, 240, 180, PictureFormat::Jpeg));
    for (int i = 0; i < count; ++i) MakeRoute(PlanRoute(i));
    WriteHostFile(data_ + "/routes.ini", catalogue_ + "[Versions]\r\n" + versions_);
    WriteHostFile(data_ + "/scripts.ini", scripts_);
    WriteHostFile(data_ + "/dates.ini", "[Added]\r\n" + added_ + "[Loaded]\r\n" + loaded_);
    WriteHostFile(data_ + "/misc_info/playable.ini", playable_);
  }

 private:
  void MakeRoute(const Route& route) {
    const SampleFiles files = FilesOf(route);
    WriteZip(routes_ + "/" + route.zip + ".qnz", files);
    WriteHostFile(routes_ + "/ts" + route.zip + ".jpg",
                  previews_[static_cast<std::size_t>(route.number * 5) % previews_.size()]);
    SampleFiles stores;
    for (const auto& file : files)
      if (const std::string store = StoreOf(file.name, route.zip); !store.empty())
        stores.push_back({store + "/" + file.name.substr(file.name.rfind('\\') + 1), file.make});
    for (int i = 1; i <= route.saves; ++i)
      stores.push_back(
          {"Saves/" + route.zip + "/evening" + std::to_string(i) + ".sav", [] { return "saved"; }});
    WriteTree(routes_, stores);
    Enter(route);
  }

  void Enter(const Route& route) {
    const auto section = [](const std::string& name, const std::string& lines) {
      return "[" + name + "]\r\n" + lines;
    };
    catalogue_ +=
        section(route.name, "Zip=" + route.zip + "\r\n") + section(route.zip, "Name=" + route.name + "\r\n");
    versions_ += route.name + "=1\r\n";
    scripts_ += section(route.zip, "Script=" + route.name + "\r\n");
    added_ += route.zip + "=" + route.added + "\r\n";
    if (!route.loaded.empty()) loaded_ += route.zip + "=" + route.loaded + "\r\n";
    if (route.playable >= 0)
      playable_ += section(route.zip, "Playable=" + std::to_string(route.playable) +
                                          "\r\nOf=" + std::to_string(route.activities) + "\r\n");
  }

  const std::string routes_, data_;
  std::vector<std::string> previews_;
  std::string catalogue_, versions_, scripts_, added_, loaded_, playable_;
};

}  // namespace

void MakeCataloguedRoutes(const std::string& hostApp, int count) { Maker(hostApp).Make(count); }

}  // namespace quillon
