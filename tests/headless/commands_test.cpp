// The commands by their contract: events, exit status, answers to boxes and screens, scripts.
#include <sstream>

#include "core/text/Text.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/Advice.h"
#include "stage/RunningProgram.h"
#include "stage/Setup.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

// The kinds of events, each with the keys that it has at least.
const std::string kEvents =
    ";show screen;unload screen;caption screen text;bar screen value maximum;colour screen colour"
    ";text screen control text visible;box title text buttons answer;open path;explore path;help file command"
    ";row list text;verdict zip class reason;error number text path step;end status"
    ";main lblRouteName lblLoaded imgRoute PreviewPath FlashTarget TrainSimPath TrainExeFound;";

const std::vector<ZipEntry> kRoute = {{.name = "R/World/w.w", .data = "world"}};

class CommandsTest : public ProgramTest {
 protected:
  /// Runs a command and looks at what every one has to keep.
  int Run(const std::string& name, const std::string& argument = {}) {
    return Checked(ProgramTest::Run(name, argument));
  }
  int Script(const std::string& lines) { return Checked(ProgramTest::Script(lines)); }
  int Checked(int status) const {
    for (const auto& event : All()) {
      EXPECT_EQ(event.begin().key(), "event") << event;
      const std::string kind = event["event"];
      const auto at = kEvents.find(";" + kind + " ");
      EXPECT_NE(at, kEvents.npos) << event;
      std::istringstream keys(kEvents.substr(at, kEvents.find(';', at + 1) - at));
      for (std::string key; keys >> key;)
        EXPECT_TRUE(event.contains(key) || key == ";" + kind) << key << " in " << event;
      EXPECT_EQ(event.contains("zip"), kind == "verdict" || event.value("list", "") == "ListRoutes") << event;
      EXPECT_TRUE(kind != "error" || (event["number"] != 0 && event["text"] != "" && event["step"] != ""));
    }
    EXPECT_EQ(Events("end").size(), 1u);
    EXPECT_EQ(All().back(), (Event{{"event", "end"}, {"status", status}}));
    EXPECT_EQ(Events("error").size(), status == 1 ? 1u : 0u);
    return status;
  }
};

TEST_F(CommandsTest, WithoutRoutesThereIsNothingToChoose) {
  ASSERT_EQ(FirstRun(), 0);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(Texts("row"), Strings{"You'll have to add some routes!"});
  EXPECT_FALSE(Exists(DataPath("routes.ini")));
  EXPECT_EQ(Run("pick", "You'll have to add some routes!"), 0);
  EXPECT_EQ(Current({"Temp"}), "You'll have to add some routes!");
  EXPECT_EQ(Run("pick", "Nowhere"), 3);
  EXPECT_EQ(Run("info"), 3);
  EXPECT_EQ(Run("load"), 3);
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Captions("frmInitProg"), Strings{"No new routes found."});
  EXPECT_EQ(Last("colour")["colour"], 221);
}

TEST_F(CommandsTest, TheRoadOfARoute) {
  ASSERT_EQ(FirstRun(), 0);
  Drop("valley.zip", RouteEntries("Valley Line"));
  Drop("hill.zip", RouteEntries("Hill Line"));
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(Last("show")["screen"], "frmRoutes");
  EXPECT_EQ(Run("load", "Valley Line"), 0);
  EXPECT_EQ(Run("routes"), 0);
  EXPECT_EQ(Texts("row"), (Strings{"Hill Line", "Valley Line (Loaded)"}));
  EXPECT_EQ(Texts("row", "zip"), (Strings{"hill", "valley"}));
  EXPECT_EQ(Run("pick", "Valley Line (Loaded)"), 0);
  EXPECT_EQ(Current({"Temp"}), "Valley Line");
  EXPECT_EQ(Run("info"), 0);
  EXPECT_EQ(Texts("row"), Strings{"readme.txt"});
  EXPECT_EQ(Run("info", "README.txt"), 0);
  EXPECT_EQ(Last("open")["path"], App() + "\\routes\\route_info\\valley\\readme.txt");
  EXPECT_EQ(Run("info", "none.txt"), 3);
  EXPECT_EQ(Run("load"), 0);  // what is loaded is selected
  EXPECT_EQ(Loaded(), "valley");
  const std::string preview = App() + "\\routes\\tsvalley.jpg";
  EXPECT_EQ(MainTexts({"PreviewPath", "imgRoute", "TrainSimPath"}), preview + "|" + preview + "|" + Game());
  EXPECT_EQ(Last("main")["TrainExeFound"], true);
  EXPECT_EQ(Run("clean"), 0);
  EXPECT_EQ(Loaded(), "No Data!");
}

TEST_F(CommandsTest, TheRestKeepsTheContractToo) {
  ASSERT_EQ(FirstRun(), 0);
  for (const std::string screen : {"", "frmMain", "frmRoutes"}) {
    EXPECT_EQ(Run("help", screen), 0);
    EXPECT_EQ(Last("help")["file"], App() + "\\resources\\files\\help.hlp");
    EXPECT_EQ(Last("help")["command"], "TOC");
  }
  EXPECT_EQ(Run("help", "frmNowhere"), 2);
  EXPECT_EQ(Run("make-list"), 0);
  EXPECT_EQ(Run("options"), 0);
  EXPECT_EQ(Run("sample", Root() + "/new"), 0);
  EXPECT_EQ(Run("sample", Root() + "/new"), 1);
  EXPECT_EQ(LastError(), 75);
  Remove(DataPath("misc_info\\tsnone.jpg"));
  EXPECT_EQ(Run("start"), 1);
  EXPECT_EQ(LastError(), 53);
  EXPECT_TRUE(LastErrorPath().ends_with("\\misc_info\\tsnone.jpg"));
  Remove(DataPath("misc_info"));
  EXPECT_EQ(Run("start"), 1);
}

TEST_F(CommandsTest, AdviceFitsTheError) {
  using enum ErrorNumber;
  const std::string zip = "/app\\downloaded_routes\\a.zip", list = "/app\\x\\misc_info\\copyfiles.tsl",
                    route = "/app\\routes\\Quillon-route.qnz";
  const auto advises = [](const RunTimeError& error, std::string_view words) {
    EXPECT_TRUE(Contains(Advice(error), words)) << error.path() << ": " << Advice(error);
  };
  for (const auto& path : {zip, list, route})
    for (const char* reason : {kNoPermission, kNoPermissionToRead})
      advises(RunTimeError(PathFileAccessError, path, reason), "read-only");
  for (const auto number : {FileNotFound, PathNotFound}) advises(RunTimeError(number, list), "quillon setup");
  advises(RunTimeError(FileAlreadyExists, list), "said above");
  advises(RunTimeError(InvalidFileFormat, zip), "out of downloaded_routes");
  for (const auto number : {InvalidFileFormat, FileNotFound})
    advises(RunTimeError(number, route), "add it again");
  advises(RunTimeError(FileAlreadyExists, "/game\\x.sav", "take it from /app\\rescued\\a"),
          "Nothing was put back");
  advises(RunTimeError(FileAlreadyExists, "/game\\ROUTES\\Quillon-route\\a.s"), "quillon clean') rebuilds");
  advises(RunTimeError(DiskFull, zip), "Make room");
  // The cause, not the place.
  const std::string working = "/game\\ROUTES\\Quillon-route\\";
  advises(
      RunTimeError(FileAlreadyExists, working + "ts-bak-readme.txt", "the route file holds readme.txt twice"),
      "zip it again");
  advises(RunTimeError(PathFileAccessError, working + "PATHS", "a file stands where a folder is wanted"),
          "elsewhere");
  advises(RunTimeError(PermissionDenied, working + "a.s"), "Close it");
  EXPECT_TRUE(
      Contains(Advice(RunTimeError(FileAlreadyExists, "/game\\ROUTES\\x 7"), "Installing X permanently"),
               "another number"));
  EXPECT_EQ(RemedyOf(RunTimeError(FileNotFound, list)), Remedy::LayDeliveredFiles);
  EXPECT_EQ(RemedyOf(RunTimeError(PathFileAccessError, list, kNoPermission)), Remedy::None);
}

TEST_F(CommandsTest, AReadOnlyDeliveryIsLaidWritable) {
  const std::string file = "Do_Not_Delete!\\misc_info\\own.tsl";
  Write(Root() + "/delivered/resources\\" + file, "text");
  MakeReadOnly(HostPath(Root() + "/delivered/resources\\" + file));
  RecordedOutput output;
  HeadlessFrontEnd frontEnd(output, options);
  RunningProgram program(App(), frontEnd);
  quillon::SetUp(program.Get(), Root() + "/delivered", {});
  EXPECT_EQ(State(DataPath("misc_info"))["own.tsl"], "file: text");
}

TEST_F(CommandsTest, ACancelledWelcomeRefusesWhatNeedsTheWorkingRoute) {
  KeepSession();
  EXPECT_EQ(Run("start"), 0);
  EXPECT_TRUE(IsShown("frmWelcome"));
  StoreRoute("valley", "Valley Line", kRoute);
  for (const std::string command : {"clean", "add", "load"}) {  // although it was answered before
    EXPECT_EQ(Run(command, command == "load" ? "Valley Line" : ""), 3) << command;
    EXPECT_TRUE(IsShown("frmWelcome") && !IsShown("frmLoad") && !IsShown("frmCleanUp")) << command;
  }
  EXPECT_EQ(Run("routes"), 0);
  KeepSession(false);
  options.welcomeOk = true;
  EXPECT_EQ(Run("load", "Valley Line"), 0);
  EXPECT_TRUE(IsShown("frmCleanUp") && IsShown("frmLoad"));
}

TEST_F(CommandsTest, ASecondInstanceSaysSoAndChangesNothing) {
  ASSERT_EQ(FirstRun(), 0);
  {
    RecordedOutput output;
    Session first(options, output);
    EXPECT_EQ(first.Run({.name = "start"}), 0);
    Write(AppPath("original_zips\\Installed\\installed_info.html"), "a start copies it anew");
    const auto before = State(App());
    for (const std::string command : {"start", "routes", "clean", "add", "load"}) {
      EXPECT_EQ(Run(command), 3) << command;
      EXPECT_EQ(BoxTexts(), Strings{"Quillon is already running."});
      EXPECT_TRUE(Events("main").empty()) << "it ends at once";
    }
    EXPECT_EQ(State(App()), before);
    EXPECT_EQ(Script("routes\n"), 3);
  }
  EXPECT_EQ(Run("start"), 0);
}

TEST_F(CommandsTest, AScriptIsOneProcess) {
  ASSERT_EQ(FirstRun(), 0);
  StoreRoute("valley", "Valley Line", kRoute);
  EXPECT_EQ(Script("# the usual\n\npick 'Valley Line' # by name\r\nroutes\nload\n"), 0);
  EXPECT_EQ(Loaded(), "valley");
  EXPECT_EQ(Events("main").size(), 2u);  // the start-up, and the way back from frmLoad
  Remove(WorkingPath("Shapes"));
  EXPECT_EQ(Script("start\nroutes\nstart\n"), 0);
  EXPECT_EQ(Texts("unload", "screen"), Strings{"frmWelcome"});  // answered once for all
}

TEST_F(CommandsTest, ARefusalLetsAScriptGoOnAndAnErrorEndsIt) {
  ASSERT_EQ(FirstRun(), 0);
  StoreRoute("storm", "Storm", kRoute);
  Write(AppPath("routes\\storm.qnz"), "damaged");
  EXPECT_EQ(Script("pick Nowhere\nroutes\n"), 3);
  EXPECT_EQ(Texts("row"), Strings{"Storm"});
  EXPECT_EQ(Script("pick Nowhere\nload Storm\nroutes\n"), 1);
  EXPECT_TRUE(Texts("row").empty());
  EXPECT_EQ(Script("routes\nfly\n"), 2);
  EXPECT_EQ(Run("script", Root() + "/none"), 1);
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
