// The main screen: its list, what a pick stores, and the gates in front of a load.
#include "catalogue/MainScreen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

using Texts = std::vector<std::string>;

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

  RecordedOutput output;

 private:
  const Options options_;
  HeadlessFrontEnd frontEnd_{output, options_};
  RunningProgram program_;
  OpenScreens& screens_ = program_.Screens();
};

class MainScreenTest : public testing::Test {
 protected:
  MainScreenTest() { program_.FirstRun(); }

  std::string Current(const char* key) const { return program_.Ini("routes.ini", "Current", key); }
  bool IsShown(const std::string& screen) const {
    const auto shown = program_.Texts("show", "screen");
    return std::find(shown.begin(), shown.end(), screen) != shown.end();
  }
  std::string Loaded() const { return Current("Loaded"); }

  TestProgram program_;
};

TEST_F(MainScreenTest, TheListIsSortedAndMarksTheLoadedRoute) {
  program_.AddRoute("z.zip", "alpha");
  program_.AddRoute("y.zip", "Beta");
  program_.AddRoute("x.zip", "\xC3\xA9t\xC3\xA9");
  program_.AddRoute("lost.zip", "Lost");
  program_.DeleteSection("routes.ini", "lost");
  program_.SetIni("routes.ini", "Current", "Loaded", "y");
  EXPECT_EQ(program_.Run("routes"), 0);
  EXPECT_EQ(program_.Texts("row"),
            (Texts{"alpha", "Beta (Loaded)", "There has been an error.  Please run Cleanup.",
                   "\xC3\xA9t\xC3\xA9"}));
  EXPECT_EQ(program_.Texts("row", "zip"), (Texts{"z", "y", "No Data!", "x"}));
}

TEST_F(MainScreenTest, APickStoresBothNames) {
  program_.AddRoute("foo.zip", "Foo");
  program_.AddRoute("bar.zip", "Bar");
  program_.SetIni("routes.ini", "Current", "Loaded", "foo");
  EXPECT_EQ(program_.Run("pick", "Foo (Loaded)"), 0);
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip"), "Foo|foo");
  EXPECT_EQ(program_.Run("pick", "Bar"), 0);
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip") + "|" + Loaded(), "Bar|bar|foo");
  EXPECT_EQ(program_.Script("pick Bar\npick Nowhere\n"), 3);
  EXPECT_EQ(Current("Temp"), "Bar");

  OpenProgram open(program_);
  open.Do(&MainScreen::btnRouteListClick);
  open.Main().ListRoutesHover(1);  // hovering is selecting, and leaves the name on show
  EXPECT_EQ(Current("Temp") + "|" + open.Main().lblRouteName.text, "Foo|Foo");
  open.Main().ListRoutesHover(0);
  EXPECT_EQ(Current("Temp") + "|" + open.Main().lblRouteName.text + "|" + open.Main().lblLoaded.text,
            "Bar|Foo|");
  open.Do(&MainScreen::ListRoutesLeftPress);
  EXPECT_EQ(open.Main().lblRouteName.text, "Bar");
  EXPECT_TRUE(open.Main().imgRoute.ends_with("\\routes\\tsbar.jpg"));
}

TEST_F(MainScreenTest, AnEmptyListSaysSoAndDropsTheCatalogue) {
  EXPECT_EQ(program_.Run("routes"), 0);
  EXPECT_EQ(program_.Texts("row"), Texts{"You'll have to add some routes!"});
  EXPECT_FALSE(program_.Exists(program_.AppPath("resources\\Do_Not_Delete!\\routes.ini")));
  EXPECT_EQ(program_.Run("pick", "You'll have to add some routes!"), 0);
  EXPECT_EQ(Current("Temp"), "You'll have to add some routes!");
}

TEST_F(MainScreenTest, InfoListsTheDocumentsOfTheSelectedRoute) {
  program_.AddRoute("foo.zip", "Foo", {Entry("b.HTML"), Entry("A.pdf"), Entry("m.bmp"), Entry("n.shtml")});
  EXPECT_EQ(program_.Script("info\n"), 3);  // nothing is loaded, and nothing was picked
  EXPECT_EQ(program_.Script("pick Foo\ninfo\n"), 0);
  EXPECT_EQ(program_.Texts("row"), (Texts{"A.pdf", "b.HTML", "readme.txt"}));
  EXPECT_EQ(program_.Script("pick Foo\ninfo README.TXT\n"), 0);
  EXPECT_EQ(program_.Texts("open", "path"), Texts{program_.App() + "\\routes\\route_info\\foo\\readme.txt"});
  EXPECT_EQ(program_.Script("pick Foo\ninfo missing.txt\n"), 3);
  EXPECT_EQ(program_.Run("help"), 0);
  EXPECT_EQ(program_.Last("help")["file"], program_.App() + "\\resources\\files\\help.hlp");
  EXPECT_EQ(program_.Last("help")["command"], "TOC");
}

TEST_F(MainScreenTest, LoadRefusesWithoutTheGame) {
  program_.AddRoute("foo.zip", "Foo");
  std::filesystem::rename(program_.GamePath("train.exe"), program_.GamePath("other.exe"));
  for (const std::string command : {"load", "add", "clean"}) {
    EXPECT_EQ(program_.Run(command, command == "load" ? "Foo" : ""), 3) << command;
    EXPECT_EQ(program_.Texts("box", "title"), Texts{"Train Simulator not found!"});
    EXPECT_EQ(program_.BoxTexts(),
              Texts{"You must enter the correct path to Train Simulator on the Quillon Options screen."});
  }
  OpenProgram open(program_);
  open.Do(&MainScreen::ResetButtonImages);
  open.Do(&MainScreen::btnLoadClick);
  EXPECT_EQ(open.FlashTarget(), "options");
  EXPECT_FALSE(open.Main().TimerChecker.enabled);
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(MainScreenTest, LoadRefusesWithoutARoute) {
  EXPECT_EQ(program_.Run("load"), 3);
  OpenProgram none(program_);
  none.Do(&MainScreen::btnLoadClick);
  EXPECT_EQ(none.FlashTarget(), "manage");
  none.Do(&MainScreen::btnRouteListClick);
  none.Do(&MainScreen::CloseList);
  none.Do(&MainScreen::btnLoadClick);
  EXPECT_EQ(none.Main().lblRouteName.text + "|" + none.FlashTarget(), "No route loaded.|manage");
  program_.AddRoute("foo.zip", "Foo");
  EXPECT_EQ(program_.Run("load"), 3);
  OpenProgram open(program_);
  open.Do(&MainScreen::btnLoadClick);
  EXPECT_EQ(open.FlashTarget(), "down");
  EXPECT_TRUE(program_.BoxTexts().empty());
}

TEST_F(MainScreenTest, LoadAsksAboutARouteWithoutActivities) {
  program_.Drop("bare.zip", {Track("r/r.trk", "Bare"), Entry("r/tiles/a.t")});
  program_.Run("add");
  for (const std::string folder : {"activities", "services", "paths", "traffic"})
    program_.Remove(program_.AppPath("routes\\activities\\" + folder + "\\bare"));
  program_.options.noActLoad = false;
  EXPECT_EQ(program_.Run("load", "Bare"), 3);
  EXPECT_TRUE(IsShown("frmNoAct"));
  EXPECT_EQ(Loaded(), "No Data!");
  program_.options.noActLoad = true;
  EXPECT_EQ(program_.Run("load", "Bare"), 0);
  EXPECT_TRUE(IsShown("frmNoAct"));
  EXPECT_EQ(Loaded(), "bare");
  program_.Write(
      program_.AppPath("resources\\Do_Not_Delete!\\misc_info\\default_activities\\activities\\bare\\x.act"),
      "x");
  program_.options.noActLoad = false;
  EXPECT_EQ(program_.Run("load", "Bare"), 0);
  EXPECT_FALSE(IsShown("frmNoAct"));
}

TEST_F(MainScreenTest, AMissingWorkingRouteLeadsToTheWelcome) {
  program_.AddRoute("foo.zip", "Foo");
  program_.Remove(program_.GamePath("ROUTES\\Quillon-route\\Shapes"));
  program_.KeepSession();
  EXPECT_EQ(program_.Run("start"), 0);
  for (const std::string command : {"load", "add", "clean"}) {  // although it was answered before
    EXPECT_EQ(program_.Run(command, command == "load" ? "Foo" : ""), 3) << command;
    EXPECT_TRUE(IsShown("frmWelcome")) << command;
  }
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(MainScreenTest, EachMissingDefaultRouteIsToldThenTheProgramEnds) {
  program_.AddRoute("foo.zip", "Foo");
  const std::string text =
      "You must have a FULL installation of Train Simulator in order to use this program.\r\n\r\nQuillon "
      "will now "
      "close.  Please install the full version of Train Simulator.";
  for (const std::string route : {"Europe2", "USA1"}) program_.Remove(program_.GamePath("ROUTES\\" + route));
  program_.Remove(program_.GamePath("SAVES"));
  program_.Remove(program_.GamePath("Quillon_Extras"));
  for (const std::string command : {"load", "add"}) {
    EXPECT_EQ(program_.Run(command, command == "load" ? "Foo" : ""), 3);
    EXPECT_EQ(program_.BoxTexts(), (Texts{text, text})) << command;
    EXPECT_FALSE(IsShown("frmLoad") || IsShown("frmZipCheck"));
  }
  EXPECT_FALSE(program_.Exists(program_.GamePath("SAVES")) ||
               program_.Exists(program_.GamePath("Quillon_Extras")));
  EXPECT_EQ(program_.Script("load Foo\npick Foo\n"), 3) << "a script ends there too";
}

TEST_F(MainScreenTest, LoadMakesTheGamesFoldersWhenTheyAreMissing) {
  program_.Remove(program_.GamePath("SAVES"));
  program_.Remove(program_.GamePath("Quillon_Extras"));
  EXPECT_EQ(program_.Run("load"), 3);  // there is no route, but the folders come first
  EXPECT_TRUE(program_.Exists(program_.GamePath("Saves\\Quillon-route")));
  for (const std::string folder :
       {"EnvFiles\\Textures", "TerrTex\\Snow", "Textures\\WINTERSNOW", "swe_objects_1\\Textures"})
    EXPECT_TRUE(program_.Exists(program_.GamePath("Quillon_Extras\\" + folder))) << folder;
  program_.Remove(program_.GamePath("Quillon_Extras\\Sound"));
  program_.Run("load");
  EXPECT_FALSE(program_.Exists(program_.GamePath("Quillon_Extras\\Sound")));
}

}  // namespace
}  // namespace quillon
