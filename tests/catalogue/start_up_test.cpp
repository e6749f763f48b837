// Start-up: what it makes, keeps and mends, and what the main screen then says.
#include <gtest/gtest.h>

#include <filesystem>

#include "headless/Session.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

using Texts = std::vector<std::string>;
constexpr const char* kErrorRow = "There has been an error.  Please run Cleanup.";

class StartUpTest : public testing::Test {
 protected:
  std::string MainText(const char* key) const { return program_.Last("main").value(key, ""); }
  std::string Current(const char* key) const { return program_.Ini("routes.ini", "Current", key); }
  /// A route that is taken for the loaded one.
  void AddAsLoaded(const std::string& zip, const std::string& name) {
    program_.FirstRun();
    program_.AddRoute(zip + ".zip", name);
    program_.SetIni("routes.ini", "Current", "Loaded", zip);
  }

  TestProgram program_;
};

TEST_F(StartUpTest, AFirstStartMakesAllThatIsMissing) {
  EXPECT_EQ(program_.Run("start"), 0);
  for (const std::string folder : {"original_zips",
                                   "downloaded_routes",
                                   "routes",
                                   "routes\\terrain_cache",
                                   "routes\\activities",
                                   "routes\\custom",
                                   "routes\\activities\\activities",
                                   "routes\\activities\\paths",
                                   "routes\\activities\\services",
                                   "routes\\activities\\traffic",
                                   "routes\\consists",
                                   "routes\\route_info",
                                   "routes\\route_pics",
                                   "resources\\Do_Not_Delete!\\misc_info\\trains",
                                   "resources\\temp",
                                   "resources\\ziptemp",
                                   "resources\\ziptemp2",
                                   "original_zips\\Not_Installed",
                                   "original_zips\\bad_zip_files",
                                   "original_zips\\Installed",
                                   "routes\\Saves"})
    EXPECT_TRUE(std::filesystem::is_directory(program_.AppPath(folder))) << folder;
  for (const std::string file :
       {"original_zips\\PLEASE_READ_THIS!.html", "original_zips\\Installed\\installed_info.html",
        "original_zips\\Not_Installed\\not_installed_info.html",
        "original_zips\\bad_zip_files\\bad_files_info.html", "routes\\tsNo Data!.jpg",
        "resources\\Do_Not_Delete!\\current.tsl", "resources\\Do_Not_Delete!\\default.tsl"})
    EXPECT_TRUE(std::filesystem::is_regular_file(program_.AppPath(file))) << file;
  EXPECT_EQ(Current("Loaded") + "|" + Current("Temp") + "|" + Current("Zip"),
            "No Data!|No Data!|You'll have to add some routes!");
  EXPECT_EQ(program_.Ini("tsqn.ini", "TrainSim", "Path"), program_.Game());
  EXPECT_EQ(program_.Ini("tsqn.ini", "TrainSim", "Train.exe"), "Yes");
  EXPECT_EQ(program_.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor\\Quillon", "Associated"), "string:Yes");
  EXPECT_EQ(program_.Texts("show", "screen"), (Texts{"frmMain", "frmWelcome"}));
  EXPECT_EQ(MainText("lblRouteName") + "|" + MainText("FlashTarget"), "No route loaded.|manage");
  EXPECT_TRUE(MainText("imgRoute").ends_with("\\qndefault.jpg"));
  EXPECT_EQ(MainText("PreviewPath"), "");
}

TEST_F(StartUpTest, ALaterStartOnlyCopiesTheNotesAgain) {
  program_.FirstRun();
  program_.AddRoute("foo.zip", "Foo");
  program_.Run("start");
  EXPECT_EQ(program_.Texts("show", "screen"), Texts{"frmMain"});
  const auto before = program_.Tree(program_.App());
  program_.Write(program_.AppPath("original_zips\\Installed\\installed_info.html"), "changed");
  program_.Remove(program_.AppPath("routes\\tsno data!.jpg"));
  EXPECT_EQ(program_.Run("start"), 0);
  EXPECT_TRUE(program_.Tree(program_.App()) == before);

  const std::string list = program_.AppPath("resources\\Do_Not_Delete!\\current.tsl");
  program_.Write(list, "a user's route\r\n");
  program_.Run("start");
  EXPECT_EQ(program_.ReadBytes(list), "a user's route\r\n");
}

TEST_F(StartUpTest, TheSettingsOutrankTheRegistry) {
  const std::string wrong = program_.Home();
  program_.SetIni("tsqn.ini", "TrainSim", "Path", wrong);
  EXPECT_EQ(program_.Run("start"), 0);
  EXPECT_EQ(MainText("TrainSimPath") + "|" + MainText("FlashTarget"), wrong + "|options");
  EXPECT_EQ(program_.Last("main")["TrainExeFound"], false);
  EXPECT_EQ(program_.Ini("tsqn.ini", "TrainSim", "Path"), wrong);
  EXPECT_EQ(program_.Ini("tsqn.ini", "TrainSim", "Train.exe"), "No");
  EXPECT_EQ(program_.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor", "TrainSimPath"),
            "string:" + program_.Game());
  EXPECT_EQ(program_.Texts("show", "screen"), Texts{"frmMain"});

  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\tsqn.ini"));
  program_.Run("start");
  EXPECT_EQ(MainText("TrainSimPath"), program_.Game());

  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\tsqn.ini"));
  program_.Remove(program_.AppPath("registry.ini"));  // no key: nothing is read, nothing is written
  program_.Run("start");
  EXPECT_EQ(MainText("TrainSimPath"), "C:\\Program Files\\Microsoft Games\\Train Simulator");
  EXPECT_EQ(program_.Ini("tsqn.ini", "TrainSim", "Path"), MainText("TrainSimPath"));
  EXPECT_EQ(program_.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor\\Quillon", "Associated"), program_.kMissing);
}

TEST_F(StartUpTest, ShowsTheLoadedRoute) {
  AddAsLoaded("foo", "Foo");
  program_.SetIni("routes.ini", "Current", "Temp", "Another");
  program_.Run("start");
  EXPECT_EQ(MainText("lblRouteName") + "|" + MainText("lblLoaded") + "|" + MainText("FlashTarget"),
            "Foo|Currently loaded route|");
  EXPECT_TRUE(MainText("imgRoute").ends_with("\\routes\\tsfoo.jpg"));
  EXPECT_EQ(MainText("PreviewPath"), MainText("imgRoute"));
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip"), "Foo|foo");
}

TEST_F(StartUpTest, ALostRouteFileResetsTheSelection) {
  AddAsLoaded("foo", "Foo");
  program_.AddRoute("bar.zip", "Bar");
  program_.Remove(program_.AppPath("routes\\foo.qnz"));
  program_.Run("start");
  EXPECT_EQ(MainText("lblRouteName") + "|" + MainText("lblLoaded") + "|" + MainText("FlashTarget"),
            "No route loaded.||down");
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip") + "|" + Current("Loaded"),
            "No route loaded.|No route loaded.|foo");

  program_.Remove(program_.AppPath("routes\\bar.qnz"));
  std::filesystem::permissions(program_.AppPath("resources\\Do_Not_Delete!\\routes.ini"),
                               std::filesystem::perms::owner_read);
  program_.Run("start");
  EXPECT_EQ(Current("Zip") + "|" + Current("Loaded"), "You'll have to add some routes!|No Data!");
  EXPECT_EQ(program_.Ini("routes.ini", "bar", "Name"), program_.kMissing);
  EXPECT_EQ(MainText("FlashTarget"), "manage");
}

TEST_F(StartUpTest, ForgetsThatAnErrorRowWasPicked) {
  AddAsLoaded("foo", "Foo");
  program_.SetIni("routes.ini", "Current", "Loaded", "No Data!");
  program_.DeleteSection("routes.ini", "foo");
  EXPECT_EQ(program_.Run("pick", kErrorRow), 0);
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip"), std::string(kErrorRow) + "|No Data!");
  program_.Run("start");
  EXPECT_EQ(Current("Temp") + "|" + Current("Zip"), "No route loaded.|No Data!");
  EXPECT_EQ(program_.Script("pick '" + std::string(kErrorRow) + "'\ninfo\n"), 3);
}

TEST_F(StartUpTest, ASecondInstanceSaysSoAndChangesNothing) {
  program_.FirstRun();
  program_.KeepSession();
  EXPECT_EQ(program_.Run("start"), 0);
  program_.Write(program_.AppPath("original_zips\\Installed\\installed_info.html"), "changed");
  const auto before = program_.Tree(program_.App());
  RecordedOutput output;
  Command start;
  start.name = "start";
  EXPECT_EQ(Session(program_.options, output).Run(start), 3);
  EXPECT_TRUE(program_.Tree(program_.App()) == before);
  Texts boxes;
  for (const Event& event : output.events)
    if (event["event"] == "box") boxes.push_back(event["text"]);
  EXPECT_EQ(boxes, Texts{"Quillon is already running."});
  program_.EndSession();
  EXPECT_EQ(program_.Run("start"), 0);
}

TEST_F(StartUpTest, AMissingMasterEndsTheProgram) {
  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\misc_info\\tsnone.jpg"));
  EXPECT_EQ(program_.Run("start"), 1);
  EXPECT_EQ(program_.LastError(), 53);
  EXPECT_TRUE(program_.LastErrorPath().ends_with("\\tsnone.jpg"));
  program_.Remove(program_.AppPath("resources\\Do_Not_Delete!\\misc_info"));
  EXPECT_EQ(program_.Run("start"), 1);
  EXPECT_NE(program_.LastError(), 0);
}

}  // namespace
}  // namespace quillon
