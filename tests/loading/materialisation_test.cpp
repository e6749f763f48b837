// What a load lays over the files of the route's archive: activities, consists, textures, extras, custom
// files.
#include "loading/Materialisation.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "headless/HeadlessFrontEnd.h"
#include "loading/LoadScreen.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

class LayersTest : public testing::Test {
 protected:
  LayersTest() {
    EXPECT_EQ(program_.FirstRun(), 0);
    Store({{.name = "Valley/World/w.w", .data = "world"}});
    program_.StoreRoute("hill", "Hill Line", {{.name = "Hill/World/h.w", .data = "world"}});
  }

  void Store(const std::vector<ZipEntry>& entries) const {
    program_.StoreRoute("valley", "Valley Line", entries);
  }
  void Load(const std::string& name = "Valley Line") {
    EXPECT_EQ(program_.Run("load", name), 0) << program_.Last("error");
  }
  /// Bytes of a file of the working route; empty when it is missing.
  std::string Working(const std::string& name) const {
    const std::string path = program_.WorkingPath(name);
    return program_.Exists(path) ? program_.ReadBytes(path) : "";
  }
  void PutInApp(const std::string& name, const std::string& bytes) const {
    program_.Write(program_.AppPath(name), bytes);
  }
  void PutInGame(const std::string& name, const std::string& bytes) const {
    program_.Write(program_.GamePath(name), bytes);
  }

  const std::string defaults_ = "resources\\Do_Not_Delete!\\misc_info\\default_activities\\";
  const std::string own_ = "routes\\activities\\", custom_ = "routes\\custom\\valley\\";
  const std::string consists_ = "routes\\consists\\valley\\", gameConsists_ = "TRAINS\\CONSISTS\\";
  TestProgram program_;
};

TEST_F(LayersTest, OwnActivitiesWinOverTheDefaults) {
  const Strings folders = {"activities\\", "paths\\", "services\\", "traffic\\"};
  for (const auto& folder : folders) {
    PutInApp(defaults_ + folder + "valley\\both.x", "default");
    fs::permissions(program_.AppPath(defaults_ + folder + "valley\\both.x"), fs::perms(0444));
    PutInApp(defaults_ + folder + "valley\\default.x", "default");
    PutInApp(own_ + folder + "valley\\both.x", "own");
    PutInApp(own_ + folder + "valley\\sub\\inner.x", "own");
  }
  Load();  // no default activity: the defaults stay away
  for (const auto& folder : folders) {
    EXPECT_EQ(Working(folder + "both.x") + Working(folder + "default.x"), "own") << folder;
    EXPECT_EQ(Working(folder + "sub\\inner.x") + Working(folder + "inner.x"), "") << folder;
  }
  PutInApp(defaults_ + "activities\\valley\\one.ACT", "default");
  Load();
  for (const auto& folder : folders)
    EXPECT_EQ(Working(folder + "both.x") + Working(folder + "default.x"), "owndefault") << folder;
}

TEST_F(LayersTest, ConsistsComeOnceAndStay) {
  for (const std::string name : {"New.con", "here.con", "moved.con", "notes.txt"})
    PutInApp(consists_ + name, "of the route");
  fs::permissions(program_.AppPath(consists_ + "New.con"), fs::perms(0444));
  PutInGame(gameConsists_ + "HERE.con", "of the game");
  PutInGame(gameConsists_ + "QN-Backed-up-consists\\Moved.con", "moved");
  Load();
  auto expected = program_.State(program_.GamePath(gameConsists_));
  EXPECT_EQ(expected["New.con"], "file: of the route");  // the read-only mark is gone
  EXPECT_EQ(expected["HERE.con"], "file: of the game");
  EXPECT_EQ(expected.size(), 5u);
  PutInGame(gameConsists_ + "new.con", "changed");
  expected["New.con"] = "file: changed";
  Load("Hill Line");
  Load();
  EXPECT_EQ(program_.State(program_.GamePath(gameConsists_)), expected);
}

TEST_F(LayersTest, OnlyACopiedConsistIsWorthANotice) {
  RecordedOutput output;
  HeadlessFrontEnd frontEnd(output, program_.options);
  RunningProgram running(program_.App(), frontEnd);
  SharedState& shared = running.Get().shared;
  shared.TrainSimPath = program_.Game();
  LoadScreen progress(running.Get());
  const auto noticeAfterCopying = [&] {
    shared.CustomConsistsAdded = false;
    Materialisation(running.Get(), progress, program_.WorkingPath(""), "valley").CopyConsists();
    return shared.CustomConsistsAdded;
  };
  EXPECT_FALSE(noticeAfterCopying());
  PutInApp(consists_ + "default.con", "of the route");
  EXPECT_FALSE(noticeAfterCopying());
  PutInApp(consists_ + "new.con", "of the route");
  EXPECT_TRUE(noticeAfterCopying());
  EXPECT_FALSE(noticeAfterCopying());
}

TEST_F(LayersTest, TheCustomTreeIsMadeOnceAndWhole) {
  Load();
  const auto tree = program_.State(program_.AppPath(custom_));
  EXPECT_EQ(tree.size(), 21u);
  for (const std::string folder :
       {"ENVFILES/TEXTURES", "Extras", "LO_TILES", "TERRTEX/SNOW", "TEXTURES/WINTERSNOW"})
    EXPECT_TRUE(tree.contains(folder)) << folder;
  program_.Remove(program_.AppPath(custom_ + "TEXTURES"));
  Load();
  EXPECT_FALSE(program_.Exists(program_.AppPath(custom_ + "TEXTURES")));
}

TEST_F(LayersTest, LaterLayersWin) {
  // Archive, then track textures, then extras, then custom files, then the archive's own folders Custom and
  // Stuffed.
  const std::string track = "textures\\acleantrack1.ace", snow = "textures\\snow\\acleantrack1.ace";
  const std::string wall = "textures\\atracktunwall.ace";
  std::vector<ZipEntry> entries = {{.name = "V\\World\\w.w", .data = "archive"},
                                   {.name = "V\\Stuffed\\Shapes\\c.s", .data = "Stuffed"}};
  for (const auto& name : Strings{track, snow, wall, "shapes\\a.s"})
    entries.push_back({.name = "V\\" + name, .data = "archive"});
  for (const char* name : {"b.s", "c.s"})
    entries.push_back({.name = std::string("V\\Custom\\Shapes\\") + name, .data = "Custom"});
  Store(entries);
  for (const auto& name : Strings{track, snow}) PutInGame("Routes\\USA1\\" + name, "track");
  for (const std::string name :
       {"Shapes\\a.s", "Shapes\\b.s", "swe_objects_1\\Shapes\\swe.s", "Extras\\never.x",
        "swe_objects_1\\Extras\\swe.x", "Terrtex\\Snow\\e.ace", "EnvFiles\\Textures\\e.ace"})
    PutInGame("Quillon_Extras\\" + name, "extra");
  for (const auto& name :
       Strings{snow, "Shapes\\A.s", "Shapes\\b.s", "top.dat", "Tutor\\t.txt", "Extras\\never.x"})
    PutInApp(custom_ + name, "custom");
  Load();
  const std::map<std::string, Strings> winners = {
      {"track", {track}},
      {"archive", {wall}},
      {"extra", {"shapes\\swe.s", "extras\\swe.x", "terrtex\\snow\\e.ace", "envfiles\\textures\\e.ace"}},
      {"custom", {snow, "shapes\\a.s", "top.dat", "tutor\\t.txt"}},
      {"Custom", {"shapes\\b.s"}},
      {"Stuffed", {"shapes\\c.s"}},
      {"", {"extras\\never.x"}},
  };
  for (const auto& [bytes, names] : winners)
    for (const auto& name : names) EXPECT_EQ(Working(name), bytes) << name;
}

TEST_F(LayersTest, CustomAndStuffedAreSpreadOverTheRoute) {
  const Strings textureFolders = {"terrtex\\",          "terrtex\\snow\\",        "textures\\",
                                  "textures\\autumn\\", "textures\\autumnsnow\\", "textures\\night\\",
                                  "textures\\snow\\",   "textures\\spring\\",     "textures\\springsnow\\",
                                  "textures\\winter\\", "textures\\wintersnow\\"};
  std::vector<ZipEntry> entries = {{.name = "V/World/w.w", .data = "w"}};
  std::map<std::string, std::string> spread;
  for (const std::string top : {"custom\\", "stuffed\\"}) {
    const std::string x = top.substr(0, 1), start = "v\\" + top;
    for (const std::string end : {".ace", ".s", ".sd", ".pal", ".wav", ".sms", ".txt"})
      entries.push_back({.name = start + x + end, .data = "top"});
    for (const std::string end : {".s", ".sd", ".pal"}) spread["shapes\\" + x + end] = "top";
    for (const std::string end : {".wav", ".sms"}) spread["sound\\" + x + end] = "top";
    for (const auto& folder : textureFolders) {
      entries.push_back({.name = start + folder + "in" + x + ".any", .data = "inner"});
      spread[folder + "in" + x + ".any"] = "inner";
      spread[folder + x + ".ace"] = "top";
    }
    for (const std::string name : {"shapes\\in.any", "sound\\in.any", "sound\\in.wav", "root\\in.dat"})
      entries.push_back({.name = start + name, .data = top});
  }
  spread["shapes\\in.any"] = spread["sound\\in.wav"] = spread["in.dat"] = "stuffed\\";
  const auto before = program_.Tree(program_.WorkingPath(""));
  Store(entries);
  Load();
  // No list knows of what was spread: it stays when the route goes.
  Load("Hill Line");
  auto expected = before;
  expected.insert(spread.begin(), spread.end());
  expected["world\\h.w"] = "world";
  expected["activities\\hill.act"] = "activity of hill";
  EXPECT_EQ(program_.Tree(program_.WorkingPath("")), expected);
}

}  // namespace
}  // namespace quillon
