// The main screen: its lists, what a pick stores, and the gates in front of a load.
#include "catalogue/MainScreen.h"

#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

/// The screens of a program that has been started, for what no command tells.
class OpenProgram {
 public:
  explicit OpenProgram(const TestProgram& world) : options_(world.options), program_(world.App(), frontEnd_) {
    screens_.Do([this] { screens_.Show("frmMain"); });
  }
  MainScreen& Main() { return dynamic_cast<MainScreen&>(*screens_.Find("frmMain")); }
  void Do(void (MainScreen::*handler)()) {
    screens_.Do([&] { (Main().*handler)(); });
  }
  const std::string& FlashTarget() { return program_.Get().shared.FlashTarget; }
  std::string Labels() { return Main().lblRouteName.text + "|" + Main().lblLoaded.text; }

 private:
  const Options options_;
  RecordedOutput output_;
  HeadlessFrontEnd frontEnd_{output_, options_};
  RunningProgram program_;
  OpenScreens& screens_ = program_.Screens();
};

class MainScreenTest : public ProgramTest {
 protected:
  MainScreenTest() { FirstRun(); }
};

TEST_F(MainScreenTest, TheListIsSortedAndMarksTheLoadedRoute) {
  const std::map<std::string, std::string> zips = {
      {"z", "alpha"}, {"y", "Beta"}, {"x", "\xC3\xA9t\xC3\xA9"}, {"lost", "Lost"}};
  for (const auto& [zip, name] : zips) StoreRoute(zip, name, {});
  DeleteSection("routes.ini", "lost");
  SetIni("routes.ini", "Current", "Loaded", "y");
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(Texts("row"), (Strings{"alpha", "Beta (Loaded)", "There has been an error.  Please run Cleanup.",
                                   "\xC3\xA9t\xC3\xA9"}));
  EXPECT_EQ(Texts("row", "zip"), (Strings{"z", "y", "No Data!", "x"}));
}

TEST_F(MainScreenTest, APickStoresBothNames) {
  StoreRoute("foo", "Foo", {});
  StoreRoute("bar", "Bar", {});
  SetIni("routes.ini", "Current", "Loaded", "foo");
  EXPECT_EQ(Run("pick", "Foo (Loaded)"), 0);
  EXPECT_EQ(Current({"Temp", "Zip"}), "Foo|foo");
  EXPECT_EQ(Script("pick Bar\npick Nowhere\n"), 3);
  EXPECT_EQ(Current({"Temp", "Zip", "Loaded"}), "Bar|bar|foo");

  OpenProgram open(*this);
  open.Do(&MainScreen::btnRouteListClick);
  open.Main().ListRoutesHover(1);  // hovering is selecting, and leaves the name on show
  EXPECT_EQ(Current({"Temp"}) + "|" + open.Main().lblRouteName.text, "Foo|Foo");
  open.Main().ListRoutesHover(0);
  EXPECT_EQ(Current({"Temp"}) + "|" + open.Labels(), "Bar|Foo|");
  open.Do(&MainScreen::ListRoutesLeftPress);
  EXPECT_EQ(open.Main().lblRouteName.text, "Bar");
  EXPECT_TRUE(open.Main().imgRoute.ends_with("\\routes\\tsbar.jpg"));
}

TEST_F(MainScreenTest, InfoListsTheDocumentsOfTheSelectedRoute) {
  StoreRoute("foo", "Foo", {});
  for (const std::string name : {"b.HTML", "A.pdf", "m.bmp", "n.shtml", "readme.txt"})
    Write(AppPath("routes\\route_info\\foo\\" + name), "");
  EXPECT_EQ(Run("info"), 3);  // nothing is loaded, and nothing was picked
  EXPECT_EQ(Script("pick Foo\ninfo\n"), 0);
  EXPECT_EQ(Texts("row"), (Strings{"A.pdf", "b.HTML", "readme.txt"}));
}

TEST_F(MainScreenTest, LoadRefusesWithoutTheGame) {
  StoreRoute("foo", "Foo", {});
  Remove(GamePath("train.exe"));
  for (const std::string command : {"load", "add", "clean"}) {
    EXPECT_EQ(Run(command, command == "load" ? "Foo" : ""), 3) << command;
    EXPECT_EQ(Texts("box", "title"), Strings{"Train Simulator not found!"});
    EXPECT_EQ(BoxTexts(),
              Strings{"You must enter the correct path to Train Simulator on the Quillon Options screen."});
  }
  OpenProgram open(*this);
  open.Do(&MainScreen::ResetButtonImages);
  open.Do(&MainScreen::btnLoadClick);
  EXPECT_EQ(open.FlashTarget(), "options");
  EXPECT_FALSE(open.Main().TimerChecker.enabled);
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(MainScreenTest, LoadRefusesWithoutARoute) {
  for (const std::string target : {"manage", "down"}) {
    EXPECT_EQ(Run("load"), 3);
    EXPECT_TRUE(BoxTexts().empty());
    OpenProgram open(*this);
    open.Do(&MainScreen::btnLoadClick);
    EXPECT_EQ(open.FlashTarget(), target);
    open.Do(&MainScreen::btnRouteListClick);
    open.Do(&MainScreen::CloseList);
    open.Do(&MainScreen::btnLoadClick);
    EXPECT_EQ(open.Labels() + open.FlashTarget(), "No route loaded.|" + target);
    StoreRoute("foo", "Foo", {});
  }
}

TEST_F(MainScreenTest, LoadAsksAboutARouteWithoutActivities) {
  StoreRoute("bare", "Bare", {Entry("r/tiles/a.t")});
  Remove(AppPath("routes\\activities\\activities\\bare"));
  for (const bool load : {false, true}) {
    options.noActLoad = load;
    EXPECT_EQ(Run("load", "Bare"), load ? 0 : 3);
    EXPECT_TRUE(IsShown("frmNoAct"));
    EXPECT_EQ(IsShown("frmLoad"), load);
    EXPECT_EQ(Loaded(), load ? "bare" : "No Data!");
  }
  Write(DataPath("misc_info\\default_activities\\activities\\bare\\x.act"), "x");
  EXPECT_EQ(Run("load", "Bare"), 0);
  EXPECT_FALSE(IsShown("frmNoAct"));
}

TEST_F(MainScreenTest, EachMissingDefaultRouteIsToldThenTheProgramEnds) {
  StoreRoute("foo", "Foo", {});
  const std::string text =
      "You must have a FULL installation of Train Simulator in order to use this program.\r\n\r\nQuillon "
      "will now close.  Please install the full version of Train Simulator.";
  for (const std::string gone : {"ROUTES\\Europe2", "ROUTES\\USA1", "SAVES", "Quillon_Extras"})
    Remove(GamePath(gone));
  for (const std::string command : {"load", "add"}) {
    EXPECT_EQ(Run(command, command == "load" ? "Foo" : ""), 3);
    EXPECT_EQ(BoxTexts(), (Strings{text, text})) << command;
    EXPECT_FALSE(IsShown("frmLoad") || IsShown("frmZipCheck"));
  }
  EXPECT_FALSE(Exists(GamePath("SAVES")) || Exists(GamePath("Quillon_Extras")));
  EXPECT_EQ(Script("load Foo\npick Foo\n"), 3) << "a script ends there too";
}

TEST_F(MainScreenTest, LoadMakesTheGamesFoldersWhenTheyAreMissing) {
  Remove(GamePath("SAVES"));
  Remove(GamePath("Quillon_Extras"));
  EXPECT_EQ(Run("load"), 3);  // there is no route, but the folders come first
  for (const std::string folder :
       {"Saves\\Quillon-route", "Quillon_Extras\\EnvFiles\\Textures", "Quillon_Extras\\TerrTex\\Snow",
        "Quillon_Extras\\Textures\\WINTERSNOW", "Quillon_Extras\\swe_objects_1\\Textures"})
    EXPECT_TRUE(Exists(GamePath(folder))) << folder;
  Remove(GamePath("Quillon_Extras\\Sound"));
  Run("load");
  EXPECT_FALSE(Exists(GamePath("Quillon_Extras\\Sound")));
}

}  // namespace
}  // namespace quillon
