#include <gtest/gtest.h>

#include <filesystem>

#include "core/Installation.h"
#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

const std::vector<ZipEntry> kValley = {{.name = "V/World/w.w", .data = "world"},
                                       {.name = "V/forest.dat", .data = "forest of the route"}};

class CleanUpTest : public testing::Test {
 protected:
  std::string Misc(const std::string& name) const {
    return program_.AppPath("resources\\Do_Not_Delete!\\misc_info\\" + name);
  }
  std::string List(const std::string& name) const {
    return program_.ReadBytes(program_.AppPath("resources\\Do_Not_Delete!\\" + name));
  }
  std::map<std::string, std::string> Working() const { return program_.Tree(program_.WorkingPath("")); }
  Strings Shown() const { return program_.Texts("show", "screen"); }
  void FirstRunWithValley() {
    ASSERT_EQ(program_.FirstRun(), 0);
    program_.StoreRoute("valley", "Valley Line", kValley);
    ASSERT_EQ(program_.Run("load", "Valley Line"), 0);
  }

  TestProgram program_;
};

TEST_F(CleanUpTest, TheFirstRunMakesTheWorkingRoute) {
  program_.Write(Misc("copyfiles.tsl"),
                 "Routes\\USA1\\SHAPES\\USA1.s\r\n\r\nRoutes\\JAPAN2\\TERRTEX\\SNOW\\grass.ace\r\n"
                 "TEMPLATE\\none.dat\r\nRoutes\\EUROPE1\\ssource.dat");
  program_.Write(program_.GamePath("TEMPLATE\\sub\\never.dat"), "never");
  program_.Write(program_.GamePath("GLOBAL\\SHAPES\\sub\\never.s"), "never");
  EXPECT_EQ(program_.FirstRun(), 0);
  EXPECT_EQ(Shown(), (Strings{"frmMain", "frmWelcome", "frmCleanUp"}));

  const std::map<std::string, std::string> expected = {
      {"forest.dat", "template forest"},    {"sigcfg.dat", "template signals"},
      {"shapes\\signal.s", "global shape"}, {"textures\\signal.ace", "global texture"},
      {"shapes\\usa1.s", "shape of USA1"},  {"terrtex\\snow\\grass.ace", "snow of Japan2"},
      {"ssource.dat", "sounds of Europe1"}};
  EXPECT_EQ(Working(), expected);
  EXPECT_TRUE(program_.Exists(program_.GamePath("Routes\\USA1\\SHAPES\\USA1.s")));
  const auto state = program_.State(program_.WorkingPath(""));
  EXPECT_EQ(state.size(), expected.size() + 25);
  for (const std::string folder :
       {"ACTIVITIES", "Extras", "LO_TILES", "TERRTEX/SNOW", "TEXTURES/WINTERSNOW", "WORLD"})
    EXPECT_TRUE(state.contains(folder)) << folder;
  EXPECT_EQ(program_.Ini("routes.ini", "Current", "Loaded"), "No Data!");
}

TEST_F(CleanUpTest, TellsWhatItDoes) {
  program_.FirstRun();
  EXPECT_EQ(program_.Captions("frmCleanUp"), (Strings{"Optimizing route space...", "Finished!"}));
  EXPECT_EQ(program_.Texts("text", "text", "frmCleanUp"),
            Strings{"Quillon is now setting up its default files.\r\nThis may take a few minutes..."});
  EXPECT_EQ(program_.Last("bar")["value"], 5440);
  EXPECT_EQ(program_.Last("bar")["maximum"], 5440);
  EXPECT_EQ(program_.Last("colour")["colour"], 49152);
  // A visit to the route manager lets one process clean up again.
  program_.Write(program_.WorkingPath("junk.s"), "junk");
  EXPECT_EQ(program_.Script("clean\nclean\n"), 0);
  EXPECT_FALSE(program_.Exists(program_.WorkingPath("junk.s")));
  EXPECT_EQ(program_.Last("bar")["maximum"], 5440);
}

TEST_F(CleanUpTest, RebuildsWhateverStandsThere) {
  FirstRunWithValley();
  const fs::path outside = fs::path(program_.Root()) / "outside";
  program_.Write(outside.string() + "/kept.s", "kept");
  fs::create_directory_symlink(outside, program_.WorkingPath("Shapes") + "/link");
  program_.Write(program_.WorkingPath("shapes\\junk\\fixed.s"), "junk");
  fs::permissions(program_.WorkingPath("shapes\\junk\\fixed.s"), fs::perms(0444));
  program_.Write(program_.WorkingPath("paths\\own.pat"), "lost");
  program_.Write(program_.AppPath("routes\\Saves\\valley\\stale.sav"), "stale");
  for (const std::string name : {"a.sav", "b.txt"})
    program_.Write(program_.GamePath("SAVES\\Quillon-route\\" + name), name);
  const auto store = program_.State(program_.AppPath("routes\\activities"));

  EXPECT_EQ(program_.Run("clean"), 0);
  EXPECT_EQ(program_.Captions("frmCleanUp").back(), "Finished!");
  const auto rebuilt = Working();
  EXPECT_FALSE(rebuilt.contains("shapes\\junk\\fixed.s") || rebuilt.contains("world\\w.w"));
  EXPECT_FALSE(rebuilt.contains("ts-bak-forest.dat") || rebuilt.contains("paths\\own.pat"));
  EXPECT_EQ(rebuilt.at("forest.dat"), "template forest");
  EXPECT_EQ(program_.ReadBytes(outside.string() + "/kept.s"), "kept");
  EXPECT_EQ(program_.Names(program_.AppPath("routes\\Saves\\valley")), Strings{"a.sav"});
  EXPECT_EQ(program_.State(program_.AppPath("routes\\activities")), store);
  EXPECT_EQ(List("current.tsl"), program_.ReadBytes(Misc("current.tsl")));
  EXPECT_EQ(List("default.tsl"), program_.ReadBytes(Misc("default.tsl")));
  EXPECT_EQ(program_.Ini("routes.ini", "Current", "Loaded"), "No Data!");
  EXPECT_EQ(program_.Names(program_.GamePath("Quillon_Extras\\EnvFiles")).size(),
            program_.Names(Misc("env_defaults\\EnvFiles")).size() + 1);  // with the folder of its textures

  EXPECT_EQ(program_.Run("load", "Valley Line"), 0);
  EXPECT_EQ(program_.Names(program_.GamePath("SAVES\\Quillon-route")), Strings{"a.sav"});
}

TEST_F(CleanUpTest, TheWelcomesSecondCleanUpOfAProcessOnlyFinishes) {
  program_.options.welcomeOk = true;
  program_.KeepSession();
  EXPECT_EQ(program_.Run("start"), 0);
  program_.StoreRoute("valley", "Valley Line", kValley);
  EXPECT_EQ(program_.Run("pick", "Valley Line"), 0);
  program_.Remove(program_.WorkingPath("Shapes"));
  EXPECT_EQ(program_.Run("load"), 3);
  EXPECT_EQ(program_.Captions("frmCleanUp"), (Strings{"Optimizing route space...", "Finished!"}));
  EXPECT_FALSE(program_.Exists(program_.WorkingPath("Shapes")));
  program_.EndSession();
  EXPECT_EQ(program_.Run("start"), 0);
  EXPECT_TRUE(program_.Exists(program_.WorkingPath("Shapes")));
}

TEST_F(CleanUpTest, MissingMastersAreMissedBeforeTheFirstChange) {
  FirstRunWithValley();
  for (const std::string master : {"copyfiles.tsl", "current.tsl", "default.tsl"}) {
    const std::string bytes = program_.ReadBytes(Misc(master));
    program_.Remove(Misc(master));
    const auto before = program_.State(program_.Root());
    EXPECT_EQ(program_.Run("clean"), 1);
    EXPECT_EQ(program_.LastError(), 53);
    EXPECT_TRUE(EqualNoCase(program_.LastErrorPath(),
                            program_.App() + "\\resources\\Do_Not_Delete!\\misc_info\\" + master));
    EXPECT_EQ(program_.State(program_.Root()), before) << master;
    program_.Write(Misc(master), bytes);
  }
}

TEST_F(CleanUpTest, ACatalogueGapIsMendedByANewIntake) {
  ASSERT_EQ(program_.FirstRun(), 0);
  ASSERT_EQ(program_.AddRoute("valley.zip", "Valley Line"), 0);
  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\routes.ini"));
  EXPECT_EQ(program_.Script("routes\nclean\nroutes\n"), 0);
  EXPECT_EQ(program_.Texts("row"), (Strings{"There has been an error.  Please run Cleanup.", "Valley Line"}));
  EXPECT_EQ(program_.Texts("row", "zip"), (Strings{"No Data!", "valley"}));
  // The steps run inside the intake, and then once more.
  EXPECT_EQ(program_.Captions("frmCleanUp"),
            (Strings{"Optimizing route space...", "Optimizing route space...", "Finished!", "Finished!"}));
  EXPECT_TRUE(
      Contains(testing::PrintToString(program_.Captions("frmInitProg")), "Finished adding 1 new route."));
  EXPECT_TRUE(program_.Names(program_.AppPath("downloaded_routes")).empty());
  EXPECT_EQ(program_.Names(program_.AppPath("original_zips\\Installed")),
            (Strings{"installed_info.html", "valley.zip"}));
  EXPECT_EQ(program_.Run("load", "Valley Line"), 0);
}

TEST_F(CleanUpTest, AGapWithoutOriginalsLeadsThroughTheIntakeAllTheSame) {
  FirstRunWithValley();
  program_.Write(program_.WorkingPath("junk.s"), "junk");
  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\routes.ini"));
  EXPECT_EQ(program_.Script("routes\nclean\nroutes\n"), 0);
  EXPECT_EQ(program_.Captions("frmCleanUp").size(), 4u);
  EXPECT_EQ(program_.Texts("row"), Strings(2, "There has been an error.  Please run Cleanup."));
  EXPECT_FALSE(program_.Exists(program_.WorkingPath("junk.s")));
}

}  // namespace
}  // namespace quillon
