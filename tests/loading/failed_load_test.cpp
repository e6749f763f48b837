// Loads that can't be carried out: what can be known beforehand changes nothing, what can't is never
// committed.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

std::vector<ZipEntry> Route(const std::vector<ZipEntry>& extra = {}) {
  std::vector<ZipEntry> entries = {{.name = "R/Tiles/t.t", .data = "tile"},
                                   {.name = "R/forest.dat", .data = "forest of the route"},
                                   {.name = "R/Shapes/own.s", .data = "shape", .deflated = true}};
  entries.insert(entries.end(), extra.begin(), extra.end());
  return entries;
}

/// A good route is loaded; another one, "Storm", is selected and shall not come in.
class FailedLoadTest : public testing::Test {
 protected:
  FailedLoadTest() {
    EXPECT_EQ(program_.FirstRun(), 0);
    program_.StoreRoute("valley", "Valley Line", Route({{.name = "R/valley.s", .data = "of the valley"}}));
    program_.StoreRoute("storm", "Storm", Route());
    EXPECT_EQ(program_.Run("load", "Valley Line"), 0);
    program_.Write(program_.GamePath("SAVES\\Quillon-route\\a.sav"), "saved");
    program_.Write(program_.WorkingPath("paths\\played.pat"), "played");
  }

  std::string Storm() const { return program_.AppPath("routes\\storm.qnz"); }
  static void MakeReadOnly(const std::string& hostPath) { fs::permissions(hostPath, fs::perms(0444)); }

  /// Loads "Storm" after `spoil` has been at work behind the selection.
  void LoadStorm(const std::function<void()>& spoil = [] {}) {
    program_.KeepSession();
    EXPECT_EQ(program_.Run("pick", "Storm"), 0);
    spoil();
    before_ = program_.State(program_.Root());
    status_ = program_.Run("load");
    program_.EndSession();
  }
  /// The program ended with an error that says what, where and while doing what; `number` 0 stands for any.
  void ExpectError(int number, const std::string& path) const {
    const Event error = program_.Last("error");
    EXPECT_EQ(status_, 1);
    EXPECT_EQ(program_.Last("end").value("status", 0), 1);
    EXPECT_TRUE(number == 0 ? program_.LastError() != 0 : program_.LastError() == number) << error;
    EXPECT_TRUE(EqualNoCase(program_.LastErrorPath(), path)) << error;
    EXPECT_NE(error.value("text", ""), "");
    EXPECT_NE(error.value("step", ""), "");
    EXPECT_EQ(program_.Ini("routes.ini", "Current", "Loaded"), "valley");
  }
  void ExpectNothingChanged() const {
    auto after = program_.State(program_.Root());
    std::string changes;
    for (const auto& [name, what] : before_)
      if (after[name] != what) changes += name + " was changed or removed\n";
    for (const auto& [name, what] : after)
      if (!before_.contains(name)) changes += name + " is new\n";
    EXPECT_TRUE(changes.empty()) << changes;
  }
  std::string InGame(const std::string& text) const { return program_.Game() + "\\" + text; }
  std::string InWorking(const std::string& text) const { return InGame("Routes\\Quillon-route\\" + text); }

  TestProgram program_;
  std::map<std::string, std::string> before_;
  int status_ = 0;
};

TEST_F(FailedLoadTest, AnUnreadableRouteFileChangesNothing) {
  const std::string whole = ZipBytes(Route());
  for (const auto& bytes : {std::string(), std::string("no zip at all"), std::string(5000, 'P'),
                            whole.substr(0, whole.size() / 2), whole.substr(0, whole.size() - 30)}) {
    LoadStorm([&] { WriteBytes(Storm(), bytes); });
    SCOPED_TRACE("of " + std::to_string(bytes.size()) + " bytes");
    ExpectError(0, program_.App() + "\\routes\\storm.qnz");
    ExpectNothingChanged();
  }
}

TEST_F(FailedLoadTest, AHarmfulEntryChangesNothing) {
  const std::vector<ZipEntry> harmful = {
      {.name = "R/../../evil.s", .data = "x"},
      {.name = "..\\evil.s", .data = "x"},
      {.name = "R/.. /evil.s", .data = "x"},
      {.name = "xy../R/evil.s", .data = "x"},  // "r\" is cut off the front of what holds it
      {.name = "xyaux/R/b.s", .data = "x"},
      {.name = "R/a?.s", .data = "x"},
      {.name = "R/a*.s", .data = "x"},
      {.name = "R/a:b.s", .data = "x"},
      {.name = "R/a\x07.s", .data = "x"},
      {.name = "R/a\x1F.s", .data = "x", .utf8Flag = true},
      {.name = "R/con.s", .data = "x"},
      {.name = "R/Lpt1/b.s", .data = "x"},
      {.name = "R/" + std::string(300, 'n'), .data = "x"},
      {.name = "R/secret.s", .data = "x", .encrypted = true},
      {.name = "R/method.s", .data = "x", .toldMethod = 77},
      {.name = "R/Shapes", .data = "a file where another entry needs a folder"}};
  for (const auto& entry : harmful) {
    SCOPED_TRACE(entry.name);
    LoadStorm([&] { MakeZip(Storm(), Route({entry})); });
    EXPECT_EQ(status_, 1);
    EXPECT_NE(program_.LastError(), 0);
    EXPECT_TRUE(program_.LastErrorPath().starts_with(program_.App() + "\\routes\\storm.qnz"));
    ExpectNothingChanged();
  }
}

TEST_F(FailedLoadTest, AFileWhereAFolderIsWantedChangesNothing) {
  const std::vector<ZipEntry> entries = {{.name = "R/World/w.w", .data = "w"},
                                         {.name = "R/forest.dat/inner.s", .data = "x"}};
  LoadStorm([&] { MakeZip(Storm(), entries); });
  ExpectError(0, InWorking("forest.dat"));
  ExpectNothingChanged();
  LoadStorm([&] {
    MakeZip(Storm(), Route());
    program_.Remove(program_.WorkingPath("services"));
    program_.Write(program_.WorkingPath("services"), "a file");
  });
  ExpectError(75, InWorking("services"));
  ExpectNothingChanged();
}

TEST_F(FailedLoadTest, AFileThatGoesIsInNobodysWay) {
  LoadStorm([&] { MakeZip(Storm(), Route({{.name = "R/valley.s/inner.s", .data = "inner"}})); });
  EXPECT_EQ(status_, 0) << program_.Last("error");
  EXPECT_EQ(program_.ReadBytes(program_.WorkingPath("valley.s\\inner.s")), "inner");
}

TEST_F(FailedLoadTest, ATakenBackupNameChangesNothing) {
  LoadStorm([&] {
    MakeZip(Storm(), Route({{.name = "R/SigCfg.dat", .data = "of the route"}}));
    program_.Write(program_.WorkingPath("ts-bak-sigcfg.dat"), "left over");
  });
  ExpectError(58, InWorking("ts-bak-sigcfg.dat"));
  ExpectNothingChanged();
  program_.Remove(program_.WorkingPath("ts-bak-sigcfg.dat"));
  LoadStorm([&] {
    MakeZip(Storm(), Route({{.name = "R/sigcfg.dat", .data = "1"}, {.name = "R/SIGCFG.dat", .data = "2"}}));
  });
  ExpectError(58, InWorking("ts-bak-sigcfg.dat"));
  ExpectNothingChanged();
}

TEST_F(FailedLoadTest, MoreThanTheDiskHoldsChangesNothing) {
  LoadStorm([&] {
    MakeZip(Storm(),
            Route({{.name = "R/huge.s", .data = "x", .deflated = true, .toldSize = std::uint64_t{1} << 50}}));
  });
  ExpectError(61, program_.LastErrorPath());
  ExpectNothingChanged();
}

TEST_F(FailedLoadTest, MissingListsAndFoldersChangeNothing) {
  for (const std::string list : {"current.tsl", "default.tsl"}) {
    const std::string path = program_.App() + "\\resources\\Do_Not_Delete!\\" + list;
    const std::string bytes = program_.ReadBytes(path);
    LoadStorm([&] { program_.Remove(path); });
    ExpectError(53, path);
    ExpectNothingChanged();
    program_.Write(path, bytes);
  }
  program_.Write(program_.AppPath("routes\\consists\\storm\\new.con"), "consist");
  for (const std::string folder : {"TRAINS\\CONSISTS", "TRAINS"}) {
    LoadStorm([&] { program_.Remove(program_.GamePath(folder)); });
    ExpectError(76, InGame("TRAINS\\CONSISTS"));
    ExpectNothingChanged();
  }
  program_.Remove(program_.AppPath("routes\\consists\\storm"));
  program_.Remove(
      program_.AppPath("routes\\activities\\activities\\storm"));  // frmNoAct asks for no working route
  LoadStorm([&] { program_.Remove(program_.WorkingPath("")); });
  ExpectError(76, InGame("Routes\\Quillon-route"));
  ExpectNothingChanged();
}

// Nobody takes the mark off these two: neither off a backup whose place is taken, nor off a track texture.
TEST_F(FailedLoadTest, AReadOnlyBackupThatHasToGoChangesNothing) {
  LoadStorm([&] {
    program_.Write(program_.WorkingPath("x.s"), "stands");
    program_.Write(program_.WorkingPath("ts-bak-x.s"), "is to go");
    MakeReadOnly(program_.WorkingPath("ts-bak-x.s"));
    program_.Write(program_.AppPath("resources\\Do_Not_Delete!\\default.tsl"),
                   InWorking("ts-bak-x.s") + "\r\n");
  });
  ExpectError(75, InWorking("ts-bak-x.s"));
  ExpectNothingChanged();
}

TEST_F(FailedLoadTest, AReadOnlyTrackTextureChangesNothing) {
  const std::string texture = "Textures\\ACleanTrack1.ace";
  LoadStorm([&] {
    program_.Write(program_.GamePath("Routes\\USA1\\" + texture), "of the game");
    program_.Write(program_.WorkingPath(texture), "old");
    MakeReadOnly(program_.WorkingPath(texture));
  });
  ExpectError(75, InWorking(texture));
  ExpectNothingChanged();
}

TEST_F(FailedLoadTest, DamagedDataAreNeverCommittedAndTheNextLoadMendsAll) {
  TestProgram undisturbed;
  for (TestProgram* program : {&program_, &undisturbed})
    program->StoreRoute("hill", "Hill Line", Route({{.name = "R/hill.s", .data = "of the hill"}}));
  undisturbed.FirstRun();
  ASSERT_EQ(undisturbed.Run("load", "Hill Line"), 0);
  const auto expected = undisturbed.State(undisturbed.WorkingPath(""));
  const std::string large(300'000, 'q');
  const std::vector<ZipEntry> damaged = {
      {.name = "R/bad.s", .data = "x", .badCrc = true},
      {.name = "R/bad.s", .data = large, .deflated = true, .badCrc = true},
      {.name = "R/bad.s", .data = large, .deflated = true, .badData = true},
      {.name = "R/bad.s", .data = large, .deflated = true, .toldSize = 100}};
  for (const auto& entry : damaged) {
    LoadStorm([&] { MakeZip(Storm(), Route({entry, {.name = "R/after.s", .data = "after"}})); });
    ExpectError(0, program_.App() + "\\routes\\storm.qnz");
    EXPECT_FALSE(program_.Exists(program_.WorkingPath("bad.s")));
    EXPECT_EQ(program_.Run("load", "Hill Line"), 0) << program_.Last("error");
    EXPECT_EQ(program_.State(program_.WorkingPath("")), expected);
    EXPECT_EQ(program_.Run("load", "Valley Line"), 0) << program_.Last("error");
  }
}

TEST_F(FailedLoadTest, AnUnknownRouteIsRefused) {
  EXPECT_EQ(program_.Run("load", "No Such Line"), 3);
  EXPECT_TRUE(program_.Events("error").empty());
  EXPECT_EQ(program_.Ini("routes.ini", "Current", "Loaded"), "valley");
}

}  // namespace
}  // namespace quillon
