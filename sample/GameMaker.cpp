#include "sample/GameMaker.h"

#include <array>
#include <utility>

#include "core/text/Text.h"
#include "sample/ActivityFiles.h"
#include "sample/FileBytes.h"
#include "sample/FileTexts.h"
#include "sample/HostFiles.h"
#include "sample/RollingStock.h"
#include "sample/SampleFile.h"

namespace quillon {
namespace {

struct DefaultRoute {
  const char* folder;
  const char* displayName;
};
constexpr std::array<DefaultRoute, 6> kRoutes = {{
    {"Europe1", "Northern Lakes"},
    {"Europe2", "Alpine Pass"},
    {"Japan1", "City Loop"},
    {"Japan2", "Island Valley"},
    {"USA1", "Prairie and Ridge"},
    {"USA2", "Eastern Corridor"},
}};

// What every default route has under the same name, each with content of its own. "*" stands for the route's
// name.
constexpr std::array kRouteFiles = {
    "*.tdb",
    "*.rdb",
    "*.rit",
    "*.tit",
    "*.ref",
    "*.hor",
    "*.mkr",
    "sigcfg.dat",
    "sigscr.dat",
    "speedpost.dat",
    "ttype.dat",
    "forests.dat",
    "carspawn.dat",
    "load.ace",
    "graphic.ace",
    "ENVFILES\\sun.env",
    "ENVFILES\\snow.env",
    "ENVFILES\\TEXTURES\\waterbot.ace",
    "ENVFILES\\TEXTURES\\clouds.ace",
    "SHAPES\\Platform.s",
    "SHAPES\\Platform.sd",
    "SHAPES\\Lamp.s",
    "SHAPES\\*Depot.s",
    "SHAPES\\*Depot.sd",
    "SOUND\\bell.wav",
    "SOUND\\bell.sms",
    "SOUND\\*station.sms",
    "TERRTEX\\grass.ace",
    "TERRTEX\\*field.ace",
    "TERRTEX\\SNOW\\grass.ace",
    "TEXTURES\\Platform.ace",
    "TEXTURES\\*Depot.ace",
    "TEXTURES\\AUTUMN\\Spruce.ace",
    "TEXTURES\\AUTUMNSNOW\\Spruce.ace",
    "TEXTURES\\NIGHT\\Platform.ace",
    "TEXTURES\\SNOW\\Platform.ace",
    "TEXTURES\\SPRING\\Spruce.ace",
    "TEXTURES\\SPRINGSNOW\\Spruce.ace",
    "TEXTURES\\WINTER\\Spruce.ace",
    "TEXTURES\\WINTERSNOW\\Spruce.ace",
    "TILES\\-01a4b8c0.t",
    "TILES\\-01a4b8c0_y.raw",
    "LO_TILES\\-01a4.t",
    "TD\\td_idx.dat",
    "WORLD\\w-011008+014318.w",
};

// What a route gets when an editor starts it; some of it stands in the default routes, too.
constexpr std::array kTemplateFiles = {
    "sigcfg.dat",
    "sigscr.dat",
    "speedpost.dat",
    "ttype.dat",
    "forests.dat",
    "carspawn.dat",
    "gantry.dat",
    "ENVFILES\\sun.env",
    "ENVFILES\\rain.env",
    "ENVFILES\\TEXTURES\\waterbot.ace",
    "SOUND\\bell.wav",
    "SOUND\\crossing.sms",
    "SHAPES\\milepost.s",
    "TERRTEX\\terrain.ace",
    "TERRTEX\\SNOW\\terrain.ace",
    "TEXTURES\\milepost.ace",
    "TEXTURES\\SNOW\\milepost.ace",
};

constexpr std::array kGlobalFiles = {
    "SHAPES\\a1t100mStrt.s", "SHAPES\\a1t100mStrt.sd", "SHAPES\\a1t250mStrt.s", "SHAPES\\a1t500r10d.s",
    "SHAPES\\a2t100mStrt.s", "SHAPES\\marker.s",       "SHAPES\\marker.sd",     "TEXTURES\\ballast.ace",
    "TEXTURES\\marker.ace",  "TEXTURES\\rail.ace",     "TEXTURES\\sleeper.ace", "TEXTURES\\tunnel.ace",
    "tsection.dat",
};

// The track's look, which downloaded routes get from this one route.
constexpr std::array kTrackTextures = {"ACleanTrack1.ace", "ACleanTrack2.ace", "ACleanTrackBase.ace",
                                       "ATrackTunFloor.ace", "ATrackTunWall.ace"};

bool EndsIn(std::string_view name, std::initializer_list<const char*> endings) {
  for (const char* ending : endings)
    if (name.ends_with(ending)) return true;
  return false;
}

std::string Content(const std::string& name) {
  Numbers numbers(name);
  const auto size = static_cast<std::size_t>(numbers.Between(1500, 18000));
  if (name.ends_with(".ace")) return TextureBytes(numbers, size);
  if (name.ends_with(".raw")) return TerrainBytes(numbers, size);
  if (name.ends_with(".wav")) return SoundBytes(numbers, size);
  if (name.ends_with(".w")) return WorldText(numbers, size);
  if (name.ends_with(".env")) return EnvironmentText(numbers);
  if (name.ends_with(".sd")) return ShapeDescriptionText(CutAtLastDot(FileNameOf(name)) + ".s");
  if (name.ends_with(".sms")) return SoundScriptText("bell.wav");
  if (EndsIn(name, {".tdb", ".rdb", ".rit", ".tit"})) return TrackDatabaseText(numbers, size);
  if (EndsIn(name, {".ref", ".hor", ".mkr", ".dat"})) return ObjectListText(numbers, size);
  return ShapeBytes(numbers, size);
}

void Add(SampleFiles& files, const std::string& name) {
  files.push_back({name, [name] { return Content(name); }});
}

void AddActivities(SampleFiles& files, const std::string& folder, const std::string& routeId) {
  const ActivityPlan plan{routeId, LowerCase(routeId), {}};
  SampleFiles own;
  for (int number = 1; number <= 2; ++number)
    for (const auto make : {PathFile, ServiceFile, TrafficFile, ActivityFile})
      own.push_back(make(plan, number));
  for (auto& file : Below(folder, std::move(own))) files.push_back(std::move(file));
}

void AddRoute(SampleFiles& files, const DefaultRoute& route) {
  const std::string id = route.folder, folder = "ROUTES\\" + id + "\\";
  files.push_back({folder + LowerCase(id) + ".trk", [id, name = std::string(route.displayName)] {
                     return TrackFileText(UpperCase(id), name, "A route that comes with the game.");
                   }});
  for (const char* name : kRouteFiles) Add(files, folder + ReplaceAll(name, "*", LowerCase(id)));
  AddActivities(files, folder, UpperCase(id));
}

}  // namespace

void MakeGame(const std::string& hostFolder) {
  SampleFiles files = {{"train.exe", [] { return "This stands in for the game's program.\r\n"; }}};
  for (const char* name : kTemplateFiles) Add(files, std::string("TEMPLATE\\") + name);
  for (const auto& route : kRoutes) AddRoute(files, route);
  for (const char* name : kTrackTextures) {
    Add(files, std::string("ROUTES\\USA1\\TEXTURES\\") + name);
    Add(files, std::string("ROUTES\\USA1\\TEXTURES\\SNOW\\") + name);
  }
  Add(files, "ROUTES\\Europe2\\TERRTEX\\SNOW\\oegenfield3.ace");
  for (const char* name : kGlobalFiles) Add(files, std::string("GLOBAL\\") + name);
  for (const char* name : {"bell.wav", "engine.wav", "horn.wav", "engine.sms"})
    Add(files, std::string("SOUND\\") + name);
  for (auto& file : TrainFiles()) files.push_back(std::move(file));
  WriteTree(hostFolder, files);
  MakeHostFolder(hostFolder + "/SAVES");
}

}  // namespace quillon
