// The commands by their contract: events, exit status, answers to boxes and screens, scripts.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/Text.h"
#include "headless/HeadlessFrontEnd.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

using Strings = std::vector<std::string>;

// Which keys each kind of event has at least, after "event".
const std::map<std::string, Strings> kKeys = {
    {"show", {"screen"}},
    {"unload", {"screen"}},
    {"caption", {"screen", "text"}},
    {"bar", {"screen", "value", "maximum"}},
    {"colour", {"screen", "colour"}},
    {"text", {"screen", "control", "text", "visible"}},
    {"box", {"title", "text", "buttons", "answer"}},
    {"open", {"path"}},
    {"explore", {"path"}},
    {"help", {"file", "command"}},
    {"main",
     {"lblRouteName", "lblLoaded", "imgRoute", "PreviewPath", "FlashTarget", "TrainSimPath",
      "TrainExeFound"}},
    {"row", {"list", "text"}},
    {"error", {"number", "text", "path", "step"}},
    {"end", {"status"}},
};

const std::vector<ZipEntry> kRoute = {{.name = "R/World/w.w", .data = "world"}};

class CommandsTest : public testing::Test {
 protected:
  CommandsTest() { program_.options.json = true; }
  int Run(const std::string& name, const std::string& argument = {}) {
    const int status = program_.Run(name, argument);
    ExpectContract(status);
    return status;
  }
  void ExpectContract(int status) const {
    for (const auto& event : program_.All()) {
      ASSERT_EQ(event.begin().key(), "event") << event;
      const auto keys = kKeys.find(event["event"]);
      ASSERT_NE(keys, kKeys.end()) << event;
      for (const auto& key : keys->second) EXPECT_TRUE(event.contains(key)) << key << " in " << event;
      const bool routeRow = event.value("list", "") == "ListRoutes";
      EXPECT_EQ(event.contains("zip"), routeRow) << event;
      if (event["event"] == "error") {
        EXPECT_TRUE(event["number"] != 0 && event["text"] != "" && event["step"] != "") << event;
      }
    }
    EXPECT_EQ(program_.Events("end").size(), 1u);
    EXPECT_EQ(program_.All().back()["event"], "end");
    EXPECT_EQ(program_.All().back()["status"], status);
    EXPECT_EQ(program_.Events("error").size(), status == 1 ? 1u : 0u);
  }
  std::string Loaded() const { return program_.Ini("routes.ini", "Current", "Loaded"); }
  bool Shown(const std::string& screen) const {
    const auto shown = program_.Texts("show", "screen");
    return std::find(shown.begin(), shown.end(), screen) != shown.end();
  }

  TestProgram program_;
};

TEST_F(CommandsTest, WithoutRoutesThereIsNothingToChoose) {
  ASSERT_EQ(program_.FirstRun(), 0);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(program_.Texts("row"), Strings{"You'll have to add some routes!"});
  EXPECT_EQ(Run("pick", "Nowhere"), 3);
  EXPECT_EQ(Run("info"), 3);
  EXPECT_EQ(Run("load"), 3);
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(program_.Captions("frmInitProg"), Strings{"No new routes found."});
  EXPECT_EQ(program_.Last("colour")["colour"], 221);
}

TEST_F(CommandsTest, TheRoadOfARoute) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.Drop("valley.zip", RouteEntries("Valley Line"));
  program_.Drop("hill.zip", RouteEntries("Hill Line"));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(program_.Last("show")["screen"], "frmRoutes");
  EXPECT_EQ(Run("load", "Valley Line"), 0);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(program_.Texts("row"), (Strings{"Hill Line", "Valley Line (Loaded)"}));
  EXPECT_EQ(program_.Texts("row", "zip"), (Strings{"hill", "valley"}));
  EXPECT_EQ(Run("pick", "Valley Line (Loaded)"), 0);
  EXPECT_EQ(program_.Ini("routes.ini", "Current", "Temp"), "Valley Line");
  EXPECT_EQ(Run("info"), 0);
  EXPECT_EQ(program_.Texts("row"), Strings{"readme.txt"});
  EXPECT_EQ(Run("info", "README.txt"), 0);
  EXPECT_EQ(program_.ReadBytes(std::string(program_.Last("open")["path"])), "readme of Valley Line");
  EXPECT_EQ(Run("info", "none.txt"), 3);
  EXPECT_EQ(Run("load"), 0);  // what is loaded is selected
  EXPECT_EQ(Loaded(), "valley");
  const Event main = program_.Last("main");
  EXPECT_EQ(main["PreviewPath"], program_.App() + "\\routes\\tsvalley.jpg");
  EXPECT_EQ(main["imgRoute"], main["PreviewPath"]);
  EXPECT_EQ(main["TrainSimPath"], program_.Game());
  EXPECT_EQ(main["TrainExeFound"], true);
  EXPECT_EQ(Run("clean"), 0);
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(CommandsTest, IntakeTellsItsPassesInTheOldOrder) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.Drop("bad.zip", {}, {.directoryShift = 5});
  program_.Drop("valley.zip", RouteEntries("Valley Line"));
  EXPECT_EQ(Run("add"), 0);
  const Strings captions = program_.Captions("frmInitProg");
  auto at = captions.begin();
  for (const std::string caption :
       {"Verifying file integrity of bad.zip", "Verifying file integrity of valley.zip",
        "Generating route info...", "Verifying... valley.zip", "Extracting info from valley.zip",
        "Optimizing route compression...", "Creating compressed route files...", "Finishing Up!",
        "Finished adding 1 new route."}) {
    at = std::find(at, captions.end(), caption);
    EXPECT_NE(at, captions.end()) << caption << " not in its place: " << testing::PrintToString(captions);
  }
  EXPECT_EQ(program_.Last("bar")["value"], 100);
}

TEST_F(CommandsTest, TheRestKeepsTheContractToo) {
  ASSERT_EQ(program_.FirstRun(), 0);
  for (const std::string screen : {"", "frmMain", "frmRoutes"}) {
    EXPECT_EQ(Run("help", screen), 0);
    EXPECT_EQ(program_.Last("help")["file"], program_.App() + "\\resources\\files\\help.hlp");
    EXPECT_EQ(program_.Last("help")["command"], "TOC");
  }
  EXPECT_EQ(Run("help", "frmNowhere"), 2);
  EXPECT_EQ(Run("make-list"), 0);
  EXPECT_EQ(Run("options"), 0);
  program_.Run(Command{.name = "options", .game = program_.Root() + "/none"});
  ExpectContract(3);
  EXPECT_EQ(program_.BoxTexts(), Strings{"Please select the correct Train Simulator folder!"});
  EXPECT_EQ(Run("sample", program_.Root() + "/new"), 0);
  EXPECT_EQ(Run("sample", program_.Root() + "/new"), 1);
  EXPECT_EQ(program_.LastError(), 75);
  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\misc_info\\tsnone.jpg"));
  EXPECT_EQ(Run("start"), 1);
  EXPECT_EQ(program_.LastError(), 53);
  EXPECT_TRUE(program_.LastErrorPath().ends_with("\\misc_info\\tsnone.jpg"));
}

TEST_F(CommandsTest, ACancelledWelcomeRefusesWhatNeedsTheWorkingRoute) {
  EXPECT_EQ(Run("start"), 0);
  EXPECT_TRUE(Shown("frmWelcome"));
  program_.StoreRoute("valley", "Valley Line", kRoute);
  EXPECT_EQ(Run("clean"), 3);
  EXPECT_EQ(Run("add"), 3);
  EXPECT_EQ(Run("load", "Valley Line"), 3);
  EXPECT_FALSE(Shown("frmLoad") || Shown("frmCleanUp"));
  EXPECT_EQ(Run("routes"), 0);
  program_.options.welcomeOk = true;
  EXPECT_EQ(Run("load", "Valley Line"), 0);
  EXPECT_TRUE(Shown("frmCleanUp") && Shown("frmLoad"));
}

TEST_F(CommandsTest, ARouteWithoutActivityIsAskedAbout) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.StoreRoute("valley", "Valley Line", kRoute);
  program_.Remove(program_.AppPath("routes\\activities\\activities\\valley"));
  for (const bool load : {false, true}) {
    program_.options.noActLoad = load;
    EXPECT_EQ(Run("load", "Valley Line"), load ? 0 : 3);
    EXPECT_TRUE(Shown("frmNoAct"));
    EXPECT_EQ(Shown("frmLoad"), load);
    EXPECT_EQ(Loaded(), load ? "valley" : "No Data!");
  }
}

TEST_F(CommandsTest, ASecondInstanceSaysSoAndChangesNothing) {
  ASSERT_EQ(program_.FirstRun(), 0);
  {
    RecordedOutput output;
    Session first(program_.options, output);
    EXPECT_EQ(first.Run({.name = "start"}), 0);
    const auto before = program_.State(program_.Root());
    for (const std::string command : {"start", "routes", "clean", "add", "load"}) {
      EXPECT_EQ(Run(command), 3) << command;
      EXPECT_EQ(program_.BoxTexts(), Strings{"Quillon is already running."});
      EXPECT_TRUE(program_.Events("main").empty()) << "it ends at once";
    }
    EXPECT_EQ(program_.State(program_.Root()), before);
    EXPECT_EQ(program_.Script("routes\n"), 3);
  }
  EXPECT_EQ(Run("start"), 0);
}

TEST_F(CommandsTest, AScriptIsOneProcess) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.StoreRoute("valley", "Valley Line", kRoute);
  EXPECT_EQ(program_.Script("# the usual\n\npick 'Valley Line' # by name\r\nroutes\nload\n"), 0);
  ExpectContract(0);
  EXPECT_EQ(Loaded(), "valley");
  EXPECT_EQ(program_.Events("main").size(), 2u);  // the start-up, and the way back from frmLoad
  program_.Remove(program_.WorkingPath("Shapes"));
  EXPECT_EQ(program_.Script("start\nroutes\nstart\n"), 0);
  EXPECT_EQ(program_.Texts("unload", "screen"), Strings{"frmWelcome"});  // answered once for all
}

TEST_F(CommandsTest, ARefusalLetsAScriptGoOnAndAnErrorEndsIt) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.StoreRoute("storm", "Storm", kRoute);
  WriteBytes(program_.AppPath("routes\\storm.qnz"), "damaged");
  EXPECT_EQ(program_.Script("pick Nowhere\nroutes\n"), 3);
  ExpectContract(3);
  EXPECT_EQ(program_.Texts("row"), Strings{"Storm"});
  EXPECT_EQ(program_.Script("pick Nowhere\nload Storm\nroutes\n"), 1);
  ExpectContract(1);
  EXPECT_TRUE(program_.Texts("row").empty());
  EXPECT_EQ(program_.Script("routes\nfly\n"), 2);
  ExpectContract(2);
  EXPECT_EQ(Run("script", program_.Root() + "/none"), 1);
}

TEST(HeadlessFrontEndTest, TheBarIsNeverBehindACaptionOrTheEnd) {
  RecordedOutput output;
  const Options options;
  HeadlessFrontEnd frontEnd(output, options);
  ProgressBar bar;
  for (bar.value = 1; bar.value < 500; ++bar.value)
    frontEnd.BarChanged("frmLoad", bar, Watcher::BarChange::Value);
  bar.caption = "caption";
  frontEnd.BarChanged("frmLoad", bar, Watcher::BarChange::Caption);
  ASSERT_GE(output.events.size(), 2u);
  EXPECT_EQ(output.events.end()[-1]["text"], "caption");
  EXPECT_EQ(output.events.end()[-2]["value"], 499);
  bar.value = 7;
  frontEnd.BarChanged("frmLoad", bar, Watcher::BarChange::Value);
  frontEnd.ScreenUnloaded("frmLoad");
  EXPECT_EQ(output.events.end()[-2]["value"], 7);
}

TEST(HeadlessFrontEndTest, BoxesAreAnsweredAsAsked) {
  RecordedOutput output;
  Options options;
  HeadlessFrontEnd frontEnd(output, options);
  for (const bool yes : {false, true}) {
    options.answerYes = yes;
    EXPECT_EQ(frontEnd.AskYesNo("Title", "Text?"), yes);
    EXPECT_EQ(output.events.back()["answer"], yes ? "yes" : "no");
    EXPECT_EQ(output.events.back()["buttons"], "yesno");
  }
  frontEnd.Tell("Title", "Text.");
  EXPECT_EQ(output.events.back()["buttons"], "ok");
}

}  // namespace
}  // namespace quillon
