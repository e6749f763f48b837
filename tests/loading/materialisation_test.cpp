// What a load lays over the files of the route's archive: activities, consists, textures, extras, custom
// files.
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class LayersTest : public ProgramTest {
 protected:
  LayersTest() {
    EXPECT_EQ(FirstRun(), 0);
    Remove(GamePath("Quillon_Extras\\EnvFiles"));  // which every load would bring
    Store({Entry("Valley/World/w.w", "world")});
    StoreRoute("hill", "Hill Line", {Entry("Hill/World/h.w", "world")});
  }

  void Store(const std::vector<ZipEntry>& entries) const { StoreRoute("valley", "Valley Line", entries); }
  void Load(const std::string& name = "Valley Line") { EXPECT_EQ(Run("load", name), 0) << Last("error"); }
  void PutInApp(const std::string& name, const std::string& bytes) const { Write(AppPath(name), bytes); }
  void PutInGame(const std::string& name, const std::string& bytes) const { Write(GamePath(name), bytes); }

  const std::string defaults_ = "resources\\Do_Not_Delete!\\misc_info\\default_activities\\";
  const std::string own_ = "routes\\activities\\", custom_ = "routes\\custom\\valley\\";
  const std::string consists_ = "routes\\consists\\valley\\", gameConsists_ = "TRAINS\\CONSISTS\\";
};

TEST_F(LayersTest, OwnActivitiesWinOverTheDefaults) {
  const Strings folders = {"activities\\", "paths\\", "services\\", "traffic\\"};
  for (const auto& folder : folders) {
    PutInApp(defaults_ + folder + "valley\\both.x", "default");
    MakeReadOnly(AppPath(defaults_ + folder + "valley\\both.x"));
    PutInApp(defaults_ + folder + "valley\\default.x", "default");
    PutInApp(own_ + folder + "valley\\both.x", "own");
    PutInApp(own_ + folder + "valley\\sub\\inner.x", "own");
  }
  for (const std::string defaults : {"", "default"}) {
    Load();  // first without a default activity: the defaults stay away
    for (const auto& folder : folders) {
      EXPECT_EQ(Working(folder + "both.x") + Working(folder + "default.x"), "own" + defaults) << folder;
      EXPECT_EQ(Working(folder + "sub\\inner.x") + Working(folder + "inner.x"), "") << folder;
    }
    PutInApp(defaults_ + "activities\\valley\\one.ACT", "default");
  }
}

TEST_F(LayersTest, ConsistsComeOnceAndStay) {
  for (const std::string name : {"New.con", "here.con", "moved.con", "notes.txt"})
    PutInApp(consists_ + name, "of the route");
  MakeReadOnly(AppPath(consists_ + "New.con"));
  PutInGame(gameConsists_ + "HERE.con", "of the game");
  PutInGame(gameConsists_ + "QN-Backed-up-consists\\Moved.con", "moved");
  Load();
  EXPECT_TRUE(IsShown("frmCustomConsist"));
  auto expected = State(GamePath(gameConsists_));
  EXPECT_EQ(expected["New.con"], "file: of the route");  // the read-only mark is gone
  EXPECT_EQ(expected["HERE.con"], "file: of the game");
  EXPECT_EQ(expected.size(), 5u);
  PutInGame(gameConsists_ + "new.con", "changed");
  expected["New.con"] = "file: changed";
  for (const std::string route : {"Hill Line", "Valley Line"}) {
    Load(route);
    EXPECT_FALSE(IsShown("frmCustomConsist")) << "nothing was copied";
  }
  EXPECT_EQ(State(GamePath(gameConsists_)), expected);
}

TEST_F(LayersTest, TheCustomTreeIsMadeOnceAndWhole) {
  Load();
  EXPECT_EQ(State(AppPath(custom_)).size(), 21u);
  Remove(AppPath(custom_ + "TEXTURES"));
  Load();
  EXPECT_FALSE(Exists(AppPath(custom_ + "TEXTURES")));
}

TEST_F(LayersTest, LaterLayersWin) {
  // Archive, then track textures, then extras, then custom files, then the archive's own folders Custom and
  // Stuffed.
  const std::string track = "textures\\acleantrack1.ace", snow = "textures\\snow\\acleantrack1.ace";
  const std::string wall = "textures\\atracktunwall.ace";
  std::vector<ZipEntry> entries = {Entry("V\\World\\w.w"), Entry("V\\Stuffed\\Shapes\\c.s", "Stuffed"),
                                   Entry("V\\Custom\\Shapes\\b.s", "Custom"),
                                   Entry("V\\Custom\\Shapes\\c.s", "Custom")};
  for (const auto& name : Strings{track, snow, wall, "shapes\\a.s"})
    entries.push_back(Entry("V\\" + name, "archive"));
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

TEST_F(LayersTest, TheTrackTexturesOfAReadOnlyGameAreCopiedAtEachLoad) {
  const std::string texture = "textures\\snow\\acleantrack2.ace", source = "Routes\\USA1\\" + texture;
  for (const std::string text : {"first", "second"}) {
    Remove(GamePath(source));
    PutInGame(source, text);
    MakeReadOnly(GamePath(source));
    Load();
    EXPECT_EQ(Working(texture), text);
  }
}

TEST_F(LayersTest, CustomAndStuffedAreSpreadOverTheRoute) {
  const Strings textureFolders = {"terrtex\\",          "terrtex\\snow\\",        "textures\\",
                                  "textures\\autumn\\", "textures\\autumnsnow\\", "textures\\night\\",
                                  "textures\\snow\\",   "textures\\spring\\",     "textures\\springsnow\\",
                                  "textures\\winter\\", "textures\\wintersnow\\"};
  std::vector<ZipEntry> entries = {Entry("V/World/w.w", "w")};
  NamedTexts expected = Tree(WorkingPath(""));
  for (const std::string top : {"custom\\", "stuffed\\"}) {
    const std::string x = top.substr(0, 1);
    const auto add = [&](const std::string& name) { entries.push_back(Entry("v\\" + top + name, top)); };
    for (const std::string end : {".ace", ".s", ".sd", ".pal", ".wav", ".sms", ".txt"}) add(x + end);
    for (const std::string end : {".s", ".sd", ".pal"}) expected["shapes\\" + x + end] = top;
    for (const std::string end : {".wav", ".sms"}) expected["sound\\" + x + end] = top;
    for (const auto& folder : textureFolders) {
      add(folder + "in" + x + ".any");
      expected[folder + "in" + x + ".any"] = expected[folder + x + ".ace"] = top;
    }
    for (const std::string name : {"shapes\\in.any", "sound\\in.any", "sound\\in.wav", "root\\in.dat"})
      add(name);
  }
  expected["shapes\\in.any"] = expected["sound\\in.wav"] = expected["in.dat"] = "stuffed\\";
  Store(entries);
  Load();
  // No list knows of what was spread: it stays when the route goes.
  Load("Hill Line");
  expected["world\\h.w"] = "world";
  expected["activities\\hill.act"] = "activity of hill";
  EXPECT_EQ(Tree(WorkingPath("")), expected);
}

}  // namespace
}  // namespace quillon
