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
    Drop(zip, outer);
  }
  /// A work folder as an intake leaves it that dies while it rebuilds `zip`.
  std::string LeaveWorkFolder(const std::string& zip, const std::string& download) {
    const std::string folder = GamePath("ROUTES\\Quillon-" + zip);
    Write(folder + "\\quillon-work-folder", download);
    Write(folder + "\\sub\\inner.zip", "inner");
    return folder;
  }
  std::string RouteFile(const std::string& zip) const { return AppPath("routes\\" + zip + ".qnz"); }

  const std::vector<ZipEntry> small_ = {Entry("x/tiles/a.t"), Track("x/a.trk", "a")};
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
  const std::string original = ReadBytes(Download("whole.zip"));
  const auto routes = Names(GamePath("ROUTES"));
  EXPECT_EQ(Run("add"), 0);

  EXPECT_EQ(Entries("Quillon-whole"), (Strings{"extra\\sub\\file.txt", "foo.trk", "foo\\other\\tiles\\x.dat",
                                               "kept_e.raw", "readme.txt", "tiles\\a.t"}));
  const auto entries = Unzipped(RouteFile("Quillon-whole"));
  EXPECT_EQ(entries.at("tiles\\a.t") + entries.at("readme.txt"), "tileinner");
  EXPECT_EQ(ReadBytes(RouteFile("Quillon-whole")).find("File.TXT"), std::string::npos) << "lower case";
  EXPECT_EQ(Fate("Quillon-whole"), "ADD ALL qnz");
  EXPECT_EQ(Fate("whole"), "Installed");
  EXPECT_EQ(ReadBytes(AppPath("original_zips\\Installed\\whole.zip")), original);
  EXPECT_EQ(Names(GamePath("ROUTES")), routes);
  EXPECT_EQ(Names(Download("")), Strings{});
  EXPECT_EQ(NameOf("Quillon-whole"), "Whole");
  const auto captions = Captions("frmInitProg");
  EXPECT_EQ(Strings(captions.begin() + 1, captions.begin() + 7),
            (Strings{"Generating route info...", "Recreating Route file structure...",
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
  Run("add");
  EXPECT_EQ(Entries("Quillon-top"), (Strings{"ctivities\\x.act", "iles\\a.t", "oute.trk", "world\\w.w"}));
  EXPECT_EQ(Entries("Quillon-last"), (Strings{"a.trk", "iles\\q.t", "tiles\\a.t"}));
  EXPECT_EQ(Entries("Quillon-deep"), (Strings{"a.trk", "mytiles\\q.t", "tiles\\a.t", "tiles\\x.t"}));
}

TEST_F(RouteRebuildingTest, APrefixIsLeftOverForTheNextZip) {
  DropNested("a.zip", "route.zip", {Track("plain/a.trk", "A"), Entry("plain/world/w.w")});
  DropNested("b.zip", "route.zip", {Entry("foo/bar/tiles/a.t"), Track("foo/bar/b.trk", "b")});
  DropNested("c.zip", "route.zip",
             {Track("foo/bar/c.trk", "c"), Entry("zzfoo/bar/deep/y.txt"), Entry("other/z.txt")});
  Run("add");
  EXPECT_EQ(Entries("Quillon-a"), (Strings{"plain\\a.trk", "plain\\world\\w.w"}));
  EXPECT_EQ(Entries("Quillon-b"), (Strings{"b.trk", "tiles\\a.t"}));
  // Anywhere in the path is enough, and the cut is at the front all the same.
  EXPECT_EQ(Entries("Quillon-c"), (Strings{"c.trk", "other\\z.txt", "r\\deep\\y.txt"}));
}

TEST_F(RouteRebuildingTest, ASubArchiveBecomesItsFolder) {
  DropNested("special.zip", "Rt/TEXTURES.ZIP",
             {Entry("sub/Grass.ace", "new"), Entry("snow.ace"), Entry("x_e.raw"), Entry("a.bk")},
             {Track("Rt/Rt.trk", "Special"), Entry("Rt/textures/grass.ace", "old"), Entry("Rt/Tiles/A_N.RAW"),
              Entry("Rt/Tiles/a.t"), Entry("Rt/world/w.bk")});
  DropNested("other.zip", "mytextures.zip", small_);
  Run("add");
  EXPECT_EQ(Entries("Quillon-special"),
            (Strings{"rt\\rt.trk", "rt\\textures\\grass.ace", "rt\\textures\\snow.ace", "rt\\tiles\\a.t"}));
  EXPECT_EQ(Unzipped(RouteFile("Quillon-special")).at("rt\\textures\\grass.ace"), "new");
  EXPECT_EQ(Entries("Quillon-other"), (Strings{"a.trk", "tiles\\a.t"}));
}

TEST_F(RouteRebuildingTest, ADownloadCalledRouteSparesTheWorkingRoute) {
  const auto before = Tree(GamePath("ROUTES"));
  DropNested("route.zip", "inner.zip", small_);
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Fate("Quillon-route"), "ADD ALL qnz");
  EXPECT_TRUE(Tree(GamePath("ROUTES")) == before);
}

TEST_F(RouteRebuildingTest, ATopLevelRouteIsRepackedWhenAFileOfItsNameIsAtHand) {
  Drop("top.zip", {Track("route.trk", "Top"), Entry("tiles/A.t"), Entry("tiles/a_e.raw"), Entry("x.bk")});
  Drop("deep.zip", RouteEntries("Deep", {Entry("route/x.bk")}));
  for (const std::string name : {"top", "deep"}) Write(Home() + "/" + name, "");
  Run("add");
  EXPECT_EQ(Fate("top"), "Installed ADD ALL qnz");
  EXPECT_EQ(Entries("top"), (Strings{"route.trk", "tiles\\a.t"}));
  EXPECT_EQ(Entries("deep").size(), 10u);
}

TEST_F(RouteRebuildingTest, ARebuiltNameThatIsTakenEndsTheIntake) {
  Drop("Quillon-a.zip", small_);
  DropNested("a.zip", "inner.zip", small_);
  EXPECT_EQ(Run("add"), 1);
  EXPECT_EQ(LastError(), 58);
  EXPECT_TRUE(LastErrorPath().ends_with("\\Quillon-a.zip")) << LastErrorPath();
  EXPECT_EQ(Fate("a"), "downloaded_routes Installed");
}

TEST_F(RouteRebuildingTest, WhatADeadIntakeHasLeftIsBroughtToAnEnd) {
  const std::string downloads = App() + "\\downloaded_routes\\";
  Strings gone, kept;
  for (const std::string zip : {"done", "cut", "there", "repacked"})
    gone.push_back(LeaveWorkFolder(zip, downloads + zip + ".zip"));
  Write(downloads + "done.tmp", ZipBytes(small_));
  Write(downloads + "cut.tmp", ZipBytes(small_).substr(0, 60));
  Write(downloads + "there.tmp", ZipBytes(small_));
  DropNested("there.zip", "inner.zip", {Track("x/a.trk", "There"), Entry("x/tiles/a.t")});
  Write(gone.back() + "\\Quillon-repacked.zip", ZipBytes(small_));
  kept.push_back(LeaveWorkFolder("other", Root() + "/other\\downloaded_routes\\other.zip"));
  kept.push_back(LeaveWorkFolder("route", downloads + "route.zip"));
  kept.push_back(LeaveWorkFolder("mine", downloads + "x.zip"));
  Write(downloads + "x.tmp", ZipBytes(small_));

  EXPECT_EQ(Run("add"), 0) << Last("error");
  for (const auto& folder : gone) EXPECT_FALSE(Exists(folder)) << folder;
  for (const auto& folder : kept) EXPECT_TRUE(Exists(folder + "\\sub\\inner.zip")) << folder;
  EXPECT_EQ(Fate("Quillon-done"), "ADD ALL qnz");
  EXPECT_EQ(Fate("repacked"), "Installed ADD ALL qnz");
  EXPECT_EQ(NameOf("Quillon-there"), "There");
  EXPECT_EQ(Fate("Quillon-cut") + Fate("Quillon-x"), "");
  EXPECT_EQ(Names(Download("")), (Strings{"cut.tmp", "x.tmp"}));
}

TEST_F(RouteRebuildingTest, PrefixedOriginalsAreTakenForRebuiltOnes) {
  DropNested("Quillon-a.zip", "inner.zip", small_);
  Drop("b.zip", {Entry("inner.zip", "garbage")});
  Run("add");
  EXPECT_EQ(Fate("Quillon-Quillon-a"), "ADD ALL qnz");
  EXPECT_EQ(Fate("Quillon-a"), "");
  EXPECT_EQ(Fate("b"), "Installed");
  EXPECT_EQ(Fate("Quillon-b"), "MSC");
}

}  // namespace
}  // namespace quillon
