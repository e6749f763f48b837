// The load driver: what leaves the working route, what comes in, and what is told meanwhile.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

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

std::vector<ZipEntry> Hill() {
  return {{.name = "Hill/World/w.w", .data = "world"}, {.name = "Hill/Hill.trk", .data = "hill"}};
}

class LoadTest : public testing::Test {
 protected:
  LoadTest() {
    EXPECT_EQ(program_.FirstRun(), 0);
    defaults_ = program_.Tree(program_.WorkingPath(""));
    program_.StoreRoute("valley", "Valley Line", Valley());
    program_.StoreRoute("hill", "Hill Line", Hill());
  }

  void Load(const std::string& name) {
    EXPECT_EQ(program_.Run("load", name), 0) << program_.Last("error");
    EXPECT_EQ(program_.Ini("routes.ini", "Current", "Loaded"), program_.Ini("routes.ini", name, "Zip"));
  }
  std::string Working(std::string_view name) const { return program_.ReadBytes(program_.WorkingPath(name)); }
  bool InWorking(std::string_view name) const { return program_.Exists(program_.WorkingPath(name)); }
  void Play(std::string_view name, std::string_view bytes = "played") const {
    program_.Write(program_.WorkingPath(name), bytes);
  }
  std::string Store(const std::string& kind, const std::string& zip) const {
    return program_.AppPath("routes\\" + kind + "\\" + zip);
  }
  std::string ListPath(const std::string& name) const {
    return program_.AppPath("resources\\Do_Not_Delete!\\" + name);
  }
  /// The lines of a list, less the working route in front.
  Strings List(const std::string& name) const {
    const std::string front = program_.Game() + "\\Routes\\Quillon-route\\";
    Strings lines = Lines(program_.ReadBytes(ListPath(name)));
    for (auto& line : lines) {
      EXPECT_TRUE(line.starts_with(front)) << line;
      line.erase(0, front.size());
    }
    return lines;
  }
  void WriteList(const std::string& name, const Strings& belowWorking) const {
    std::string text = "\r\n";
    for (const auto& line : belowWorking)
      text += program_.Game() + "\\Routes\\Quillon-route\\" + line + "\r\n\r\n";
    program_.Write(ListPath(name), text);
  }
  static void MakeReadOnly(const std::string& hostPath) { fs::permissions(hostPath, fs::perms(0444)); }

  TestProgram program_;
  std::map<std::string, std::string> defaults_;  // the working route without a route in it
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
  EXPECT_EQ(program_.Tree(program_.WorkingPath("")), expected);
  EXPECT_TRUE(fs::exists(fs::path(program_.Game()) / "ROUTES/Quillon-route/new/deep/a.txt"));
}

TEST_F(LoadTest, TellsWhatItDoesInTheOldOrder) {
  Load("Valley Line");
  EXPECT_EQ(
      program_.Captions("frmLoad"),
      (Strings{"Initializing parameters...", "Transferring route data...", "Transferring activity data...",
               "Transferring path data...", "Processing custom instructions...", "Finished loading route!"}));
  int value = -1;
  std::map<std::string, int> valueAt;
  std::map<std::string, Event> last;
  for (const auto& event : program_.All()) {
    if (event.value("screen", "") != "frmLoad") continue;
    last[event.value("control", event["event"])] = event;
    if (event["event"] == "bar") value = event["value"];
    if (event["event"] == "caption") valueAt[event["text"]] = value;
  }
  EXPECT_EQ(valueAt["Initializing parameters..."], 0);
  EXPECT_EQ(valueAt["Transferring path data..."], 100);
  EXPECT_EQ(last["bar"]["value"], 100);
  EXPECT_EQ(last["bar"]["maximum"], 100);
  EXPECT_EQ(last["colour"]["colour"], 49152);
  EXPECT_EQ(last["lblMessage"]["visible"], true);
  EXPECT_EQ(last["lblRouteName"]["visible"], false);
  EXPECT_EQ(
      last["lblMessage"]["text"],
      "Valley Line is now loaded into Train Simulator.\r\n\r\nClick 'Exit' to close Quillon, and then start "
      "Train Simulator to drive the route.\r\n\r\nValley Line will remain as a drivable route in Train "
      "Simulator until you decide to load another route with Quillon.");
  EXPECT_EQ(program_.Last("main")["lblLoaded"], "Currently loaded route");
}

TEST_F(LoadTest, SizeMessageGoesByTheNumberOfEntries) {
  const std::map<std::size_t, std::string> words = {{800, ""},      {801, " large "}, {1700, " large "},
                                                    {1701, "huge"}, {1998, "huge"},   {1999, "massive"}};
  for (const auto& [count, word] : words) {
    std::vector<ZipEntry> entries;
    for (std::size_t i = 0; i < count; ++i)
      entries.push_back({.name = "f" + std::to_string(i), .folder = true});
    MakeZip(program_.AppPath("routes\\hill.qnz"), entries);
    Load("Hill Line");
    std::string shown;
    for (const auto& event : program_.Events("text"))
      if (event["control"] == "lblFirstMessage" && event["visible"]) shown = event["text"];
    EXPECT_EQ(shown.empty(), word.empty()) << count << ": " << shown;
    EXPECT_TRUE(Contains(shown, word)) << count << ": " << shown;
  }
}

TEST_F(LoadTest, TheNextLoadPutsAwayWhatTheUserChanged) {
  Load("Valley Line");
  program_.Write(Store("Saves", "valley") + "\\stale.sav", "stale");
  program_.Write(Store("activities\\paths", "valley") + "\\stale.pat", "stale");
  for (const char* name : {"one.sav", "Two.SAV", "note.txt"})
    program_.Write(program_.GamePath("SAVES\\Quillon-route\\" + std::string(name)), name);
  program_.Remove(program_.WorkingPath("activities\\valley.act"));
  for (const char* name : {"activities\\own.act", "paths\\own.pat", "services\\own.srv", "traffic\\own.trf"})
    Play(name);
  const Strings kinds = {"activities", "paths", "services", "traffic"};
  std::map<std::string, std::map<std::string, std::string>> played;
  for (const auto& kind : kinds) played[kind] = program_.Tree(program_.WorkingPath(kind));

  Load("Hill Line");
  EXPECT_EQ(program_.Names(Store("Saves", "valley")), (Strings{"one.sav", "two.sav"}));
  EXPECT_TRUE(program_.Names(program_.GamePath("SAVES\\Quillon-route")).empty());
  for (const auto& kind : kinds) {
    EXPECT_EQ(program_.Tree(Store("activities\\" + kind, "valley")), played[kind]) << kind;
    EXPECT_EQ(program_.Names(program_.WorkingPath(kind)),
              kind == "activities" ? Strings{"hill.act"} : Strings{});
  }

  Load("Valley Line");
  for (const auto& kind : kinds) EXPECT_EQ(program_.Tree(program_.WorkingPath(kind)), played[kind]) << kind;
  EXPECT_EQ(program_.Names(program_.GamePath("SAVES\\Quillon-route")), (Strings{"one.sav", "two.sav"}));
}

TEST_F(LoadTest, TheNextLoadTakesTheRouteOutFileByFile) {
  MakeReadOnly(program_.WorkingPath("forest.dat"));
  Load("Valley Line");
  MakeReadOnly(program_.WorkingPath("new\\deep\\a.txt"));
  MakeReadOnly(program_.WorkingPath("shapes\\ts-bak-signal.s"));
  Play("textures\\unlisted.ace");
  for (const char* terrain : {"tiles\\x_e.raw", "tiles\\x.t", "lo_tiles\\x_n.raw", "lo_tiles\\x.t"})
    Play(terrain);
  MakeReadOnly(program_.WorkingPath("lo_tiles\\x.t"));
  Play("tiles\\x.txt");
  Load("Hill Line");
  auto expected = defaults_;
  expected["textures\\unlisted.ace"] = expected["tiles\\x.txt"] = "played";
  expected["world\\w.w"] = "world";
  expected["hill.trk"] = "hill";
  expected["activities\\hill.act"] = "activity of hill";
  EXPECT_EQ(program_.Tree(program_.WorkingPath("")), expected);
  EXPECT_EQ(List("current.tsl"), (Strings{"world\\w.w", "hill.trk"}));
  EXPECT_EQ(List("default.tsl"), Strings{});
}

TEST_F(LoadTest, TheLoadedRouteMakesTheRoundTrip) {
  Load("Valley Line");
  const auto before = program_.Tree(program_.WorkingPath(""));
  program_.Write(program_.GamePath("SAVES\\Quillon-route\\a.sav"), "saved");
  Play("paths\\own.pat");
  Load("Valley Line");
  auto expected = before;
  expected["paths\\own.pat"] = "played";
  EXPECT_EQ(program_.Tree(program_.WorkingPath("")), expected);
  EXPECT_EQ(program_.ReadBytes(program_.GamePath("SAVES\\Quillon-route\\a.sav")), "saved");
  EXPECT_EQ(List("default.tsl").size(), 2u);
}

TEST_F(LoadTest, ARouteThatLeftTheCatalogueIsNotPutAway) {
  Load("Valley Line");
  program_.Write(program_.GamePath("SAVES\\Quillon-route\\a.sav"), "saved");
  Play("paths\\own.pat");
  program_.Remove(program_.AppPath("routes\\valley.qnz"));
  Load("Hill Line");
  EXPECT_FALSE(program_.Exists(Store("Saves", "valley")));
  EXPECT_FALSE(program_.Exists(Store("activities\\paths", "valley")));
  EXPECT_EQ(program_.Names(program_.GamePath("SAVES\\Quillon-route")), Strings{"a.sav"});
  EXPECT_FALSE(InWorking("paths\\own.pat"));
  EXPECT_FALSE(InWorking("valley.trk"));
  EXPECT_EQ(Working("forest.dat"), "template forest");
}

TEST_F(LoadTest, BackupsComeBackByTheListAndTheTargetWins) {
  for (const char* name :
       {"ts-bak-alone.s", "ts-bak-both.s", "both.s", "ts-bak-old\\ts-bak-moved.s", "unlisted.s"})
    Play(name, name);
  Play("old\\there.s");
  Play("listed.s");
  MakeReadOnly(program_.WorkingPath("listed.s"));
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

TEST_F(LoadTest, TwoEntriesOfOneNameChangeNothing) {
  program_.StoreRoute("twice", "Twice",
                      {{.name = "R/World/A.w", .data = "first"},
                       {.name = "R/World/a.W.", .data = "second", .deflated = true}});
  const auto before = program_.State(program_.WorkingPath(""));
  EXPECT_EQ(program_.Run("load", "Twice"), 1);
  EXPECT_EQ(program_.LastError(), 58);
  EXPECT_EQ(program_.State(program_.WorkingPath("")), before);
}

TEST_F(LoadTest, LinksInTheActivityFoldersAreNotFollowed) {
  const fs::path outside = fs::path(program_.Root()) / "outside";
  program_.Write(outside.string() + "/kept.act", "kept");
  Load("Valley Line");
  fs::create_directory_symlink(outside, program_.WorkingPath("activities") + "/link");
  program_.Remove(program_.WorkingPath("paths"));
  fs::create_directory_symlink(outside, program_.WorkingPath("paths"));
  Load("Hill Line");
  EXPECT_EQ(program_.Tree(outside.string()), (std::map<std::string, std::string>{{"kept.act", "kept"}}));
  EXPECT_FALSE(fs::is_symlink(program_.WorkingPath("paths")));
}

TEST_F(LoadTest, OddNamesOfRoutesAndFilesWork) {
  const std::string zip = "M\xC3\xBChle & S\xC3\xB6hne v1.2", name = "M\xC3\xBChle = [S\xC3\xBC\x64] 100%";
  program_.StoreRoute(zip, name,
                      {{.name = "R/W\xC3\x89/\xC3\x84 b.s", .data = "odd", .utf8Flag = true},
                       {.name = "R/World/w.w", .data = "w"},
                       {.name = "C:\\R\\Shapes\\drive.s", .data = "drive"}});
  Load(name);
  EXPECT_EQ(Working("w\xC3\xA9\\\xC3\xA4 b.s") + Working("shapes\\drive.s"), "odddrive");
  EXPECT_EQ(program_.Last("main")["lblRouteName"], name);
  program_.Write(program_.GamePath("SAVES\\Quillon-route\\a.sav"), "saved");
  Load("Hill Line");
  EXPECT_EQ(program_.Names(Store("Saves", zip)), Strings{"a.sav"});
}

}  // namespace
}  // namespace quillon
