// What a user has made outlives loads, clean-ups, removals and power cuts, and comes back from the shelf.
#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

#include "core/text/Text.h"
#include "tests/world/FaultyFiles.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

/// Routes "valley" and "hill"; valley is loaded, and was played.
class RescueTest : public ProgramTest {
 protected:
  RescueTest() {
    EXPECT_EQ(FirstRun(), 0);
    EXPECT_EQ(AddRoute("valley.zip", "valley", {Entry("route/forest.dat", "forest of valley")}), 0);
    EXPECT_EQ(AddRoute("hill.zip", "hill"), 0);
    EXPECT_EQ(Run("load", "valley"), 0);
    // The disk's clock ticks: what comes now is no longer the load's.
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    Write(GamePath("SAVES\\Quillon-route\\mine.sav"), "first save");
    Write(GamePath("SAVES\\Quillon-route\\sub\\deep.sav"), "deep save");
    Write(GamePath("SAVES\\Quillon-route\\notes.txt"), "notes");
    Play("Activities\\pack\\own.act", "own activity in a folder");
    Play("Activities\\own.act", "own activity");
  }

  /// Whether the bytes are in a file below a place.
  static bool Holds(std::string_view folder, const std::string& bytes) {
    const auto tree = Tree(folder);
    return std::any_of(tree.begin(), tree.end(), [&](const auto& file) { return file.second == bytes; });
  }
  Strings Reasons() {
    EXPECT_EQ(Run("shelf"), 0);
    return Texts("shelf", "why");
  }
  int Shelf(std::optional<int> putBack, std::optional<int> drop = {}) {
    return Run(Command{.name = "shelf", .putBack = putBack, .drop = drop});
  }
};

TEST_F(RescueTest, WhatALoadWouldDeleteGoesToTheShelfAndComesBack) {
  Play("world\\w.w", "my own edit");
  ASSERT_EQ(Run("load", "hill"), 0);
  EXPECT_EQ(Last("shelf")["zip"], "valley");
  for (const std::string own : {"deep save", "notes", "own activity in a folder", "my own edit"})
    EXPECT_TRUE(Holds(AppPath("rescued\\valley"), own)) << own;
  EXPECT_EQ(ReadBytes(AppPath("routes\\Saves\\valley\\mine.sav")), "first save");
  EXPECT_FALSE(Holds(AppPath("rescued"), "own activity")) << "its store holds it";
  EXPECT_FALSE(Holds(AppPath("rescued"), "forest of valley")) << "the route's own file holds it";
  ASSERT_EQ(Run("load", "valley"), 0);
  const auto again = Events("shelf");
  EXPECT_TRUE(again.empty()) << again.back();

  EXPECT_EQ(Shelf(1), 1) << "the route's own file stands where the edited one stood";
  EXPECT_EQ(LastError(), 58);
  EXPECT_FALSE(Exists(WorkingPath("Activities\\pack\\own.act"))) << "nothing is put back by halves";
  Remove(HostPath(LastErrorPath()));
  EXPECT_EQ(Shelf(1), 0) << Last("error");
  EXPECT_EQ(Working("Activities\\pack\\own.act"), "own activity in a folder");
  EXPECT_EQ(ReadBytes(GamePath("SAVES\\Quillon-route\\notes.txt")), "notes");
  EXPECT_EQ(Shelf({}, 1), 0);
  EXPECT_EQ(Reasons(), Strings());
  EXPECT_EQ(Shelf(1), 3);
}

TEST_F(RescueTest, EveryVersionOfASaveStaysUntilThereAreTen) {
  for (int i = 1; i <= 12; ++i) {
    ASSERT_EQ(Run("load", "valley"), 0);
    Write(GamePath("SAVES\\Quillon-route\\mine.sav"), "save " + std::to_string(i));
  }
  ASSERT_EQ(Run("load", "hill"), 0);
  EXPECT_EQ(Reasons().size(), 10u);
  EXPECT_EQ(ReadBytes(AppPath("routes\\Saves\\valley\\mine.sav")), "save 12");
  for (int i = 2; i <= 11; ++i) EXPECT_TRUE(Holds(AppPath("rescued"), "save " + std::to_string(i))) << i;
}

TEST_F(RescueTest, CleanKeepsOwnWorkAndTheSavesOfALostGame) {
  Play("Textures\\own.ace", "own texture");
  ASSERT_EQ(Run("clean"), 0);
  for (const std::string own : {"deep save", "own activity", "own texture", "own activity in a folder"})
    EXPECT_TRUE(Holds(AppPath("rescued\\valley"), own)) << own;
  EXPECT_FALSE(Holds(AppPath("rescued"), "template forest")) << "the game holds it";

  ASSERT_EQ(Run("load", "valley"), 0);
  Remove(GamePath("SAVES"));
  Remove(WorkingPath(""));
  EXPECT_EQ(FirstRun(), 0);
  ASSERT_EQ(Run("load", "valley"), 0);
  EXPECT_EQ(ReadBytes(GamePath("SAVES\\Quillon-route\\mine.sav")), "first save");
}

TEST_F(RescueTest, ARemovedRouteComesBackWhole) {
  ASSERT_EQ(Run("load", "hill"), 0);
  options.answerYes = true;
  const auto store = Tree(AppPath("routes"));
  ASSERT_EQ(Run("remove", "valley"), 0);
  EXPECT_EQ(Shelf(1), 0) << Last("error");
  EXPECT_EQ(Tree(AppPath("routes")), store);
  ASSERT_EQ(Run("load", "valley"), 0) << Last("error");
  EXPECT_EQ(ReadBytes(GamePath("SAVES\\Quillon-route\\mine.sav")), "first save");
}

TEST_F(RescueTest, ALoadCutShortIsHealedByTheNext) {
  Write(DataPath("misc_info\\custom_scripts\\hill\\custom.cst"), "copy \\Shapes\\ ! own.s\r\n");
  ASSERT_EQ(Run("load", "hill"), 1);
  EXPECT_EQ(Current({"Loaded", "PutAway", "Loading"}), "valley|valley|hill");
  options.answerYes = true;
  EXPECT_EQ(Run("permanent", "valley"), 3) << "what stands there is not valley";
  // Whoever did not notice drives on.
  Write(GamePath("SAVES\\Quillon-route\\new.sav"), "in the half-built route");
  ASSERT_EQ(Run("load", "valley"), 0) << Last("error");
  EXPECT_EQ(Current({"Loaded", "PutAway", "Loading"}), std::string("valley|") + kMissing + "|" + kMissing);
  EXPECT_EQ(ReadBytes(GamePath("SAVES\\Quillon-route\\mine.sav")), "first save");
  EXPECT_EQ(ReadBytes(AppPath("routes\\Saves\\hill\\new.sav")), "in the half-built route");
  EXPECT_EQ(Working("Activities\\own.act"), "own activity");
  EXPECT_EQ(Working("forest.dat"), "forest of valley");
  ASSERT_EQ(Run("clean"), 0);
  EXPECT_EQ(Working("forest.dat"), "template forest");
}

TEST_F(RescueTest, AMovedGameIsFollowedAndAStrangersRouteIsTold) {
  const std::string moved = Root() + "/moved";
  fs::rename(ToPath(Game()), ToPath(moved));
  ASSERT_EQ(Run(Command{.name = "options", .game = moved}), 0);
  ASSERT_EQ(Run("load", "hill"), 0) << Last("error");
  Strings tracks;
  for (const auto& name : Names(moved + "/ROUTES/Quillon-route"))
    if (name.ends_with(".trk")) tracks.push_back(name);
  EXPECT_EQ(tracks.size(), 1u);

  DeleteSection("routes.ini", "Current");
  Write(DataPath("current.tsl"), "");
  Remove(DataPath("placed.tsl"));  // as another folder that was never told of this load
  const auto before = State(moved);
  EXPECT_EQ(Run("load", "valley"), 3);
  EXPECT_TRUE(!BoxTexts().empty() && Contains(BoxTexts().back(), "Clean")) << "it says what to do";
  EXPECT_EQ(State(moved), before);
  options.answerYes = true;
  EXPECT_EQ(Run("load", "valley"), 0) << Last("error");
}

/// The names of files that a power cut would empty.
class PowerCut : public Fault {
 public:
  FileCode Strike() override { return FileCode::Ok; }
  void Wrote(std::string_view path) override { unflushed.insert(LowerCase(path)); }
  void Flushed() override { unflushed.clear(); }
  std::set<std::string> unflushed;
};

TEST_F(RescueTest, WhatACommandHasDoneOutlivesAPowerCut) {
  PowerCut cut;
  makeFiles = [&] { return std::make_unique<FaultyFiles>(cut); };
  options.answerYes = true;
  Write(GamePath("ROUTES\\Own\\Own.trk"), TrackFile("Own"));
  Drop("third.zip", {Entry("inner.zip", ZipBytes(RouteEntries("third")))});
  for (const auto& [command, argument] :
       std::vector<std::pair<std::string, std::string>>{{"load", "hill"},
                                                        {"add", ""},
                                                        {"pack", Game() + "/ROUTES/Own"},
                                                        {"remove", "valley"},
                                                        {"clean", ""}}) {
    ASSERT_EQ(Run(command, argument), 0) << command << Last("error");
    for (const auto& path : cut.unflushed) {
      // What each start lays anew, and reports.
      const bool made = Contains(path, "\\misc_info\\") || path.ends_with("info.html") ||
                        path.ends_with("this!.html") || path.ends_with("tsno data!.jpg") ||
                        path.ends_with(".ini");
      EXPECT_TRUE(made) << command << ": " << path;
    }
  }
}

}  // namespace
}  // namespace quillon
