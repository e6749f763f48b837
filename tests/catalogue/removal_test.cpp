// The end of a route's life: removal, and Make permanent.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class RemovalTest : public ProgramTest {
 protected:
  RemovalTest() {
    EXPECT_EQ(FirstRun(), 0);
    for (const std::string name : {"Foo", "Bar (2)"}) {
      const std::string zip = name.substr(0, 3);
      StoreRoute(zip, name, RouteEntries(name));
      for (const std::string folder : {"Saves", "consists", "custom", "route_info", "route_pics",
                                       "activities\\paths", "activities\\services", "activities\\traffic"})
        Write(AppPath("routes\\" + folder + "\\" + zip + "\\file"), "of " + zip);
      Write(AppPath("routes\\terrain_cache\\" + zip + ".qnc"), "cache");
      Write(AppPath("original_zips\\Installed\\" + zip + ".zip"), "original");
    }
    options.answerYes = true;
  }

  /// All files of the store with this zip name in their path.
  Strings FilesOf(const std::string& zip) const {
    Strings files;
    for (const auto& [name, bytes] : Tree(AppPath("routes")))
      if (Contains(name, LowerCase(zip))) files.push_back(name);
    return files;
  }
};

TEST_F(RemovalTest, TakesAllThatIsTheRoutesAndNothingElse) {
  const auto bar = FilesOf("bar");
  ASSERT_EQ(Run("pick", "Foo"), 0);
  ASSERT_EQ(Run("remove", "Foo"), 0);
  EXPECT_EQ(BoxTexts(), (Strings{"Are you sure you want to completely remove Foo from Quillon?",
                                 "Foo has been removed from Quillon."}));
  EXPECT_EQ(FilesOf("foo"), Strings());
  EXPECT_EQ(FilesOf("bar"), bar);
  EXPECT_TRUE(Exists(AppPath("original_zips\\Installed\\Foo.zip")));
  EXPECT_EQ(Current({"Temp", "Zip"}), "No Data!|No Data!");
  EXPECT_EQ(Ini("routes.ini", "Foo", "Zip"), kMissing);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(Texts("row"), Strings{"Bar (2)"});
}

TEST_F(RemovalTest, NoKeepsTheRoute) {
  options.answerYes = false;
  const auto store = Tree(AppPath("routes"));
  EXPECT_EQ(Run("remove", "Foo"), 3);
  EXPECT_EQ(Tree(AppPath("routes")), store);
}

TEST_F(RemovalTest, TheLoadedRouteIsNotRemovedNorAnotherMadePermanent) {
  ASSERT_EQ(Run("load", "Foo"), 0);
  const auto store = Tree(AppPath("routes"));
  EXPECT_EQ(Run("remove", "Foo"), 3);
  EXPECT_EQ(Run("permanent", "Bar (2)"), 3);
  EXPECT_EQ(Run("remove", "Nowhere"), 3);
  EXPECT_EQ(Tree(AppPath("routes")), store);
}

TEST_F(RemovalTest, ARouteIsMadePermanentUnderItsZipName) {
  ASSERT_EQ(Run("load", "Bar (2)"), 0) << Last("error");
  Play("ts-bak-left.s");
  Write(GamePath("ROUTES\\Bar\\mine.txt"), "another route of that name");
  Write(GamePath("SAVES\\Quillon-route\\mine.sav"), "");
  ASSERT_EQ(Run("permanent", "Bar (2)"), 0) << Last("error");
  EXPECT_EQ(BoxTexts().back(),
            "Bar  has been permanently installed into Train Simulator and removed from Quillon.");
  Strings made;
  for (const auto& name : Names(GamePath("ROUTES")))
    if (name.starts_with("bar ")) made.push_back(name);
  ASSERT_EQ(made.size(), 1u) << "a number tells it from the one that was there";
  const auto route = Tree(GamePath("ROUTES\\" + CutBackslash(made[0])));
  EXPECT_TRUE(route.contains("tsbar.jpg"));
  EXPECT_FALSE(route.contains("ts-bak-left.s"));
  EXPECT_EQ(ReadBytes(GamePath("ROUTES\\Bar\\mine.txt")), "another route of that name");
  EXPECT_TRUE(Exists(WorkingPath("Shapes")) && Names(GamePath("SAVES\\Quillon-route")).empty());
  EXPECT_EQ(FilesOf("bar"), Strings());
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(RemovalTest, AnEntryThatNamesNoZipCostsNoOtherRoute) {
  SetIni("routes.ini", "Foo", "Zip", "");
  const auto store = FilesOf("bar");
  Run("remove", "Foo");
  EXPECT_EQ(FilesOf("bar"), store);
}

}  // namespace
}  // namespace quillon
