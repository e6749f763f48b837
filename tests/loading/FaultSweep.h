// A load over a fault at every file call in turn.
#pragma once

#include <algorithm>

#include "catalogue/MainScreen.h"
#include "core/text/Text.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "tests/world/FaultyFiles.h"
#include "tests/world/TestProgram.h"

namespace quillon {

class CountedFault : public Fault {
 public:
  explicit CountedFault(int at) : at_(at) {}
  FileCode Strike() override { return ++count_ == at_ ? FileCode::AccessDenied : FileCode::Ok; }
  void Arm() { count_ = 0; }
  int Count() const { return count_; }

 private:
  const int at_;
  int count_ = 1 << 30;
};

/// "valley" is loaded and was played; "hill" comes in, with a terrain cache, a consist and a script.
class FaultSweep : public ProgramTest {
 protected:
  FaultSweep() {
    EXPECT_EQ(FirstRun(), 0);
    EXPECT_EQ(Run("clean"), 0);  // now with the shared extras that each route gets
    Store("valley");
    Store("hill");
    SetIni("scripts.ini", "hill", "Script", "Hill");
    Write(
        DataPath("misc_info\\custom_scripts\\Hill\\custom.cst"),
        "copy \\Shapes\\, \\Textures\\ ! hill.s\r\ndel \\Shapes\\, Signal.s !\r\nmsg++Hills.\r\nmsgend\r\n");
    Write(AppPath("routes\\consists\\hill\\hill.con"), "consist");
    EXPECT_EQ(Run("load", "hill"), 0);
    Drive("hill");
    EXPECT_EQ(Run("load", "valley"), 0);
    Drive("valley");
    Write(GamePath("SAVES\\Quillon-route\\mine.sav"), "saved game");
    Play("Activities\\mine.act", "an activity of the user's");
    Play("Activities\\pack\\mine.act", "an activity in a folder");
    fs::copy(ToPath(Root()), ToPath(start_), fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    ReferenceRun();
  }
  ~FaultSweep() override { RemoveAll(ToPath(start_)); }

  void Store(const std::string& name) {
    StoreRoute(
        name, name,
        {Entry(name + "/" + name + ".trk", TrackFile(name)), Entry(name + "/Tiles/" + name + ".t", "tile"),
         Entry(name + "/Shapes/Signal.s", "signal of " + name),
         Entry(name + "/Shapes/" + name + ".s", "shape")});
  }
  void Drive(const std::string& name) const {
    for (const char tile : {'a', 'b', 'c', 'd'})
      for (const std::string kind : {"_e.raw", "_n.raw"})
        Play("Tiles\\" + name + tile + kind, name + tile + kind);
  }

  /// Everything as it was before the load.
  void Restore() const {
    for (const char* place : {"/app", "/game"}) {
      Remove(Root() + place);
      fs::copy(ToPath(start_ + place), ToPath(Root() + place),
               fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }
  }

  /// Loads "hill"; true when it ended well.
  bool LoadWith(CountedFault& fault) {
    RecordedOutput output;
    HeadlessFrontEnd frontEnd(output, options);
    RunningProgram program(App(), frontEnd, 1, std::make_unique<FaultyFiles>(fault));
    OpenScreens& screens = program.Screens();
    screens.Do([&] { screens.Show("frmMain"); });
    auto& main = dynamic_cast<MainScreen&>(*screens.Find("frmMain"));
    screens.Do([&] { main.btnRouteListClick(); });
    screens.Do([&] { main.ListRoutesHover(0); });
    screens.Do([&] { main.ListRoutesLeftPress(); });
    fault.Arm();
    try {
      screens.Do([&] { main.btnLoadClick(); });
      return true;
    } catch (const RunTimeError& error) {
      error_ = program.Get().step + ": " + error.text() + " " + error.path() + " " + error.reason();
      return false;
    }
  }

  void ReferenceRun() {
    CountedFault none(-1);
    EXPECT_TRUE(LoadWith(none)) << error_;
    calls_ = none.Count();
    recorded_ = Tree(WorkingPath(""));
    EXPECT_EQ(Run("clean"), 0);
    EXPECT_EQ(Run("load", "hill"), 0);
    loaded_ = Tree(WorkingPath(""));
    Restore();
    outside_ = Outside();
    EXPECT_GT(calls_, 100);
  }

  /// All files that a load has no business with: the game but for the working route, its saves and the
  /// consists; of the application folder the routes, pictures, originals and delivered files.
  NamedTexts Outside() const {
    NamedTexts outside;
    for (const auto& [name, bytes] : Tree(Root())) {
      const auto below = [&](const char* folder) { return name.starts_with(folder); };
      const bool touched = below("game\\routes\\quillon-route\\") || below("game\\saves\\quillon-route\\") ||
                           below("game\\trains\\consists\\hill.con") || below("app\\routes\\saves\\") ||
                           below("app\\routes\\terrain_cache\\valley") || below("game\\quillon_extras\\") ||
                           below("app\\rescued\\") || name.ends_with(".ini") ||
                           name.ends_with("!\\current.tsl") || name.ends_with("!\\default.tsl") ||
                           name.ends_with("!\\placed.tsl") ||
                           (below("app\\routes\\activities\\") && Contains(name, "\\valley\\"));
      if (!touched && !below("home\\")) outside[name] = bytes;
    }
    return outside;
  }

  /// The names whose bytes are not the same in both.
  static Strings Differences(const NamedTexts& a, const NamedTexts& b) {
    Strings names;
    for (const auto& [name, bytes] : a)
      if (!b.contains(name) || b.at(name) != bytes) names.push_back(name);
    for (const auto& [name, bytes] : b)
      if (!a.contains(name)) names.push_back("new: " + name);
    return names;
  }

  /// What the user has made is still there, whatever its name.
  void CheckOwnWork() const {
    const auto tree = Tree(Root());
    for (const std::string bytes : {"saved game", "an activity of the user's", "an activity in a folder"})
      EXPECT_TRUE(std::any_of(tree.begin(), tree.end(), [&](const auto& file) {
        return file.second == bytes;
      })) << bytes;
  }

  /// What must hold right after the fault, and what a clean-up and a new load must bring about.
  void CheckAfter(bool finished, bool loadAgain) {
    EXPECT_EQ(Differences(outside_, Outside()), Strings());
    // The load is recorded last: with it, all is in place.
    if (!finished && Loaded() != "valley") {
      EXPECT_EQ(Differences(recorded_, Tree(WorkingPath(""))), Strings()) << Loaded();
    }
    CheckOwnWork();
    if (loadAgain)
      EXPECT_EQ(Run("load", "hill"), 0) << Last("error");
    else
      EXPECT_EQ(Run("clean"), 0) << Last("error");
    CheckOwnWork();
    EXPECT_EQ(Current({"PutAway", "Loading"}), std::string(kMissing) + "|" + kMissing);
    EXPECT_EQ(Run("load", "hill"), 0) << Last("error");
    EXPECT_EQ(Differences(loaded_, Tree(WorkingPath(""))), Strings());
    CheckOwnWork();
    EXPECT_EQ(Differences(outside_, Outside()), Strings());
  }

  const std::string start_ = Root() + "-start";
  int calls_ = 0;
  std::string error_;
  NamedTexts recorded_, loaded_, outside_;
};

}  // namespace quillon
