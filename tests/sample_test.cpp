// The sample: what it promises to a first try, the tests and the benchmarks.
#include "sample/Sample.h"

#include <algorithm>
#include <regex>
#include <set>

#include "core/archive/ZipFile.h"
#include "core/text/Text.h"
#include "tests/world/HostFiles.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

std::ptrdiff_t CountOf(const NamedTexts& tree, std::string_view part) {
  return std::count_if(tree.begin(), tree.end(),
                       [&](const auto& file) { return Contains(file.first, part); });
}

Strings Found(const std::string& bytes, const char* pattern) {
  const std::string text = DecodeGameText(bytes);
  Strings found;
  const std::regex regex(pattern);
  for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
    found.push_back(LowerCase(ReplaceAll(at->str(1), "\"", "")));
  return found;
}

class SampleTest : public testing::Test, protected TestFolder {
 protected:
  NamedTexts Zip(const std::string& name, const std::string& sample = "first") const {
    return TestProgram::Unzipped(Path(sample + "\\zips\\" + name));
  }
  NamedTexts InnerZip(const std::string& zip, const std::string& name) const {
    Put("inner.zip", Zip(zip).at(name));
    return TestProgram::Unzipped(Path("inner.zip"));
  }
  NamedTexts Files(const std::string& sample) const { return TestProgram::Tree(Path(sample)); }

  const SampleReport report_ = MakeSample(Root() + "/first", 1);
};

TEST_F(SampleTest, TwoRunsGiveTheSameBytes) {
  MakeSample(Root() + "/second", 1);
  EXPECT_TRUE(Files("first") == Files("second"));
}

TEST_F(SampleTest, ScaleMultipliesOnlyThePlainRoute) {
  MakeSample(Root() + "/scaled", 4);
  for (const auto& [sample, scale] : {std::pair("first", 1u), std::pair("scaled", 4u)}) {
    double bytes = 0;
    const NamedTexts tree = Zip("Grosstal Bahn.zip", sample);
    for (const auto& [name, data] : tree) bytes += static_cast<double>(data.size());
    EXPECT_EQ(tree.size(), 55u * scale) << "names are all different";
    EXPECT_NEAR(bytes / scale, 4.9e6, 0.05 * 4.9e6);
    const auto packed = fs::file_size(Host(sample) / "zips" / "Grosstal Bahn.zip");
    EXPECT_NEAR(static_cast<double>(packed) / scale, 2.45e6, 0.25 * 2.45e6);
  }
  EXPECT_TRUE(Zip("coastal_v1.zip", "scaled") == Zip("coastal_v1.zip"));
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
      {"coastal_v2.zip", 1, 1, 0, 0, true},           {"self_extracting_Kestrel.zip", 0, 0, 0, 1, false},
  };
  EXPECT_EQ(report_.zips.size(), kinds.size() + 1);
  for (const auto& kind : kinds) {
    const NamedTexts tree = Zip(kind.zip);
    const std::vector<std::ptrdiff_t> counts = {CountOf(tree, ".trk"), CountOf(tree, ".act"),
                                                CountOf(tree, ".zip"), CountOf(tree, ".exe")};
    EXPECT_EQ(counts, (std::vector{kind.tracks, kind.activities, kind.zips, kind.programs})) << kind.zip;
    EXPECT_EQ(CountOf(tree, "\\tiles\\") > 0, kind.tilesInFolder) << kind.zip;
  }
  EXPECT_THROW(ZipFile(FromPath(Host("first/zips/damaged_download.zip"))), Damage);
  EXPECT_TRUE(Zip("top_level_route.zip").contains("tiles\\-9e3779b1.t"));
  EXPECT_FALSE(OnDisk("first/zips/parts"));
  EXPECT_TRUE(
      InnerZip("zip_in_zip_Hochmoor.zip", "hochmoor.zip").contains("some\\folder\\hochmoor\\hochmoor.trk"));
  const NamedTexts tiles = InnerZip("tiles_beside_Fjordline.zip", "fjord\\tiles.zip");
  EXPECT_TRUE(tiles.contains("-9e3779b1_y.raw") && CountOf(tiles, "\\") == 0);
}

/// Whether what the files below `folder` name is there: services, paths, consists, and the trains in these.
void ExpectWhole(const NamedTexts& tree, const std::string& folder, const NamedTexts& game) {
  const auto expect = [&](const std::string& name) {
    EXPECT_TRUE(tree.contains(folder + name) || game.contains("trains\\" + name)) << folder << name;
  };
  std::set<std::string> trains;  // "file folder", as consists name them, without quotes
  for (const auto& file : game)
    if (const auto& name = file.first; name.ends_with(".eng") || name.ends_with(".wag"))
      trains.insert(CutAtLastDot(FileNameOf(name)) + " " +
                    std::string(FileNameOf(CutBackslash(FolderOf(name)))));
  for (const auto& [name, bytes] : tree) {
    if (!name.starts_with(folder)) continue;
    const bool isActivity = name.ends_with(".act"), isService = name.ends_with(".srv");
    for (const char* pattern :
         {R"(\tPlayer_Service_Definition \( (.+)\r\n)", R"(\tService_Definition \( (.+) \d+\r\n)"}) {
      const auto services = isActivity ? Found(bytes, pattern) : Strings();
      EXPECT_EQ(services.size(), isActivity ? 1u : 0u) << name;
      for (const auto& service : services) expect("services\\" + service + ".srv");
    }
    if (isService) expect("paths\\" + Found(bytes, R"(PathID \( (.+) \)\r\n)").at(0) + ".pat");
    if (isService) expect("consists\\" + Found(bytes, R"(Train_Config \( (.+) \)\r\n)").at(0) + ".con");
    const bool isConsist = name.ends_with(".con");
    for (const auto& train : Found(isConsist ? bytes : "", R"((?:Engine|Wagon)Data \( (.+) \)\r\n)"))
      EXPECT_TRUE(trains.contains(train)) << name << ": " << train;
  }
}

TEST_F(SampleTest, ActivitiesNameOnlyWhatIsThere) {
  const NamedTexts game = Files("first\\game");
  EXPECT_EQ(CountOf(game, ".act"), 12);
  for (const std::string route : {"europe1", "europe2", "japan1", "japan2", "usa1", "usa2"}) {
    ExpectWhole(game, "routes\\" + route + "\\", game);
    EXPECT_TRUE(game.contains("routes\\" + route + "\\" + route + ".trk"));
  }
  ExpectWhole(game, "trains\\", game);
  ExpectWhole(Zip("Grosstal Bahn.zip"), "grosstal\\", game);
  ExpectWhole(Zip("Mühlenbach & Söhne Kleinbahn.zip"), "mühlenbach söhne\\", game);
}

TEST_F(SampleTest, NothingOfAUsersIsOverwritten) {
  fs::create_directories(Host("used/game"));
  Put("used/zips/mine.zip", "mine");
  EXPECT_EQ(ErrorOf([&] { MakeSample(Root() + "/used", 1); }).first, 75);
  EXPECT_EQ(Files("used"), (NamedTexts{{"zips\\mine.zip", "mine"}}));
  EXPECT_NE(ErrorOf([&] { MakeSample(Root() + "/none", 0); }).first, 0);
}

}  // namespace
}  // namespace quillon
