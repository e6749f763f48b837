// The sample: what it promises to a first try, the tests and the benchmarks.
#include "sample/Sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <regex>
#include <set>

#include "core/RunTimeError.h"
#include "core/Text.h"
#include "core/archive/ZipFile.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Tree = std::map<std::string, std::string>;  // lower-case name, with backslashes, and bytes

Tree ReadTree(const fs::path& folder) {
  Tree tree;
  for (const auto& item : fs::recursive_directory_iterator(folder)) {
    if (!item.is_regular_file()) continue;
    std::ifstream file(item.path(), std::ios::binary);
    const std::string name = ReplaceAll(item.path().lexically_relative(folder).string(), "/", "\\");
    tree[LowerCase(name)] = {std::istreambuf_iterator<char>(file), {}};
  }
  return tree;
}

Tree ReadZip(const fs::path& path) {
  Tree tree;
  ZipFile zip(path.string());
  for (std::size_t i = 0; i < zip.Entries().size(); ++i)
    zip.Unpack(i, [&](std::string_view bytes) { tree[LowerCase(zip.Entries()[i].name)].append(bytes); });
  return tree;
}

std::ptrdiff_t CountOf(const Tree& tree, std::string_view part) {
  return std::count_if(tree.begin(), tree.end(),
                       [&](const auto& file) { return Contains(file.first, part); });
}

std::vector<std::string> Found(const std::string& bytes, const char* pattern) {
  const std::string text = DecodeGameText(bytes);
  std::vector<std::string> found;
  const std::regex regex(pattern);
  for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
    found.push_back(LowerCase(ReplaceAll(at->str(1), "\"", "")));
  return found;
}

class SampleTest : public testing::Test {
 protected:
  // Of this process alone: tests may run beside each other.
  static fs::path MakeFolder(const char* name) {
    static const std::string own = "quillon_sample_" + std::to_string(std::random_device{}());
    return fs::path(testing::TempDir()) / own / name;
  }

  // Made once: the tests only read it.
  static void SetUpTestSuite() { report_ = MakeSample((folder_ = MakeFolder("first")).string(), 1); }
  static void TearDownTestSuite() { fs::remove_all(folder_.parent_path()); }

  static Tree Zip(const std::string& name) { return ReadZip(folder_ / "zips" / name); }

  static inline fs::path folder_;
  static inline SampleReport report_;
};

TEST_F(SampleTest, TwoRunsGiveTheSameBytes) {
  const fs::path second = MakeFolder("second");
  MakeSample(second.string(), 1);
  EXPECT_TRUE(ReadTree(folder_) == ReadTree(second));
}

TEST_F(SampleTest, ScaleMultipliesOnlyThePlainRoute) {
  const fs::path folder = MakeFolder("scaled");
  MakeSample(folder.string(), 4);
  for (const int scale : {1, 4}) {
    const fs::path path = (scale == 1 ? folder_ : folder) / "zips" / "Grosstal Bahn.zip";
    double bytes = 0;
    const Tree tree = ReadZip(path);
    for (const auto& [name, data] : tree) bytes += static_cast<double>(data.size());
    EXPECT_EQ(tree.size(), 55u * static_cast<unsigned>(scale)) << "names are all different";
    EXPECT_NEAR(bytes / scale, 4.9e6, 0.05 * 4.9e6);
    EXPECT_NEAR(static_cast<double>(fs::file_size(path)) / scale, 2.45e6, 0.25 * 2.45e6);
  }
  EXPECT_TRUE(ReadZip(folder / "zips" / "coastal_v1.zip") == Zip("coastal_v1.zip"));
}

TEST_F(SampleTest, ZipsAreOfTheKindsThatIntakeTellsApart) {
  struct Kind {
    std::string zip;
    std::ptrdiff_t tracks, activities, zips, programs;
    bool tilesInFolder;
  };
  const std::vector<Kind> kinds = {
      {"Grosstal Bahn.zip", 1, 1, 0, 0, true},        {"Mühlenbach & Söhne Kleinbahn.zip", 1, 1, 0, 0, true},
      {"top_level_route.zip", 1, 1, 0, 0, false},     {"no_activities.zip", 1, 0, 0, 0, true},
      {"zip_in_zip_Hochmoor.zip", 0, 0, 1, 0, false}, {"tiles_beside_Fjordline.zip", 1, 1, 1, 0, false},
      {"snow_patch.zip", 0, 0, 0, 0, false},          {"installer_route.zip", 0, 0, 0, 1, false},
      {"two_parts.zip", 0, 0, 2, 0, false},           {"coastal_v1.zip", 1, 1, 0, 0, true},
      {"coastal_v2.zip", 1, 1, 0, 0, true},
  };
  EXPECT_EQ(report_.zips.size(), kinds.size() + 1);
  for (const auto& kind : kinds) {
    const Tree tree = Zip(kind.zip);
    EXPECT_EQ(CountOf(tree, ".trk"), kind.tracks) << kind.zip;
    EXPECT_EQ(CountOf(tree, ".act"), kind.activities) << kind.zip;
    EXPECT_EQ(CountOf(tree, ".zip"), kind.zips) << kind.zip;
    EXPECT_EQ(CountOf(tree, ".exe"), kind.programs) << kind.zip;
    EXPECT_EQ(CountOf(tree, "\\tiles\\") > 0, kind.tilesInFolder) << kind.zip;
  }
  EXPECT_THROW(Zip("damaged_download.zip"), Damage);
  EXPECT_TRUE(Zip("top_level_route.zip").contains("tiles\\-9e3779b1.t"));
  EXPECT_FALSE(fs::exists(folder_ / "zips" / "parts"));
}

TEST_F(SampleTest, InnerZipsHoldTheRoute) {
  const fs::path inner = folder_ / "inner.zip";
  const auto open = [&](const char* zip, const char* name) {
    std::ofstream(inner, std::ios::binary) << Zip(zip).at(name);
    return ReadZip(inner);
  };
  EXPECT_TRUE(
      open("zip_in_zip_Hochmoor.zip", "hochmoor.zip").contains("some\\folder\\hochmoor\\hochmoor.trk"));
  const Tree tiles = open("tiles_beside_Fjordline.zip", "fjord\\tiles.zip");
  EXPECT_TRUE(tiles.contains("-9e3779b1_y.raw"));
  EXPECT_EQ(CountOf(tiles, "\\"), 0);
  fs::remove(inner);
}

// "file folder" of each train, as consists name it, without quotes.
std::set<std::string> TrainsOf(const Tree& game) {
  std::set<std::string> trains;
  for (const auto& [name, bytes] : game) {
    if (!name.ends_with(".eng") && !name.ends_with(".wag")) continue;
    const std::string folder = CutBackslash(FolderOf(name));
    trains.insert(CutAtLastDot(FileNameOf(name)) + " " + std::string(FileNameOf(folder)));
  }
  return trains;
}

std::string Expect(const Tree& tree, const std::string& name) {
  const auto found = tree.find(name);
  EXPECT_TRUE(found != tree.end()) << name;
  return found == tree.end() ? std::string() : found->second;
}

// A service's path, its consist, and the trains in it.
void ExpectWholeService(const Tree& route, const Tree& game, const std::string& folder,
                        const std::string& name) {
  const std::string service = Expect(route, folder + "services\\" + name + ".srv");
  Expect(route, folder + "paths\\" + Found(service, R"(PathID \( (.+) \)\r\n)").at(0) + ".pat");
  const std::string consist = Found(service, R"(Train_Config \( (.+) \)\r\n)").at(0) + ".con";
  const std::string own = folder + "consists\\" + consist;
  const auto installed = TrainsOf(game);
  const std::string trains =
      route.contains(own) ? route.at(own) : Expect(game, "trains\\consists\\" + consist);
  for (const auto& train : Found(trains, R"((?:Engine|Wagon)Data \( (.+) \)\r\n)"))
    EXPECT_TRUE(installed.contains(train)) << consist << ": " << train;
}

void ExpectWholeActivities(const Tree& route, const Tree& game, const std::string& folder) {
  for (const auto& [name, activity] : route) {
    if (!name.starts_with(folder) || !name.ends_with(".act")) continue;
    const auto player = Found(activity, R"(\tPlayer_Service_Definition \( (.+)\r\n)");
    const auto others = Found(activity, R"(\tService_Definition \( (.+) \d+\r\n)");
    EXPECT_TRUE(player.size() == 1 && others.size() == 1) << name;
    for (const auto& services : {player, others})
      for (const auto& service : services) ExpectWholeService(route, game, folder, service);
  }
}

TEST_F(SampleTest, ActivitiesNameOnlyWhatIsThere) {
  const Tree game = ReadTree(folder_ / "game");
  EXPECT_EQ(CountOf(game, ".act"), 12);
  for (const char* route : {"europe1", "europe2", "japan1", "japan2", "usa1", "usa2"}) {
    ExpectWholeActivities(game, game, std::string("routes\\") + route + "\\");
    EXPECT_TRUE(game.contains(std::string("routes\\") + route + "\\" + route + ".trk"));
  }
  ExpectWholeActivities(Zip("Grosstal Bahn.zip"), game, "grosstal\\");
  ExpectWholeActivities(Zip("Mühlenbach & Söhne Kleinbahn.zip"), game, "mühlenbach söhne\\");
}

TEST_F(SampleTest, NothingOfAUsersIsOverwritten) {
  const fs::path folder = MakeFolder("used");
  fs::create_directories(folder / "game");
  fs::create_directories(folder / "zips");
  std::ofstream(folder / "zips" / "mine.zip") << "mine";
  try {
    MakeSample(folder.string(), 1);
    FAIL() << "a folder in use was taken";
  } catch (const RunTimeError& error) {
    EXPECT_EQ(error.number(), 75);
  }
  EXPECT_TRUE(ReadTree(folder) == (Tree{{"zips\\mine.zip", "mine"}}));
  EXPECT_THROW(MakeSample(MakeFolder("none").string(), 0), RunTimeError);
}

}  // namespace
}  // namespace quillon
