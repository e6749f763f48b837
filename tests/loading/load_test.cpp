// The load driver: what leaves the working route, what comes in, and what is told meanwhile.
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

const Strings kKinds = {"activities", "paths", "services", "traffic"};

std::vector<ZipEntry> Valley() {
  return {{.name = "Valley/", .folder = true},
          {.name = "Valley/Valley.trk", .data = TrackFile("Valley Line"), .deflated = true},
          {.name = "Valley/Shapes/Signal.S", .data = "signal of the valley"},
          {.name = "Valley/Tiles/-01.t", .data = "tile"},
          {.name = "Valley/Tiles/-01_y.raw", .data = "heights"},
          {.name = "Valley/Tiles/-01_E.raw", .data = "errors"},
          {.name = "Valley/World/w.BK", .data = "backup"},
          {.name = "Valley/Local.con", .data = "consist"},
          {.name = "Valley/Forest.dat", .data = "forest of the valley", .deflated = true},
          {.name = "Valley/New/Deep/a.txt", .data = "new"},
          {.name = "Docs/Readme.txt", .data = "readme"}};
}

class LoadTest : public ProgramTest {
 protected:
  LoadTest() {
    EXPECT_EQ(FirstRun(), 0);
    Remove(GamePath("Quillon_Extras\\EnvFiles"));  // which every load would bring
    defaults_ = Tree(WorkingPath(""));
    StoreRoute("valley", "Valley Line", Valley());
    StoreRoute("hill", "Hill Line", {Entry("Hill/World/w.w", "world"), Entry("Hill/Hill.trk", "hill")});
  }

  void Load(const std::string& name) {
    EXPECT_EQ(Run("load", name), 0) << Last("error");
    EXPECT_EQ(Loaded(), Ini("routes.ini", name, "Zip"));
  }
  bool InWorking(const std::string& name) const { return Exists(WorkingPath(name)); }
  NamedTexts Kind(const std::string& kind) const { return Tree(WorkingPath(kind)); }
  std::string Store(const std::string& below) const { return AppPath("routes\\" + below); }
  std::string Saves(const std::string& name) const { return GamePath("SAVES\\Quillon-route\\" + name); }
  /// The lines of a list, less the working route in front.
  Strings List(const std::string& name) const {
    const std::string front = Game() + "\\Routes\\Quillon-route\\";
    Strings lines = Lines(ReadBytes(DataPath(name)));
    for (auto& line : lines) {
      EXPECT_TRUE(line.starts_with(front)) << line;
      line.erase(0, front.size());
    }
    return lines;
  }
  void WriteList(const std::string& name, const Strings& belowWorking) const {
    std::string text = "\r\n";
    for (const auto& line : belowWorking) text += Game() + "\\Routes\\Quillon-route\\" + line + "\r\n\r\n";
    Write(DataPath(name), text);
  }

  NamedTexts defaults_;  // the working route without a route in it
};

TEST_F(LoadTest, TheFirstRouteLiesOverTheDefaults) {
  Load("Valley Line");
  EXPECT_EQ(List("current.tsl"),
            (Strings{"valley.trk", "shapes\\signal.s", "tiles\\-01.t", "tiles\\-01_y.raw", "forest.dat",
                     "new\\deep\\a.txt", "docs\\readme.txt"}));
  EXPECT_EQ(List("default.tsl"), (Strings{"shapes\\ts-bak-signal.s", "ts-bak-forest.dat"}));
  auto expected = defaults_;
  for (const auto& entry : Valley()) {
    std::string name = LowerCase(ReplaceAll(entry.name, "/", "\\"));
    if (name.starts_with("valley\\")) name.erase(0, 7);
    if (!name.empty() && !name.ends_with("_e.raw") && !name.ends_with(".bk") && !name.ends_with(".con"))
      expected[name] = entry.data;
  }
  expected["shapes\\ts-bak-signal.s"] = "global shape";
  expected["ts-bak-forest.dat"] = "template forest";
  expected["activities\\valley.act"] = "activity of valley";
  EXPECT_EQ(Kind(""), expected);
  EXPECT_TRUE(fs::exists(Game() + "/ROUTES/Quillon-route/new/deep/a.txt"));
}

TEST_F(LoadTest, TellsWhatItDoesInTheOldOrder) {
  Load("Valley Line");
  EXPECT_EQ(Captions("frmLoad"), (Strings{"Initializing parameters...", "Transferring route data...",
                                          "Transferring activity data...", "Transferring path data...",
                                          "Processing custom instructions...", "Finished loading route!"}));
  std::map<std::string, Event> last;
  for (const auto& event : All())
    if (event.value("screen", "") == "frmLoad") last[event.value("control", event["event"])] = event;
  EXPECT_EQ(last["bar"], (Event{{"event", "bar"}, {"screen", "frmLoad"}, {"value", 100}, {"maximum", 100}}));
  EXPECT_EQ(last["colour"]["colour"], 49152);
  EXPECT_TRUE(last["lblMessage"]["visible"] == true && last["lblRouteName"]["visible"] == false);
  EXPECT_EQ(
      last["lblMessage"]["text"],
      "Valley Line is now loaded into Train Simulator.\r\n\r\nClick 'Exit' to close Quillon, and then start "
      "Train Simulator to drive the route.\r\n\r\nValley Line will remain as a drivable route in Train "
      "Simulator until you decide to load another route with Quillon.");
  EXPECT_EQ(MainTexts({"lblLoaded"}), "Currently loaded route");
}

TEST_F(LoadTest, SizeMessageGoesByTheNumberOfEntries) {
  const std::map<std::size_t, std::string> words = {{800, ""},      {801, " large "}, {1700, " large "},
                                                    {1701, "huge"}, {1998, "huge"},   {1999, "massive"}};
  for (const auto& [count, word] : words) {
    std::vector<ZipEntry> entries(count, {.folder = true});
    for (auto& entry : entries) entry.name = "f" + std::to_string(&entry - entries.data());
    MakeZip(Store("hill.qnz"), entries);
    Load("Hill Line");
    std::string shown;
    for (const auto& event : Events("text"))
      if (event["control"] == "lblFirstMessage" && event["visible"]) shown = event["text"];
    EXPECT_TRUE(shown.empty() == word.empty() && Contains(shown, word)) << count << ": " << shown;
  }
}

TEST_F(LoadTest, TheNextLoadPutsAwayWhatTheUserChanged) {
  Load("Valley Line");
  Write(Store("Saves\\valley\\stale.sav"), "stale");
  Write(Store("activities\\paths\\valley\\stale.pat"), "stale");
  for (const std::string name : {"one.sav", "Two.SAV", "note.txt"}) Write(Saves(name), name);
  Remove(WorkingPath("activities\\valley.act"));
  std::map<std::string, NamedTexts> played;
  for (const auto& kind : kKinds) {
    Play(kind + "\\own.x");
    played[kind] = Kind(kind);
  }

  Load("Hill Line");
  EXPECT_EQ(Names(Store("Saves\\valley")), (Strings{"one.sav", "two.sav"}));
  EXPECT_TRUE(Names(Saves("")).empty());
  for (const auto& kind : kKinds) {
    EXPECT_EQ(Tree(Store("activities\\" + kind + "\\valley")), played[kind]) << kind;
    EXPECT_EQ(Names(WorkingPath(kind)), kind == "activities" ? Strings{"hill.act"} : Strings{});
  }

  Load("Valley Line");
  for (const auto& kind : kKinds) EXPECT_EQ(Kind(kind), played[kind]) << kind;
  EXPECT_EQ(Names(Saves("")), (Strings{"one.sav", "two.sav"}));
}

TEST_F(LoadTest, TheNextLoadTakesTheRouteOutFileByFile) {
  MakeReadOnly(WorkingPath("forest.dat"));
  Load("Valley Line");
  for (const std::string name : {"textures\\unlisted.ace", "tiles\\x.txt", "tiles\\x_e.raw", "tiles\\x.t",
                                 "lo_tiles\\x_n.raw", "lo_tiles\\x.t"})
    Play(name);
  for (const std::string name : {"new\\deep\\a.txt", "shapes\\ts-bak-signal.s", "lo_tiles\\x.t"})
    MakeReadOnly(WorkingPath(name));
  Load("Hill Line");
  auto expected = defaults_;
  expected["textures\\unlisted.ace"] = expected["tiles\\x.txt"] = "played";
  expected["world\\w.w"] = "world";
  expected["hill.trk"] = "hill";
  expected["activities\\hill.act"] = "activity of hill";
  EXPECT_EQ(Kind(""), expected);
  EXPECT_EQ(List("current.tsl"), (Strings{"world\\w.w", "hill.trk"}));
  EXPECT_EQ(List("default.tsl"), Strings{});
}

TEST_F(LoadTest, TheLoadedRouteMakesTheRoundTrip) {
  Load("Valley Line");
  Write(Saves("a.sav"), "saved");
  Play("paths\\own.pat");
  const auto expected = Kind("");
  Load("Valley Line");
  EXPECT_EQ(Kind(""), expected);
  EXPECT_EQ(ReadBytes(Saves("a.sav")), "saved");
  EXPECT_EQ(List("default.tsl").size(), 2u);
}

TEST_F(LoadTest, ARouteThatLeftTheCatalogueIsNotPutAway) {
  Load("Valley Line");
  Write(Saves("a.sav"), "saved");
  Play("paths\\own.pat");
  Remove(Store("valley.qnz"));
  Load("Hill Line");
  EXPECT_FALSE(Exists(Store("Saves\\valley")) || Exists(Store("activities\\paths\\valley")));
  EXPECT_EQ(Names(Saves("")), Strings{"a.sav"});
  EXPECT_FALSE(InWorking("paths\\own.pat") || InWorking("valley.trk"));
  EXPECT_EQ(Working("forest.dat"), "template forest");
}

TEST_F(LoadTest, BackupsComeBackByTheListAndTheTargetWins) {
  for (const std::string name : {"ts-bak-alone.s", "ts-bak-both.s", "both.s", "ts-bak-old\\ts-bak-moved.s",
                                 "unlisted.s", "listed.s", "old\\there.s"})
    Play(name, name);
  MakeReadOnly(WorkingPath("listed.s"));
  WriteList("default.tsl",
            {"ts-bak-alone.s", "ts-bak-none.s", "ts-bak-both.s", "ts-bak-old\\ts-bak-moved.s"});
  WriteList("current.tsl", {"none.s", "LISTED.s"});
  Load("Hill Line");
  EXPECT_EQ(Working("alone.s"), "ts-bak-alone.s");
  EXPECT_EQ(Working("both.s"), "both.s");
  EXPECT_EQ(Working("old\\moved.s"), "ts-bak-old\\ts-bak-moved.s");
  for (const char* name : {"ts-bak-alone.s", "ts-bak-both.s", "ts-bak-old\\ts-bak-moved.s", "listed.s"})
    EXPECT_FALSE(InWorking(name)) << name;
  EXPECT_TRUE(InWorking("unlisted.s"));
}

TEST_F(LoadTest, LinksInTheActivityFoldersAreNotFollowed) {
  if (!HasLinks()) GTEST_SKIP() << kNoLinks;
  const std::string outside = Root() + "/outside";
  Write(outside + "/kept.act", "kept");
  Load("Valley Line");
  MakeFolderLink(ToPath(outside), ToPath(WorkingPath("activities") + "/link"));
  Remove(WorkingPath("paths"));
  MakeFolderLink(ToPath(outside), ToPath(WorkingPath("paths")));
  Load("Hill Line");
  EXPECT_EQ(Tree(outside), (NamedTexts{{"kept.act", "kept"}}));
  EXPECT_FALSE(fs::is_symlink(WorkingPath("paths")));
}

TEST_F(LoadTest, OddNamesOfRoutesAndFilesWork) {
  const std::string zip = "M\xC3\xBChle & S\xC3\xB6hne v1.2", name = "M\xC3\xBChle = [S\xC3\xBC\x64] 100%";
  StoreRoute(zip, name,
             {{.name = "R/W\xC3\x89/\xC3\x84 b.s", .data = "odd", .utf8Flag = true},
              Entry("R/World/w.w", "w"),
              Entry("C:\\R\\Shapes\\drive.s", "drive")});
  Load(name);
  EXPECT_EQ(Working("w\xC3\xA9\\\xC3\xA4 b.s") + Working("shapes\\drive.s"), "odddrive");
  EXPECT_EQ(MainTexts({"lblRouteName"}), name);
  Write(Saves("a.sav"), "saved");
  Load("Hill Line");
  EXPECT_EQ(Names(Store("Saves\\" + zip)), Strings{"a.sav"});
}

}  // namespace
}  // namespace quillon
