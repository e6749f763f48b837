// A zip in a zip becomes one flat archive.
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

class RouteRebuildingTest : public IntakeTest {
 protected:
  /// Drops a zip that holds the inner zip `innerName` beside `outer`.
  void DropNested(const std::string& zip, const std::string& innerName, const std::vector<ZipEntry>& inner,
                  std::vector<ZipEntry> outer = {}) {
    outer.push_back({.name = innerName, .data = ZipBytes(inner), .deflated = true});
    program.Drop(zip, outer);
  }
};

TEST_F(RouteRebuildingTest, AWholeRouteIsStrippedToItsFolders) {
  DropNested("whole.zip", "Route.ZIP",
             {Track("Foo\\Bar\\Foo.trk", "Whole"),
              {.name = "Foo\\Bar\\Tiles\\a.t", .data = "tile", .deflated = true},
              Entry("Foo\\Bar\\Tiles\\b_E.raw"),
              Entry("Foo\\Bar\\Tiles\\b_n.RAW"),
              Entry("Foo\\Bar\\world\\w.w.bk"),
              {.name = "Foo\\Bar", .folder = true},
              Entry("Foo\\Bar\\Readme.txt", "inner"),
              Entry("Foo\\other\\tiles\\x.dat")},
             {Entry("Extra/Sub/File.TXT", "loose"),
              {.name = "Extra", .folder = true},
              Entry("kept_e.raw"),
              Entry("readme.txt", "outer")});
  const std::string original = program.ReadBytes(program.Download("whole.zip"));
  const auto routes = program.Names(program.GamePath("ROUTES"));
  EXPECT_EQ(program.Run("add"), 0);

  const auto entries = program.Unzipped(program.AppPath("routes\\Quillon-whole.qnz"));
  EXPECT_EQ(Entries("Quillon-whole"), (Texts{"extra\\sub\\file.txt", "foo.trk", "foo\\other\\tiles\\x.dat",
                                             "kept_e.raw", "readme.txt", "tiles\\a.t"}));
  EXPECT_EQ(entries.at("tiles\\a.t"), "tile");
  EXPECT_EQ(entries.at("readme.txt"), "inner");
  const std::string bytes = program.ReadBytes(program.AppPath("routes\\Quillon-whole.qnz"));
  EXPECT_EQ(bytes.find("File.TXT"), bytes.npos) << "lower case throughout";
  EXPECT_EQ(Fate("Quillon-whole"), "ADD ALL qnz");
  EXPECT_EQ(Fate("whole"), "Installed");
  EXPECT_EQ(program.ReadBytes(program.AppPath("original_zips\\Installed\\whole.zip")), original);
  EXPECT_EQ(program.Names(program.GamePath("ROUTES")), routes);
  EXPECT_EQ(program.Names(program.AppPath("downloaded_routes")), Texts{});
  EXPECT_EQ(NameOf("Quillon-whole"), "Whole");
  const auto captions = program.Captions("frmInitProg");
  EXPECT_EQ(Texts(captions.begin() + 1, captions.begin() + 7),
            (Texts{"Generating route info...", "Recreating Route file structure...",
                   "Creating paths for whole...", "Reticulating fractal spline curves...",
                   "Restructuring whole...", "Verifying... Quillon-whole.zip"}));
}

TEST_F(RouteRebuildingTest, TheFirstLetterOfTopLevelTilesIsLost) {
  DropNested("top.zip", "route.zip",
             {Entry("tiles/a.t"), Entry("world/w.w"), Track("route.trk", "Top"), Entry("activities/x.act")});
  DropNested("last.zip", "route.zip",  // of matches at no backslash the last one wins
             {Entry("tiles/a.t"), Entry("mytiles/q.t"), Track("a.trk", "Last")});
  DropNested("deep.zip", "route.zip",  // a match behind a backslash beats it and ends the search
             {Entry("tiles/x.t"), Entry("deep/tiles/a.t"), Entry("mytiles/q.t"), Track("deep/a.trk", "a")});
  program.Run("add");
  EXPECT_EQ(Entries("Quillon-top"), (Texts{"ctivities\\x.act", "iles\\a.t", "oute.trk", "world\\w.w"}));
  EXPECT_EQ(Entries("Quillon-last"), (Texts{"a.trk", "iles\\q.t", "tiles\\a.t"}));
}

TEST_F(RouteRebuildingTest, APrefixIsLeftOverForTheNextZip) {
  DropNested("a.zip", "route.zip", {Track("plain/a.trk", "A"), Entry("plain/world/w.w")});
  DropNested("b.zip", "route.zip", {Entry("foo/bar/tiles/a.t"), Track("foo/bar/b.trk", "b")});
  DropNested("c.zip", "route.zip",
             {Track("foo/bar/c.trk", "c"), Entry("zzfoo/bar/deep/y.txt"), Entry("other/z.txt")});
  program.Run("add");
  EXPECT_EQ(Entries("Quillon-a"), (Texts{"plain\\a.trk", "plain\\world\\w.w"}));
  EXPECT_EQ(Entries("Quillon-b"), (Texts{"b.trk", "tiles\\a.t"}));
  // Anywhere in the path is enough, and the cut is at the front all the same.
  EXPECT_EQ(Entries("Quillon-c"), (Texts{"c.trk", "other\\z.txt", "r\\deep\\y.txt"}));
}

TEST_F(RouteRebuildingTest, ASubArchiveBecomesItsFolder) {
  DropNested("special.zip", "Rt/TEXTURES.ZIP",
             {Entry("sub/Grass.ace", "new"), Entry("snow.ace"), Entry("x_e.raw"), Entry("a.bk")},
             {Track("Rt/Rt.trk", "Special"), Entry("Rt/textures/grass.ace", "old"), Entry("Rt/Tiles/A_N.RAW"),
              Entry("Rt/Tiles/a.t"), Entry("Rt/world/w.bk")});
  DropNested("other.zip", "mytextures.zip", {Entry("rt/tiles/a.t"), Track("rt/a.trk", "a")});
  program.Run("add");
  EXPECT_EQ(Entries("Quillon-special"),
            (Texts{"rt\\rt.trk", "rt\\textures\\grass.ace", "rt\\textures\\snow.ace", "rt\\tiles\\a.t"}));
  EXPECT_EQ(program.Unzipped(program.AppPath("routes\\Quillon-special.qnz")).at("rt\\textures\\grass.ace"),
            "new");
  EXPECT_EQ(Entries("Quillon-other"), (Texts{"a.trk", "tiles\\a.t"}));
}

TEST_F(RouteRebuildingTest, ADownloadCalledRouteSparesTheWorkingRoute) {
  const auto before = program.Tree(program.GamePath("ROUTES"));
  DropNested("route.zip", "inner.zip", {Entry("x/tiles/a.t"), Track("x/a.trk", "a")});
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(Fate("Quillon-route"), "ADD ALL qnz");
  EXPECT_TRUE(program.Tree(program.GamePath("ROUTES")) == before);
}

TEST_F(RouteRebuildingTest, ATopLevelRouteIsRepackedWhenAFileOfItsNameIsAtHand) {
  const std::vector<ZipEntry> entries = {Track("route.trk", "Top"), Entry("tiles/A.t"),
                                         Entry("tiles/a_e.raw"), Entry("tiles/A_E.RAW2"), Entry("x.bk")};
  program.Drop("other.zip", entries);
  program.Drop("top.zip", entries);
  program.Drop("deep.zip", RouteEntries("Deep", {Entry("route/x.bk")}));
  for (const std::string name : {"top", "deep"}) program.Write(program.Home() + "/" + name, "");
  program.Run("add");
  EXPECT_EQ(Fate("top"), "Installed ADD ALL qnz");
  EXPECT_EQ(Entries("top"), (Texts{"route.trk", "tiles\\a.t", "tiles\\a_e.raw2"}));
  EXPECT_EQ(Entries("other").size(), 5u);
  EXPECT_EQ(Entries("deep").size(), 10u);
  const auto captions = program.Captions("frmInitProg");
  EXPECT_EQ(std::count(captions.begin(), captions.end(), "Analyzing route structure..."), 1);
}

TEST_F(RouteRebuildingTest, ARebuiltNameThatIsTakenEndsTheIntake) {
  const std::vector<ZipEntry> route = {Entry("x/tiles/a.t"), Track("x/a.trk", "a")};
  program.Drop("Quillon-a.zip", route);
  DropNested("a.zip", "inner.zip", route);
  EXPECT_EQ(program.Run("add"), 1);
  EXPECT_EQ(program.LastError(), 58);
  EXPECT_NE(program.LastErrorPath().find("Quillon-a.zip"), std::string::npos);
  EXPECT_TRUE(program.Exists(program.AppPath("original_zips\\Installed\\a.zip")));
}

TEST_F(RouteRebuildingTest, PrefixedOriginalsAreTakenForRebuiltOnes) {
  DropNested("Quillon-a.zip", "inner.zip", {Entry("x/tiles/a.t"), Track("x/a.trk", "a")});
  program.Drop("b.zip", {Entry("inner.zip", "garbage")});
  program.Run("add");
  EXPECT_EQ(Fate("Quillon-Quillon-a"), "ADD ALL qnz");
  EXPECT_EQ(Fate("Quillon-a"), "");
  EXPECT_EQ(Fate("b"), "Installed");
  EXPECT_EQ(Fate("Quillon-b"), "MSC");
}

}  // namespace
}  // namespace quillon
