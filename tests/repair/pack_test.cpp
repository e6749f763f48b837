// A route's way out of the game into a zip, and all the way back.
#include "core/text/Text.h"
#include "repair/PackRoute.h"
#include "tests/world/GivesUp.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class PackTest : public ProgramTest {
 protected:
  PackTest() {
    EXPECT_EQ(FirstRun(), 0);
    for (const auto& [name, data] : files_) Write(Folder() + "/" + name, data);
  }

  std::string Folder() const { return Game() + "/ROUTES/MyRoute"; }
  int Pack() { return Run("pack", Folder()); }
  std::string Zip() const { return Download("QNPacked-myroute.zip"); }

  const NamedTexts files_ = {{"My.trk", TrackFile("My Own Line")}, {"Tiles/-01.t", "tile"},
                             {"Tiles/-01_y.raw", "heights"},       {"World/w.w", "world"},
                             {"Shapes/Own.s", "own shape"},        {"Textures/Own.ace", "own texture"},
                             {"Activities/a.act", "activity"},     {"Paths/p.pat", "path"},
                             {"Services/s.srv", "service"},        {"Traffic/t.trf", "traffic"}};
};

TEST_F(PackTest, LeavesOutWhatTheGameHasOrMakes) {
  for (const char* name :
       {"ostr-old.s", "Tiles/-01_E.raw", "Tiles/-01_n.RAW", "setup.EXE", "old.zip", "World/w.bk"})
    Write(Folder() + "/" + name, "left out");
  Write(DataPath("misc_info\\filelist.tsl"), "shapes\\own.S\r\n\r\n");
  const auto before = State(Folder());
  ASSERT_EQ(Pack(), 0) << Last("error");
  EXPECT_EQ(State(Folder()), before) << "the route itself is not touched";
  NamedTexts expected;
  for (const auto& [name, data] : files_)
    expected["myroute\\" + LowerCase(ReplaceAll(name, "/", "\\"))] = data;
  expected.erase("myroute\\shapes\\own.s");
  EXPECT_EQ(Unzipped(Zip()), expected);
  EXPECT_FALSE(Exists(Download("QNPacked-myroute.tmp")));
  EXPECT_TRUE(Exists(AppPath("routes\\Saves\\QNPacked-myroute")));
  EXPECT_TRUE(Contains(ReadBytes(DataPath("misc_info\\trains\\packedup.log")), "\\MyRoute\\My.trk\r\n\r\n") ||
              Contains(LowerCase(ReadBytes(DataPath("misc_info\\trains\\packedup.log"))),
                       "\\myroute\\my.trk\r\n\r\n"));
  const Strings captions = Captions("frmPack");
  EXPECT_EQ(captions.front(), "Skipping shapes\\own.S");
  EXPECT_EQ(captions.back(), "Finished Packing!");
}

TEST_F(PackTest, GivenUpAnywhereItLeavesNothing) {
  ASSERT_EQ(Pack(), 0) << "an older zip";
  const auto app = State(App()), game = State(Game());
  RecordedOutput output;
  HeadlessFrontEnd frontEnd(output, options);
  int at = 0;
  for (bool packed = false; !packed; at += 2) {
    RunningProgram program(App(), frontEnd);
    program.Get().shared.TrainSimPath = Game();
    GivesUp progress(at);
    packed = PackRoute(program.Get(), progress, Game() + "\\routes", "myroute", Game() + "\\ROUTES\\MyRoute")
                 .Run();
    if (!packed) {
      EXPECT_EQ(Changed(app, State(App())), Strings()) << "given up at " << at;
    }
  }
  EXPECT_GT(at, 20);
  EXPECT_EQ(State(Game()), game);
  EXPECT_EQ(Unzipped(Zip()).size(), files_.size()) << "the one that was not given up";
}

TEST_F(PackTest, TheFolderGoesOnlyOnYes) {
  ASSERT_EQ(Pack(), 0);
  EXPECT_TRUE(Exists(Folder()));
  Write(Game() + "/SAVES/MyRoute/mine.sav", "");
  Write(Root() + "/elsewhere/kept.txt", "kept");
  if (HasLinks()) MakeFolderLink(ToPath(Root() + "/elsewhere"), ToPath(Folder() + "/Link"));
  options.answerYes = true;
  ASSERT_EQ(Pack(), 0);
  EXPECT_FALSE(Exists(Folder()) || Exists(Game() + "/SAVES/MyRoute"));
  EXPECT_EQ(ReadBytes(Root() + "/elsewhere/kept.txt"), "kept")
      << "a link out of the tree is unlinked, not followed";
  ASSERT_EQ(BoxTexts().size(), 1u);
  EXPECT_TRUE(Contains(BoxTexts().front(), "remove the myroute folder"));
}

TEST_F(PackTest, ComesBackByteForByte) {
  options.answerYes = true;
  ASSERT_EQ(Pack(), 0);
  ASSERT_EQ(Run("add"), 0);
  ASSERT_EQ(Run("load", "My Own Line"), 0) << Last("error");
  ASSERT_EQ(Run("permanent", "My Own Line"), 0) << Last("error");
  const auto route = Tree(GamePath("ROUTES\\myroute"));
  for (const auto& [name, data] : files_) {
    const auto found = route.find(LowerCase(ReplaceAll(name, "/", "\\")));
    ASSERT_NE(found, route.end()) << name;
    EXPECT_EQ(found->second, data) << name;
  }
  EXPECT_TRUE(Names(AppPath("routes\\route_info")).empty());
  EXPECT_EQ(Loaded(), "No Data!");
  EXPECT_TRUE(Exists(WorkingPath("Shapes")));
}

TEST_F(PackTest, IsCompleteOrSaysNo) {
  if (!HasLinks()) GTEST_SKIP() << kNoLinks;
  Write(Root() + "/elsewhere/shared.s", "shared shape");
  MakeFolderLink(ToPath(Root() + "/elsewhere"), ToPath(Folder() + "/Linked"));
  MakeFolderLink(ToPath(Folder()), ToPath(Folder() + "/Linked/loop"));
  ASSERT_EQ(Pack(), 0) << Last("error");
  const auto packed = Unzipped(Zip());
  EXPECT_EQ(packed.size(), files_.size() + 1);
  EXPECT_EQ(packed.at("myroute\\linked\\shared.s"), "shared shape");

  options.answerYes = true;
  for (const auto& [name, number] :
       std::vector<std::pair<std::string, int>>{{"Shapes/OWN.S", 58}, {"what?.s", 52}}) {
    WriteBytes(ToPath(Folder() + "/" + name), "no name for every disk");
    EXPECT_EQ(Pack(), 1) << name;
    EXPECT_EQ(LastError(), number) << Last("error");
    EXPECT_TRUE(Exists(Folder() + "/My.trk"));
    fs::remove(ToPath(Folder() + "/" + name));
  }
  // Another folder, where names that differ in case do.
  fs::create_directories(ToPath(Root() + "/GAME/ROUTES/MyRoute"));
  EXPECT_EQ(Run("pack", Root() + "/GAME/ROUTES/MyRoute"), 3);
  EXPECT_TRUE(Exists(Folder() + "/My.trk"));
}

TEST_F(PackTest, RefusesWhatIsNoRouteAndWhatIsNotThere) {
  EXPECT_EQ(Run("pack", Game() + "/ROUTES/USA1"), 3);
  EXPECT_EQ(Run("pack", Game() + "/ROUTES/Nowhere"), 3);
  EXPECT_EQ(Run("pack", Game()), 3);
  EXPECT_TRUE(Names(AppPath("downloaded_routes")).empty());
}

}  // namespace
}  // namespace quillon
