// Loads that can't be carried out: what can be known beforehand changes nothing, what can't is never
// committed.
#include <functional>
#include <optional>

#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

std::vector<ZipEntry> Route(const std::vector<ZipEntry>& extra = {}) {
  std::vector<ZipEntry> entries = {Entry("R/Tiles/t.t", "tile"),
                                   Entry("R/forest.dat", "forest of the route"),
                                   {.name = "R/Shapes/own.s", .data = "shape", .deflated = true}};
  entries.insert(entries.end(), extra.begin(), extra.end());
  return entries;
}

/// A good route is loaded; another one, "Storm", is selected and shall not come in.
class FailedLoadTest : public ProgramTest {
 protected:
  FailedLoadTest() {
    EXPECT_EQ(FirstRun(), 0);
    StoreRoute("valley", "Valley Line", Route({Entry("R/valley.s", "of the valley")}));
    StoreRoute("storm", "Storm", Route());
    EXPECT_EQ(Run("load", "Valley Line"), 0);
    Write(GamePath("SAVES\\Quillon-route\\a.sav"), "saved");
    Play("paths\\played.pat");
  }

  /// Loads "Storm" after `spoil` has been at work behind the selection. The load ends with an error that says
  /// what, where and while doing what; `number` 0 stands for any.
  void ExpectError(const std::function<void()>& spoil, int number, const std::string& path) {
    KeepSession();
    EXPECT_EQ(Run("pick", "Storm"), 0);
    spoil();
    before_ = State(Root());
    EXPECT_EQ(Run("load"), 1);
    KeepSession(false);
    const Event error = Last("error");
    EXPECT_TRUE(number == 0 ? LastError() != 0 : LastError() == number) << error;
    EXPECT_TRUE(EqualNoCase(LastErrorPath(), path)) << error << " is not at " << path;
    EXPECT_TRUE(error.value("text", "") != "" && error.value("step", "") != "") << error;
    EXPECT_EQ(Loaded(), "valley");
  }
  /// The same, and nothing is changed.
  void ExpectRefusal(const std::function<void()>& spoil, int number, const std::string& path) {
    ExpectError(spoil, number, path);
    auto after = State(Root());
    for (const auto& [name, what] : before_)
      EXPECT_EQ(after[name], what) << name << " was changed or removed";
    for (const auto& [name, what] : after) EXPECT_TRUE(before_.contains(name)) << name << " is new";
  }
  std::function<void()> With(const std::vector<ZipEntry>& extra) const {
    return [this, extra] { MakeZip(AppPath("routes\\storm.qnz"), Route(extra)); };
  }
  std::string InGame(const std::string& text) const { return Game() + "\\" + text; }
  std::string InWorking(const std::string& text) const { return InGame("Routes\\Quillon-route\\" + text); }

  const std::string storm_ = App() + "\\routes\\storm.qnz";
  NamedTexts before_;
};

TEST_F(FailedLoadTest, AnUnreadableRouteFileChangesNothing) {
  const std::string whole = ZipBytes(Route());
  for (const auto& bytes : {std::string(), whole.substr(0, whole.size() - 30)})
    ExpectRefusal([&] { Write(storm_, bytes); }, 0, storm_);
}

TEST_F(FailedLoadTest, AnEntryThatCantBePlacedChangesNothing) {
  const std::vector<ZipEntry> harmful = {Entry("..\\evil.s"),
                                         Entry("xyaux/R/b.s"),  // "r\" is cut off the front of what holds it
                                         {.name = "R/secret.s", .data = "x", .encrypted = true}};
  for (const auto& entry : harmful) {
    SCOPED_TRACE(entry.name);
    ExpectRefusal(With({entry}), 0, storm_);
  }
  ExpectRefusal(With({Entry("R/Shapes")}), 75, storm_ + "\\r\\shapes");  // another entry's folder
  ExpectRefusal(With({{.name = "R/huge.s", .data = "x", .toldSize = std::uint64_t{1} << 50}}), 61,
                Game() + "\\Routes\\Quillon-route");
  const std::vector<ZipEntry> inFile = {Entry("R/World/w.w"), Entry("R/forest.dat/inner.s")};
  ExpectRefusal([&] { MakeZip(AppPath("routes\\storm.qnz"), inFile); }, 0, InWorking("forest.dat"));
}

TEST_F(FailedLoadTest, AFileOfTheOldRouteIsInNobodysWayButAUsersIs) {
  Remove(WorkingPath("services"));
  Play("services");
  ExpectRefusal(With({}), 75, InWorking("services"));
  Remove(WorkingPath("services"));
  With({Entry("R/valley.s/inner.s", "inner")})();
  EXPECT_EQ(Run("load", "Storm"), 0) << Last("error");
  EXPECT_EQ(Working("valley.s\\inner.s"), "inner");
}

TEST_F(FailedLoadTest, ATakenBackupNameChangesNothing) {
  Play("ts-bak-sigcfg.dat", "left over");
  ExpectRefusal(With({Entry("R/SigCfg.dat")}), 58, InWorking("ts-bak-sigcfg.dat"));
  Remove(WorkingPath("ts-bak-sigcfg.dat"));
  ExpectRefusal(With({Entry("R/sigcfg.dat", "1"), Entry("R/SIGCFG.dat", "2")}), 58,
                InWorking("ts-bak-sigcfg.dat"));
}

TEST_F(FailedLoadTest, MissingListsAndFoldersChangeNothing) {
  for (const std::string list : {"current.tsl", "default.tsl"}) {
    const std::string path = App() + "\\resources\\Do_Not_Delete!\\" + list, bytes = ReadBytes(path);
    ExpectRefusal([&] { Remove(path); }, 53, path);
    Write(path, bytes);
  }
  Write(AppPath("routes\\consists\\storm\\new.con"), "consist");
  for (const std::string folder : {"TRAINS\\CONSISTS", "TRAINS"})
    ExpectRefusal([&] { Remove(GamePath(folder)); }, 76, InGame("TRAINS\\CONSISTS"));
  for (const std::string below :
       {"consists", "activities\\activities"})  // frmNoAct asks for no working route
    Remove(AppPath("routes\\" + below + "\\storm"));
  ExpectRefusal([&] { Remove(WorkingPath("")); }, 76, InGame("Routes\\Quillon-route"));
}

// Nobody takes the mark off a backup whose place is taken, nor off the records.
TEST_F(FailedLoadTest, AReadOnlyFileThatHasToChangeChangesNothing) {
  const auto takenBackup = [&] {
    Play("x.s");
    Play("ts-bak-x.s");
    MakeReadOnly(WorkingPath("ts-bak-x.s"));
    Write(DataPath("default.tsl"), InWorking("ts-bak-x.s") + "\r\n");
  };
  ExpectRefusal(takenBackup, 75, InWorking("ts-bak-x.s"));
  Write(DataPath("default.tsl"), "");
  for (const std::string record : {"routes.ini", "current.tsl", "default.tsl"}) {
    ExpectRefusal([&] { MakeReadOnly(DataPath(record)); }, 75,
                  App() + "\\resources\\Do_Not_Delete!\\" + record);
    fs::permissions(DataPath(record), fs::perms(0644));
  }
}

TEST_F(FailedLoadTest, AFolderWithoutPermissionChangesNothing) {
  if (!HasPermissions()) GTEST_SKIP() << "folders are shut in another way here";
  const std::string consists = "TRAINS\\CONSISTS", consist = "routes\\consists\\storm\\new.con";
  Strings folders = {"routes\\custom", "resources\\Do_Not_Delete!", "routes\\Saves\\valley"};
  for (const std::string kind : {"activities", "paths", "services", "traffic"})
    folders.push_back("routes\\activities\\" + kind + "\\valley");
  for (const auto& folder : folders) fs::create_directories(AppPath(folder));
  Write(AppPath(consist), "consist");
  const WithoutPrivileges user(Root());
  for (const auto& folder : folders) {
    std::optional<ShutFolder> shut;
    ExpectRefusal([&] { shut.emplace(AppPath(folder)); }, 75, App() + "\\" + folder);
  }
  for (const std::string folder : {"ACTIVITIES", "TEXTURES\\SNOW", "SHAPES"}) {
    std::optional<ShutFolder> shut;
    ExpectRefusal([&] { shut.emplace(WorkingPath(folder)); }, 75, InWorking(folder));
  }
  std::optional<ShutFolder> shut;
  ExpectRefusal([&] { shut.emplace(GamePath(consists)); }, 75, InGame(consists));
  shut.reset();
  Write(GamePath(consists + "\\new.con"), "the game has it");
  shut.emplace(GamePath(consists));
  EXPECT_EQ(Run("load", "Storm"), 0) << Last("error");
}

TEST_F(FailedLoadTest, DamagedDataAreNeverCommittedAndTheNextLoadMendsAll) {
  TestProgram undisturbed;
  for (TestProgram* program : {static_cast<TestProgram*>(this), &undisturbed})
    program->StoreRoute("hill", "Hill Line", Route({Entry("R/hill.s", "of the hill")}));
  undisturbed.FirstRun();
  ASSERT_EQ(undisturbed.Run("load", "Hill Line"), 0);
  const auto expected = undisturbed.State(undisturbed.WorkingPath(""));
  const std::string large(300'000, 'q');
  for (const auto& damaged :
       std::vector<ZipEntry>{{.name = "R/bad.s", .data = "x", .badCrc = true},
                             {.name = "R/bad.s", .data = large, .deflated = true, .badData = true}}) {
    ExpectError(With({damaged, Entry("R/after.s", "after")}), 0, storm_);
    EXPECT_FALSE(Exists(WorkingPath("bad.s")));
    EXPECT_EQ(Run("load", "Hill Line"), 0) << Last("error");
    EXPECT_EQ(State(WorkingPath("")), expected);
    EXPECT_EQ(Run("load", "Valley Line"), 0) << Last("error");
  }
}

TEST_F(FailedLoadTest, WhatWasCheckedCountsAlsoWhereItCannotBeNoted) {
  SetIni("checked.ini", "storm", "Damaged", "r\\old.s");
  MakeReadOnly(DataPath("checked.ini"));
  ExpectError(With({{.name = "R/new.s", .data = "shape", .badCrc = true}}), 321, storm_);
  EXPECT_EQ(Last("error").value("reason", ""), "the data of R\\new.s are damaged");
  With({})();
  EXPECT_EQ(Run("load", "Storm"), 0) << Last("error");
}

}  // namespace
}  // namespace quillon
