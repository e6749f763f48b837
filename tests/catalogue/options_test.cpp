// The options screen, the installer's work, and the lists that come from the game's own files.
#include <gtest/gtest.h>

#include <optional>
#include <set>

#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

using Texts = std::vector<std::string>;

class OptionsTest : public testing::Test {
 protected:
  int SetOptions(const std::optional<std::string>& game, std::optional<bool> shortcut = {},
                 bool cancel = false) {
    Command command;
    command.name = "options";
    command.game = game;
    command.shortcut = shortcut;
    command.cancel = cancel;
    return program_.Run(command);
  }
  std::string Stored(const char* key) const { return program_.Ini("tsqn.ini", "TrainSim", key); }
  std::string Registered() const {
    return program_.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor", "TrainSimPath");
  }
  bool HasShortcut() const {
    return program_.Exists(program_.Home() + "/Desktop/Downloaded MSTS routes.lnk");
  }
  std::string MiscInfo(const std::string& name) const {
    return program_.AppPath("resources\\Do_Not_Delete!\\misc_info\\" + name);
  }

  TestProgram program_;
};

TEST_F(OptionsTest, OkStoresTheFolder) {
  program_.SetIni("tsqn.ini", "TrainSim", "Path", program_.Home());
  EXPECT_EQ(SetOptions(program_.Game() + "/"), 0);
  EXPECT_EQ(Stored("Path") + "|" + Stored("Train.exe"), program_.Game() + "|Yes");
  EXPECT_EQ(Registered(), "string:" + program_.Game());
  EXPECT_EQ(program_.Last("main")["TrainSimPath"], program_.Game());

  EXPECT_EQ(SetOptions(program_.Home()),
            0);  // no game there: only the settings hear of it, and nothing is said
  EXPECT_EQ(Stored("Path") + "|" + Stored("Train.exe"), program_.Home() + "|No");
  EXPECT_EQ(Registered(), "string:" + program_.Game());
  EXPECT_TRUE(program_.BoxTexts().empty());
  EXPECT_EQ(program_.Last("main")["FlashTarget"], "options");
}

TEST_F(OptionsTest, OkRefusesWhatIsNoFolder) {
  program_.Run("start");
  EXPECT_EQ(SetOptions(program_.Game() + "/train.exe", true), 3);
  EXPECT_EQ(program_.BoxTexts(), Texts{"Please select the correct Train Simulator folder!"});
  EXPECT_EQ(Stored("Path"), program_.Game());
  EXPECT_TRUE(HasShortcut()) << "done before the path is looked at";
}

TEST_F(OptionsTest, CancelPutsBackWhatTheScreenCameUpWith) {
  program_.SetIni("tsqn.ini", "TrainSim", "Path", program_.Home());
  EXPECT_EQ(SetOptions(program_.Game(), true, true), 0);
  EXPECT_EQ(Stored("Path"), program_.Home());
  EXPECT_EQ(Registered(), "string:" + program_.Home()) << "also when it is a wrong one";
  EXPECT_FALSE(HasShortcut());
}

TEST_F(OptionsTest, TheShortcutComesAndGoes) {
  EXPECT_EQ(SetOptions({}), 0);  // wanted, unless told otherwise
  EXPECT_TRUE(HasShortcut());
  EXPECT_EQ(program_.Ini("tsqn.ini", "Shortcut", "State"), "on");
  EXPECT_EQ(SetOptions({}, false), 0);
  EXPECT_FALSE(HasShortcut());
  EXPECT_EQ(program_.Ini("tsqn.ini", "Shortcut", "State"), "off");
  EXPECT_EQ(SetOptions({}), 0);
  EXPECT_FALSE(HasShortcut());
}

TEST_F(OptionsTest, SetUpLaysOutWhatIsMissingAndKeepsTheRest) {
  const std::string kept = MiscInfo("files.tsl"), lost = MiscInfo("env_defaults\\EnvFiles\\sun.env");
  program_.Run("start");
  program_.Write(kept, "a user's list");
  program_.Write(MiscInfo("copyfiles.tsl"), "filled before");
  program_.Remove(lost);
  const auto before = program_.Tree(program_.App());
  program_.SetUpAgain(false);
  auto after = program_.Tree(program_.App());
  EXPECT_EQ(after.erase("resources\\do_not_delete!\\misc_info\\env_defaults\\envfiles\\sun.env"), 1u);
  EXPECT_TRUE(after == before);
  program_.SetUpAgain(true);
  EXPECT_EQ(program_.ReadBytes(MiscInfo("copyfiles.tsl")), "filled before");
  EXPECT_TRUE(program_.Exists(program_.Home() +
                              "/.local/share/applications/Ostrand/Quillon/Downloaded MSTS routes.lnk"));
}

TEST_F(OptionsTest, SetUpDerivesTheListsFromTheGame) {
  const auto lines = Lines(program_.ReadBytes(MiscInfo("copyfiles.tsl")));
  std::set<std::string> places;
  for (const auto& line : lines) {
    EXPECT_TRUE(program_.Exists(program_.GamePath(line))) << line;
    EXPECT_TRUE(line.starts_with("TEMPLATE\\") || line.starts_with("Routes\\")) << line;
    const std::string lower = LowerCase(line);
    EXPECT_FALSE(Contains(lower, "\\tiles\\") || Contains(lower, "\\world\\")) << line;
    const auto top = lower.starts_with("routes\\") ? lower.find('\\', 7) : lower.find('\\');
    EXPECT_TRUE(places.insert(lower.substr(top)).second) << line << ": one place, two sources";
  }
  EXPECT_EQ(program_.FirstRun(), 0);
  for (const std::string file :
       {"forest.dat", "sigcfg.dat", "ssource.dat", "SHAPES\\europe1.s", "SHAPES\\usa2.s",
        "TERRTEX\\SNOW\\grass.ace", "SHAPES\\signal.s", "TEXTURES\\signal.ace"})
    EXPECT_TRUE(program_.Exists(program_.GamePath("ROUTES\\Quillon-route\\" + file))) << file;

  const TestProgram bare(false);  // not told where the game is
  EXPECT_EQ(bare.ReadBytes(bare.AppPath("resources\\Do_Not_Delete!\\misc_info\\copyfiles.tsl")), "");
  EXPECT_EQ(bare.RegistryValue("SOFTWARE\\Ostrand\\Larkmoor", "TrainSimPath"), bare.kMissing);
}

TEST_F(OptionsTest, MakeListNamesEachPlaceOnceUnderItsFirstSource) {
  EXPECT_EQ(program_.Run("make-list"), 0);
  const std::string routes = program_.Game() + "\\Routes\\";
  EXPECT_EQ(Lines(program_.ReadBytes(MiscInfo("trains\\stuff.tsl"))),
            (Texts{program_.Game() + "\\TEMPLATE\\forest.dat", program_.Game() + "\\TEMPLATE\\sigcfg.dat",
                   routes + "USA2\\shapes\\usa2.s", routes + "USA2\\ssource.dat",
                   routes + "USA2\\terrtex\\snow\\grass.ace", routes + "USA2\\usa2.trk",
                   routes + "USA1\\shapes\\usa1.s", routes + "USA1\\usa1.trk", routes + "JAPAN2\\japan2.trk",
                   routes + "JAPAN2\\shapes\\japan2.s", routes + "JAPAN1\\japan1.trk",
                   routes + "JAPAN1\\shapes\\japan1.s", routes + "EUROPE2\\europe2.trk",
                   routes + "EUROPE2\\shapes\\europe2.s", routes + "EUROPE1\\europe1.trk",
                   routes + "EUROPE1\\shapes\\europe1.s"}));
}

}  // namespace
}  // namespace quillon
