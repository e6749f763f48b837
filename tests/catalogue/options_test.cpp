// The options screen, the installer's work, and the lists that come from the game's own files.
#include <set>

#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class OptionsTest : public ProgramTest {
 protected:
  int SetOptions(const std::optional<std::string>& game, std::optional<bool> shortcut = {},
                 bool cancel = false) {
    return Run(Command{.name = "options", .game = game, .shortcut = shortcut, .cancel = cancel});
  }
  /// Of the settings: the path and whether the game is there; then the registry's path.
  std::string Stored() const {
    return Ini("tsqn.ini", "TrainSim", "Path") + "|" + Ini("tsqn.ini", "TrainSim", "Train.exe") + "|" +
           RegistryValue("SOFTWARE\\Ostrand\\Larkmoor", "TrainSimPath");
  }
  bool HasShortcut() const { return fs::exists(Desktop().Desktop() / "Downloaded MSTS routes.lnk"); }
  std::string MiscInfo(const std::string& name) const { return DataPath("misc_info\\" + name); }
};

TEST_F(OptionsTest, OkStoresTheFolder) {
  SetIni("tsqn.ini", "TrainSim", "Path", Home());
  EXPECT_EQ(SetOptions(Game() + "/"), 0);
  EXPECT_EQ(Stored(), Game() + "|Yes|string:" + Game());
  EXPECT_EQ(MainTexts({"TrainSimPath"}), Game());

  EXPECT_EQ(SetOptions(Home()), 0);  // no game there: only the settings hear of it, and nothing is said
  EXPECT_EQ(Stored(), Home() + "|No|string:" + Game());
  EXPECT_TRUE(BoxTexts().empty());
  EXPECT_EQ(MainTexts({"FlashTarget"}), "options");
}

TEST_F(OptionsTest, MissingRightsAreToldAndTheFolderIsStoredAllTheSame) {
  if (!HasPermissions()) GTEST_SKIP() << "folders are shut in another way here";
  FirstRun();
  const WithoutPrivileges user(Root());
  const auto told = [&] {
    testing::internal::CaptureStderr();
    EXPECT_EQ(SetOptions(Game()), 0);
    return testing::internal::GetCapturedStderr();
  };
  EXPECT_EQ(told(), "");
  const std::vector<std::pair<std::string, std::string>> shuts = {
      {Game(), "into this folder"},
      {GamePath("TRAINS\\CONSISTS"), "Trains\\Consists"},
      {App(), "Quillon's own"}};
  for (const auto& [folder, named] : shuts) {
    const ShutFolder shut(folder);
    EXPECT_TRUE(Contains(told(), named)) << folder;
    EXPECT_EQ(Stored(), Game() + "|Yes|string:" + Game());
  }
}

TEST_F(OptionsTest, OkRefusesWhatIsNoFolder) {
  Run("start");
  EXPECT_EQ(SetOptions(Game() + "/train.exe", true), 3);
  EXPECT_EQ(BoxTexts(), Strings{"Please select the correct Train Simulator folder!"});
  EXPECT_EQ(Stored(), Game() + "|Yes|string:" + Game());
  EXPECT_TRUE(HasShortcut()) << "done before the path is looked at";
}

TEST_F(OptionsTest, CancelPutsBackWhatTheScreenCameUpWith) {
  SetIni("tsqn.ini", "TrainSim", "Path", Home());
  EXPECT_EQ(SetOptions(Game(), true, true), 0);
  EXPECT_EQ(Stored(), Home() + "|No|string:" + Home()) << "also when it is a wrong one";
  EXPECT_FALSE(HasShortcut());
}

TEST_F(OptionsTest, TheShortcutComesAndGoes) {
  const std::vector<std::pair<std::optional<bool>, bool>> cases = {
      {{}, true}, {false, false}, {{}, false}, {true, true}};  // wanted, unless told otherwise
  for (const auto& [told, wanted] : cases) {
    EXPECT_EQ(SetOptions({}, told), 0);
    EXPECT_EQ(HasShortcut(), wanted);
    EXPECT_EQ(Ini("tsqn.ini", "Shortcut", "State"), wanted ? "on" : "off");
  }
}

TEST_F(OptionsTest, SetUpLaysOutWhatIsMissingAndKeepsTheRest) {
  Run("start");
  Write(MiscInfo("files.tsl"), "a user's list");
  Write(MiscInfo("copyfiles.tsl"), "filled before");
  Remove(MiscInfo("env_defaults\\EnvFiles\\sun.env"));
  const auto before = Tree(App());
  Write(AppPath("resources\\files\\help.hlp"), "an older help");
  SetUpAgain(false);
  auto after = Tree(App());
  EXPECT_EQ(after.erase("resources\\do_not_delete!\\misc_info\\env_defaults\\envfiles\\sun.env"), 1u);
  EXPECT_TRUE(after == before);
  SetUpAgain(true);
  EXPECT_EQ(ReadBytes(MiscInfo("copyfiles.tsl")), "filled before");
  EXPECT_GT(fs::file_size(Desktop().Programs() / "Ostrand/Quillon/Downloaded MSTS routes.lnk"), 0u);
}

TEST_F(OptionsTest, SetUpDerivesTheListsFromTheGame) {
  std::set<std::string> places;
  for (const auto& line : Lines(ReadBytes(MiscInfo("copyfiles.tsl")))) {
    EXPECT_TRUE(Exists(GamePath(line))) << line;
    EXPECT_TRUE(line.starts_with("TEMPLATE\\") || line.starts_with("Routes\\")) << line;
    const std::string lower = LowerCase(line);
    EXPECT_FALSE(Contains(lower, "\\tiles\\") || Contains(lower, "\\world\\")) << line;
    const auto top = lower.starts_with("routes\\") ? lower.find('\\', 7) : lower.find('\\');
    EXPECT_TRUE(places.insert(lower.substr(top)).second) << line << ": one place, two sources";
  }
  EXPECT_EQ(FirstRun(), 0);
  for (const std::string file :
       {"forest.dat", "sigcfg.dat", "ssource.dat", "SHAPES\\europe1.s", "SHAPES\\usa2.s",
        "TERRTEX\\SNOW\\grass.ace", "SHAPES\\signal.s", "TEXTURES\\signal.ace"})
    EXPECT_TRUE(Exists(WorkingPath(file))) << file;

  const TestProgram bare(false);  // not told where the game is
  EXPECT_EQ(bare.ReadBytes(bare.DataPath("misc_info\\copyfiles.tsl")), "");
  EXPECT_EQ(bare.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor", "TrainSimPath"), kMissing);
}

TEST_F(OptionsTest, MakeListNamesEachPlaceOnceUnderItsFirstSource) {
  EXPECT_EQ(Run("make-list"), 0);
  Strings expected = {"TEMPLATE\\forest.dat",
                      "TEMPLATE\\sigcfg.dat",
                      "Routes\\USA2\\shapes\\usa2.s",
                      "Routes\\USA2\\ssource.dat",
                      "Routes\\USA2\\terrtex\\snow\\grass.ace",
                      "Routes\\USA2\\usa2.trk",
                      "Routes\\USA1\\shapes\\usa1.s",
                      "Routes\\USA1\\usa1.trk",
                      "Routes\\JAPAN2\\japan2.trk",
                      "Routes\\JAPAN2\\shapes\\japan2.s",
                      "Routes\\JAPAN1\\japan1.trk",
                      "Routes\\JAPAN1\\shapes\\japan1.s",
                      "Routes\\EUROPE2\\europe2.trk",
                      "Routes\\EUROPE2\\shapes\\europe2.s",
                      "Routes\\EUROPE1\\europe1.trk",
                      "Routes\\EUROPE1\\shapes\\europe1.s"};
  for (auto& line : expected) line.insert(0, Game() + "\\");
  EXPECT_EQ(Lines(ReadBytes(MiscInfo("trains\\stuff.tsl"))), expected);
}

}  // namespace
}  // namespace quillon
