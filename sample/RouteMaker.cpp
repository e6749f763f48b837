#include "sample/RouteMaker.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "core/text/Text.h"
#include "sample/ActivityFiles.h"
#include "sample/FileBytes.h"
#include "sample/FileTexts.h"
#include "sample/Pictures.h"
#include "sample/RollingStock.h"

namespace quillon {
namespace {

enum class Kind {
  Texture,
  Tile,
  Terrain,
  World,
  Shape,
  ShapeDescription,
  Sound,
  SoundScript,
  TrackIndex,
  Environment,
  Path,
  Service,
  Traffic,
  Activity
};

/// Some files of one folder that every round of the route brings.
struct Row {
  Kind kind;
  const char* folder;
  const char* ending;
  int count;        // files a round
  int stride;       // by which a file's number grows a round: rows of one stride have names in common
  int least, most;  // bytes
};

constexpr int kKb = 1024;
constexpr int kTerrainSize = 256 * 256 * 2;

// A round holds every folder of a route. Textures outweigh the rest, as they do in real routes. What an
// activity needs comes before it, so that a last round that is cut short names nothing that is missing.
constexpr std::array<Row, 30> kRound = {{
    {Kind::Tile, "TILES", ".t", 2, 2, 6 * kKb, 10 * kKb},
    {Kind::Terrain, "TILES", "_y.raw", 2, 2, kTerrainSize, kTerrainSize},
    {Kind::Terrain, "TILES", "_e.raw", 1, 2, kTerrainSize / 2, kTerrainSize / 2},
    {Kind::Terrain, "TILES", "_n.raw", 1, 2, kTerrainSize / 2, kTerrainSize / 2},
    {Kind::Tile, "TILES", ".t.bk", 1, 2, 6 * kKb, 10 * kKb},
    {Kind::Tile, "LO_TILES", ".t", 1, 1, 6 * kKb, 10 * kKb},
    {Kind::Terrain, "LO_TILES", "_y.raw", 1, 1, kTerrainSize / 4, kTerrainSize / 4},
    {Kind::World, "WORLD", ".w", 3, 3, 10 * kKb, 150 * kKb},
    {Kind::TrackIndex, "TD", ".td", 1, 1, 2 * kKb, 6 * kKb},
    {Kind::Texture, "TERRTEX", ".ace", 2, 2, 40 * kKb, 350 * kKb},
    {Kind::Texture, "TERRTEX\\SNOW", ".ace", 1, 2, 40 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES", ".ace", 7, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\AUTUMN", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\AUTUMNSNOW", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\NIGHT", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\SNOW", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\SPRING", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\SPRINGSNOW", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\WINTER", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Texture, "TEXTURES\\WINTERSNOW", ".ace", 1, 7, 20 * kKb, 350 * kKb},
    {Kind::Shape, "SHAPES", ".s", 3, 3, 5 * kKb, 100 * kKb},
    {Kind::ShapeDescription, "SHAPES", ".sd", 1, 3, 0, 0},
    {Kind::Sound, "SOUND", ".wav", 1, 1, 50 * kKb, 300 * kKb},
    {Kind::SoundScript, "SOUND", ".sms", 1, 1, 0, 0},
    {Kind::Environment, "ENVFILES", ".env", 1, 1, 0, 0},
    {Kind::Texture, "ENVFILES\\TEXTURES", ".ace", 1, 1, 20 * kKb, 100 * kKb},
    {Kind::Path, "PATHS", ".pat", 1, 1, 0, 0},
    {Kind::Service, "SERVICES", ".srv", 1, 1, 0, 0},
    {Kind::Traffic, "TRAFFIC", ".trf", 1, 1, 0, 0},
    {Kind::Activity, "ACTIVITIES", ".act", 1, 1, 0, 0},
}};

bool BelongsToActivity(Kind kind) {
  return kind == Kind::Path || kind == Kind::Service || kind == Kind::Traffic || kind == Kind::Activity;
}

template <class... Arguments>
std::string Format(const char* format, Arguments... arguments) {
  char text[64];
  const int length = std::snprintf(text, sizeof text, format, arguments...);
  return {text, static_cast<std::size_t>(length)};
}

/// As the game names its files: tiles by a hash of their place, world files by their place, others by a word.
std::string FileName(const RoutePlan& plan, const Row& row, int number) {
  if (row.kind == Kind::Tile || row.kind == Kind::Terrain)
    return Format("-%08x", static_cast<std::uint32_t>(number + 1) * 0x9E3779B1u) + row.ending;
  if (row.kind == Kind::World)
    return Format("w%+07d%+07d", -11008 + number % 64, 14318 + number / 64) + row.ending;
  return plan.stem + Format("%05d", number) + row.ending;
}

std::string Content(Kind kind, const Numbers& numbers, std::size_t size, bool packed,
                    const std::string& word) {
  switch (kind) {
    case Kind::Texture: return TextureBytes(numbers, size, packed);
    case Kind::Terrain: return TerrainBytes(numbers, size);
    case Kind::World: return WorldText(numbers, size);
    case Kind::ShapeDescription: return ShapeDescriptionText(word + ".s");
    case Kind::Sound: return SoundBytes(numbers, size);
    case Kind::SoundScript: return SoundScriptText(word + ".wav");
    case Kind::Environment: return EnvironmentText(numbers);
    default: return ShapeBytes(numbers, size, packed);
  }
}

/// Collects the files of one route.
class RouteMaker {
 public:
  explicit RouteMaker(const RoutePlan& plan) : plan_(plan) {
    if (plan.activities) activityPlan_ = {plan.id, plan.stem, ConsistName()};
  }

  SampleFiles Make() {
    AddOwnFiles();
    AddPictures();
    if (plan_.activities)
      Add("CONSISTS\\" + ConsistName() + ".con", [name = ConsistName()] { return ConsistText(name, 1); });
    for (int round = 0; !Full(); ++round)
      for (const auto& row : kRound) AddRow(row, round);
    return std::move(files_);
  }

 private:
  bool Full() const { return files_.size() >= static_cast<std::size_t>(plan_.files); }
  std::string ConsistName() const { return plan_.stem + "_mixed"; }
  void Add(std::string name, std::function<std::string()> make) {
    files_.push_back({std::move(name), std::move(make)});
  }

  void AddOwnFiles() {
    const RoutePlan& plan = plan_;
    Add(plan.id + ".trk", [plan] { return TrackFileText(plan.id, plan.displayName, plan.description); });
    AddDatabase(".tdb", 300 * kKb);
    AddDatabase(".rdb", 80 * kKb);
    AddDatabase(".tit", 60 * kKb);
    const Numbers numbers(plan.id + ".ref");
    Add(plan.id + ".ref", [numbers] { return ObjectListText(numbers, 20'000); });
    Add("readme.txt", [plan] { return ReadmeText(plan.displayName, plan.description); });
    std::vector<std::string> pictures = {plan.stem + ".jpg"};
    if (plan.manyPictures) pictures.insert(pictures.end(), {plan.stem + "_map.gif", plan.stem + "_view.bmp"});
    Add("readme.htm", [plan, pictures] { return ReadmePage(plan.displayName, plan.description, pictures); });
  }

  void AddDatabase(const char* ending, int size) {
    const std::string name = plan_.id + ending;
    Add(name, [name, bytes = Scaled(size)] { return TrackDatabaseText(Numbers(name), bytes); });
  }

  void AddPictures() {
    AddPicture(".jpg", 240, 180, PictureFormat::Jpeg);
    if (!plan_.manyPictures) return;
    AddPicture("_poster.jpg", 800, 600, PictureFormat::Jpeg);
    AddPicture("_map.gif", 320, 240, PictureFormat::Gif);
    AddPicture("_view.bmp", 360, 270, PictureFormat::Bmp);
  }

  void AddPicture(const char* ending, int width, int height, PictureFormat format) {
    const std::string name = plan_.stem + ending;
    Add(name,
        [=, palette = plan_.palette] { return LandscapePicture(name, palette, width, height, format); });
  }

  void AddRow(const Row& row, int round) {
    if (BelongsToActivity(row.kind) && !plan_.activities) return;
    for (int i = 0; i < row.count && !Full(); ++i) AddOne(row, round * row.stride + i);
  }

  void AddOne(const Row& row, int number) {
    switch (row.kind) {
      case Kind::Path: files_.push_back(PathFile(activityPlan_, number + 1)); break;
      case Kind::Service: files_.push_back(ServiceFile(activityPlan_, number + 1)); break;
      case Kind::Traffic: files_.push_back(TrafficFile(activityPlan_, number + 1)); break;
      case Kind::Activity: files_.push_back(ActivityFile(activityPlan_, number + 1)); break;
      default: AddPlain(row, number);
    }
  }

  void AddPlain(const Row& row, int number) {
    const std::string file = FileName(plan_, row, number);
    const std::string name = std::string(row.folder) + "\\" + file;
    const auto size = Scaled(SizeOf(row));
    // The seed has the route's name, too: world files and tiles of all routes share their names.
    Add(name, [kind = row.kind, seed = plan_.id + name, size, packed = IsPacked(),
               word = CutAtLastDot(file)] { return Content(kind, Numbers(seed), size, packed, word); });
  }

  /// Small files are more frequent than big ones. The shares of any stretch of files lie evenly between 0 and
  /// 1, so that a few files already have the average size of many.
  int SizeOf(const Row& row) {
    if (row.most == row.least) return row.least;
    constexpr double kGoldenRatio = 0.6180339887498949;
    const double share = std::fmod(0.4 + kGoldenRatio * sizesDrawn_++, 1.0);
    return row.least + static_cast<int>((row.most - row.least) * (share + 2 * share * share) / 3);
  }

  /// The game's tools pack more than half of what they make. Any stretch of files has the same share of them.
  bool IsPacked() {
    constexpr double kPackedShare = 0.565, kStep = 0.7548776662466927;
    return std::fmod(kStep * packsDrawn_++, 1.0) < kPackedShare;
  }

  std::size_t Scaled(int size) const {
    return static_cast<std::size_t>(size) * static_cast<std::size_t>(plan_.sizePercent) / 100;
  }

  const RoutePlan& plan_;
  ActivityPlan activityPlan_;
  SampleFiles files_;
  int sizesDrawn_ = 0, packsDrawn_ = 0;
};

}  // namespace

SampleFiles RouteFiles(const RoutePlan& plan) { return RouteMaker(plan).Make(); }

}  // namespace quillon
