// Start-up: what it makes, keeps and mends, and what the main screen then says.
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

constexpr const char* kErrorRow = "There has been an error.  Please run Cleanup.";
constexpr const char* kGameKey = "SOFTWARE\\Ostrand\\Larkmoor";
const Strings kShown = {"lblRouteName", "lblLoaded", "FlashTarget"};

class StartUpTest : public ProgramTest {
 protected:
  void StoreAsLoaded(const std::string& zip, const std::string& name) {
    FirstRun();
    StoreRoute(zip, name, {});
    SetIni("routes.ini", "Current", "Loaded", zip);
  }
  std::string Settings() const {
    return Ini("tsqn.ini", "TrainSim", "Path") + "|" + Ini("tsqn.ini", "TrainSim", "Train.exe");
  }
};

TEST_F(StartUpTest, AFirstStartMakesAllThatIsMissing) {
  EXPECT_EQ(Run("start"), 0);
  for (const std::string folder :
       {"routes\\terrain_cache", "routes\\activities\\activities", "routes\\activities\\paths",
        "routes\\activities\\services", "routes\\activities\\traffic", "routes\\custom", "routes\\consists",
        "routes\\route_info", "routes\\route_pics", "routes\\Saves", "downloaded_routes", "resources\\temp",
        "resources\\ziptemp", "resources\\ziptemp2", "resources\\Do_Not_Delete!\\misc_info\\trains"})
    EXPECT_TRUE(fs::is_directory(AppPath(folder))) << folder;
  for (const std::string file :
       {"original_zips\\PLEASE_READ_THIS!.html", "original_zips\\Installed\\installed_info.html",
        "original_zips\\Not_Installed\\not_installed_info.html",
        "original_zips\\bad_zip_files\\bad_files_info.html", "routes\\tsNo Data!.jpg",
        "resources\\Do_Not_Delete!\\current.tsl", "resources\\Do_Not_Delete!\\default.tsl"})
    EXPECT_TRUE(fs::is_regular_file(AppPath(file))) << file;
  EXPECT_EQ(Current({"Loaded", "Temp", "Zip"}), "No Data!|No Data!|You'll have to add some routes!");
  EXPECT_EQ(Settings(), Game() + "|Yes");
  EXPECT_EQ(RegistryValue("SOFTWARE\\Ostrand\\Larkmoor\\Quillon", "Associated"), "string:Yes");
  EXPECT_EQ(Texts("show", "screen"), (Strings{"frmMain", "frmWelcome"}));
  EXPECT_EQ(MainTexts(kShown), "No route loaded.||manage");
  EXPECT_TRUE(MainTexts({"PreviewPath", "imgRoute"}).ends_with("\\qndefault.jpg"));
}

TEST_F(StartUpTest, ALaterStartOnlyCopiesTheNotesAgain) {
  FirstRun();
  StoreRoute("foo", "Foo", {});
  Write(DataPath("current.tsl"), "a user's route\r\n");
  Run("start");
  EXPECT_EQ(Texts("show", "screen"), Strings{"frmMain"});
  const auto before = Tree(App());
  Write(AppPath("original_zips\\Installed\\installed_info.html"), "changed");
  Remove(AppPath("routes\\tsno data!.jpg"));
  EXPECT_EQ(Run("start"), 0);
  EXPECT_TRUE(Tree(App()) == before);
  EXPECT_EQ(ReadBytes(DataPath("current.tsl")), "a user's route\r\n");
}

TEST_F(StartUpTest, TheSettingsOutrankTheRegistry) {
  const std::string wrong = Home();
  SetIni("tsqn.ini", "TrainSim", "Path", wrong);
  EXPECT_EQ(Run("start"), 0);
  EXPECT_EQ(MainTexts({"TrainSimPath", "FlashTarget"}), wrong + "|options");
  EXPECT_EQ(Last("main")["TrainExeFound"], false);
  EXPECT_EQ(Settings(), wrong + "|No");
  EXPECT_EQ(RegistryValue(kGameKey, "TrainSimPath"), "string:" + Game());
  EXPECT_EQ(Texts("show", "screen"), Strings{"frmMain"});

  Remove(DataPath("tsqn.ini"));
  Run("start");
  EXPECT_EQ(MainTexts({"TrainSimPath"}), Game());

  Remove(DataPath("tsqn.ini"));
  Desktop().ClearRegistry();  // no key: nothing is read, nothing is written
  Run("start");
  const std::string standard = "C:\\Program Files\\Microsoft Games\\Train Simulator";
  EXPECT_EQ(MainTexts({"TrainSimPath"}) + "|" + Settings(), standard + "|" + standard + "|No");
  EXPECT_EQ(RegistryValue(std::string(kGameKey) + "\\Quillon", "Associated"), kMissing);
}

TEST_F(StartUpTest, ShowsTheLoadedRoute) {
  StoreAsLoaded("foo", "Foo");
  SetIni("routes.ini", "Current", "Temp", "Another");
  Run("start");
  EXPECT_EQ(MainTexts(kShown), "Foo|Currently loaded route|");
  const std::string preview = App() + "\\routes\\tsfoo.jpg";
  EXPECT_EQ(MainTexts({"imgRoute", "PreviewPath"}), preview + "|" + preview);
  EXPECT_EQ(Current({"Temp", "Zip"}), "Foo|foo");
}

TEST_F(StartUpTest, ALostRouteFileResetsTheSelection) {
  StoreAsLoaded("foo", "Foo");
  StoreRoute("bar", "Bar", {});
  Remove(AppPath("routes\\foo.qnz"));
  Run("start");
  EXPECT_EQ(MainTexts(kShown), "No route loaded.||down");
  EXPECT_EQ(Current({"Temp", "Zip", "Loaded"}), "No route loaded.|No route loaded.|foo");

  Remove(AppPath("routes\\bar.qnz"));
  MakeReadOnly(DataPath("routes.ini"));
  Run("start");
  EXPECT_EQ(Current({"Zip", "Loaded"}), "You'll have to add some routes!|No Data!");
  EXPECT_EQ(Ini("routes.ini", "bar", "Name"), kMissing);
  EXPECT_EQ(MainTexts({"FlashTarget"}), "manage");
}

TEST_F(StartUpTest, ForgetsThatAnErrorRowWasPicked) {
  FirstRun();
  StoreRoute("foo", "Foo", {});
  DeleteSection("routes.ini", "foo");
  EXPECT_EQ(Run("pick", kErrorRow), 0);
  EXPECT_EQ(Current({"Temp", "Zip"}), std::string(kErrorRow) + "|No Data!");
  Run("start");
  EXPECT_EQ(Current({"Temp", "Zip"}), "No route loaded.|No Data!");
  EXPECT_EQ(Script("pick '" + std::string(kErrorRow) + "'\ninfo\n"), 3);
}

}  // namespace
}  // namespace quillon
