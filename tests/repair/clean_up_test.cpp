// The clean-up: the working route made anew, and a catalogue with gaps mended.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class CleanUpTest : public ProgramTest {
 protected:
  std::string Misc(const std::string& name) const { return DataPath("misc_info\\" + name); }
  void StoreValley() const {
    StoreRoute("valley", "Valley Line",
               {Entry("V/World/w.w", "world"), Entry("V/forest.dat", "forest of the route")});
  }
  void FirstRunWithValley() {
    ASSERT_EQ(FirstRun(), 0);
    StoreValley();
    ASSERT_EQ(Run("load", "Valley Line"), 0);
  }
};

TEST_F(CleanUpTest, TheFirstRunMakesTheWorkingRoute) {
  Write(Misc("copyfiles.tsl"),
        "Routes\\USA1\\SHAPES\\USA1.s\r\n\r\nRoutes\\JAPAN2\\TERRTEX\\SNOW\\grass.ace\r\n"
        "TEMPLATE\\none.dat\r\nRoutes\\EUROPE1\\ssource.dat");
  Write(GamePath("TEMPLATE\\sub\\never.dat"), "never");
  Write(GamePath("GLOBAL\\SHAPES\\sub\\never.s"), "never");
  EXPECT_EQ(FirstRun(), 0);
  EXPECT_EQ(Texts("show", "screen"), (Strings{"frmMain", "frmWelcome", "frmCleanUp"}));
  const NamedTexts expected = {
      {"forest.dat", "template forest"},    {"sigcfg.dat", "template signals"},
      {"shapes\\signal.s", "global shape"}, {"textures\\signal.ace", "global texture"},
      {"shapes\\usa1.s", "shape of USA1"},  {"terrtex\\snow\\grass.ace", "snow of Japan2"},
      {"ssource.dat", "sounds of Europe1"}};
  EXPECT_EQ(Tree(WorkingPath("")), expected);
  EXPECT_TRUE(Exists(GamePath("Routes\\USA1\\SHAPES\\USA1.s")));
  const auto state = State(WorkingPath(""));
  EXPECT_EQ(state.size(), expected.size() + 25);
  for (const std::string folder : {"ACTIVITIES", "Extras", "LO_TILES", "TEXTURES/WINTERSNOW", "WORLD"})
    EXPECT_TRUE(state.contains(folder)) << folder;
  EXPECT_EQ(Loaded(), "No Data!");

  EXPECT_EQ(Captions("frmCleanUp"), (Strings{"Optimizing route space...", "Finished!"}));
  EXPECT_EQ(Texts("text", "text", "frmCleanUp"),
            Strings{"Quillon is now setting up its default files.\r\nThis may take a few minutes..."});
  EXPECT_TRUE(Last("bar")["value"] == 5440 && Last("bar")["maximum"] == 5440) << Last("bar");
  EXPECT_EQ(Last("colour")["colour"], 49152);
}

TEST_F(CleanUpTest, RebuildsWhateverStandsThere) {
  FirstRunWithValley();
  const std::string outside = Root() + "/outside";
  Write(outside + "/kept.s", "kept");
  if (HasLinks()) MakeFolderLink(ToPath(outside), ToPath(WorkingPath("Shapes") + "/link"));
  Play("shapes\\junk\\fixed.s");
  MakeReadOnly(WorkingPath("shapes\\junk\\fixed.s"));
  Play("paths\\own.pat");
  Write(AppPath("routes\\Saves\\valley\\stale.sav"), "stale");
  for (const std::string name : {"a.sav", "b.txt"}) Write(GamePath("SAVES\\Quillon-route\\" + name), name);
  const auto store = State(AppPath("routes\\activities"));

  EXPECT_EQ(Run("clean"), 0);
  EXPECT_EQ(Captions("frmCleanUp").back(), "Finished!");
  for (const std::string gone :
       {"shapes\\junk\\fixed.s", "world\\w.w", "ts-bak-forest.dat", "paths\\own.pat"})
    EXPECT_FALSE(Exists(WorkingPath(gone))) << gone;
  EXPECT_EQ(Working("forest.dat"), "template forest");
  EXPECT_EQ(ReadBytes(outside + "/kept.s"), "kept");
  EXPECT_EQ(Names(AppPath("routes\\Saves\\valley")), Strings{"a.sav"});
  EXPECT_EQ(State(AppPath("routes\\activities")), store);
  for (const std::string list : {"current.tsl", "default.tsl"})
    EXPECT_EQ(ReadBytes(DataPath(list)), ReadBytes(Misc(list))) << list;
  EXPECT_EQ(Loaded(), "No Data!");
  EXPECT_EQ(Names(GamePath("Quillon_Extras\\EnvFiles")).size(),
            Names(Misc("env_defaults\\EnvFiles")).size() + 1);  // with the folder of its textures

  EXPECT_EQ(Run("load", "Valley Line"), 0);
  EXPECT_EQ(Names(GamePath("SAVES\\Quillon-route")), Strings{"a.sav"});
}

TEST_F(CleanUpTest, TheWelcomesSecondCleanUpOfAProcessOnlyFinishes) {
  options.welcomeOk = true;
  KeepSession();
  EXPECT_EQ(Run("start"), 0);
  StoreValley();
  EXPECT_EQ(Run("pick", "Valley Line"), 0);
  Remove(WorkingPath("Shapes"));
  EXPECT_EQ(Run("load"), 3);
  EXPECT_EQ(Captions("frmCleanUp"), (Strings{"Optimizing route space...", "Finished!"}));
  EXPECT_FALSE(Exists(WorkingPath("Shapes")));
  KeepSession(false);
  EXPECT_EQ(Run("start"), 0);
  EXPECT_TRUE(Exists(WorkingPath("Shapes")));
  // A visit to the route manager lets one process clean up again.
  Play("junk.s");
  EXPECT_EQ(Script("clean\nclean\n"), 0);
  EXPECT_FALSE(Exists(WorkingPath("junk.s")));
  EXPECT_EQ(Last("bar")["maximum"], 5440);
}

TEST_F(CleanUpTest, MissingMastersAreMissedBeforeTheFirstChange) {
  FirstRunWithValley();
  for (const std::string master : {"copyfiles.tsl", "current.tsl", "default.tsl"}) {
    const std::string bytes = ReadBytes(Misc(master));
    Remove(Misc(master));
    const auto before = State(Root());
    EXPECT_EQ(Run("clean"), 1);
    EXPECT_EQ(LastError(), 53);
    EXPECT_TRUE(EqualNoCase(LastErrorPath(), App() + "\\resources\\Do_Not_Delete!\\misc_info\\" + master));
    EXPECT_EQ(State(Root()), before) << master;
    Write(Misc(master), bytes);
  }
}

TEST_F(CleanUpTest, WhatCantBeChangedIsMissedBeforeTheFirstChange) {
  FirstRunWithValley();
  Play("terrtex\\snow\\full.ace");
  fs::create_directories(AppPath("routes\\Saves\\valley"));
  const auto expectRefusal = [this](const std::string& path) {
    const auto before = State(Root());
    EXPECT_EQ(Run("clean"), 1) << path;
    EXPECT_EQ(LastError(), 75);
    EXPECT_TRUE(EqualNoCase(LastErrorPath(), path)) << LastErrorPath() << " is not " << path;
    EXPECT_EQ(State(Root()), before) << path;
  };
  for (const std::string record : {"routes.ini", "current.tsl", "default.tsl"}) {
    MakeReadOnly(DataPath(record));
    expectRefusal(App() + "\\resources\\Do_Not_Delete!\\" + record);
    fs::permissions(DataPath(record), fs::perms(0644));
  }
  if (!HasPermissions()) return;
  const WithoutPrivileges user(Root());
  for (const auto& folder :
       {Game() + "\\ROUTES\\Quillon-route\\TERRTEX\\SNOW", Game() + "\\ROUTES\\Quillon-route",
        Game() + "\\ROUTES", Game() + "\\Saves\\Quillon-route", App() + "\\routes\\Saves",
        App() + "\\routes\\Saves\\valley", App() + "\\resources\\Do_Not_Delete!"}) {
    const ShutFolder shut(HostPath(folder));
    expectRefusal(folder);
  }
  fs::permissions(WorkingPath("Extras"), fs::perms(0555));  // empty: it can go
  EXPECT_EQ(Run("clean"), 0) << Last("error");
}

TEST_F(CleanUpTest, ACatalogueGapIsMendedByANewIntake) {
  ASSERT_EQ(FirstRun(), 0);
  ASSERT_EQ(AddRoute("valley.zip", "Valley Line"), 0);
  Drop("hill.zip", {Entry("route.zip", ZipBytes(RouteEntries("Hill Line")))});
  ASSERT_EQ(Run("add"), 0);
  Remove(DataPath("routes.ini"));
  EXPECT_EQ(Script("routes\nclean\nroutes\n"), 0);
  const std::string lost = "There has been an error.  Please run Cleanup.";
  EXPECT_EQ(Texts("row"), (Strings{lost, lost, "Hill Line", "Valley Line"}));
  EXPECT_EQ(Texts("row", "zip"), (Strings{"No Data!", "No Data!", "Quillon-hill", "valley"}));
  // The steps run inside the intake, and then once more.
  EXPECT_EQ(Captions("frmCleanUp"),
            (Strings{"Optimizing route space...", "Optimizing route space...", "Finished!", "Finished!"}));
  EXPECT_EQ(Captions("frmInitProg").back(), "Finished adding 2 new routes.");
  for (const std::string key : {"ALL:valley.qnz", "ALL:Quillon-hill.qnz"})
    EXPECT_EQ(Ini("misc_info\\routereport.ini", "All installed", key), "") << key;
  EXPECT_TRUE(Names(Download("")).empty());
  EXPECT_EQ(Names(AppPath("original_zips\\Installed")),
            (Strings{"hill.zip", "installed_info.html", "valley.zip"}));
  EXPECT_EQ(Run("load", "Valley Line"), 0);
}

TEST_F(CleanUpTest, AGapWithoutOriginalsLeadsThroughTheIntakeAllTheSame) {
  FirstRunWithValley();
  Play("junk.s");
  Remove(DataPath("routes.ini"));
  EXPECT_EQ(Script("routes\nclean\nroutes\n"), 0);
  EXPECT_EQ(Captions("frmCleanUp").size(), 4u);
  EXPECT_EQ(Texts("row"), Strings(2, "There has been an error.  Please run Cleanup."));
  EXPECT_FALSE(Exists(WorkingPath("junk.s")));
}

}  // namespace
}  // namespace quillon
