// A Checkup that is given up: the game and the records are as they were.
#include "checkup/Checkup.h"
#include "core/Screen.h"
#include "tests/world/GivesUp.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

/// Clicks Cancel as soon as it can be clicked.
class ImpatientFrontEnd : public HeadlessFrontEnd {
 public:
  using HeadlessFrontEnd::HeadlessFrontEnd;

  void Yield() override {
    if (auto* screen = dynamic_cast<ProgressScreen*>(program->Screens().Top())) screen->btnCancelClick();
  }
  RunningProgram* program = nullptr;
};

class GivenUpTest : public ProgramTest {
 protected:
  GivenUpTest() {
    EXPECT_EQ(FirstRun(), 0);
    for (const std::string name : {"bad", "good", "worse"})
      Write(Consists() + "/" + name + ".con", "Train (\r\n\tTrainCfg ( \"" + name + "\"\r\n" +
                                                  (name == "good" ? "" : "EngineData ( no where )\r\n") +
                                                  ")\r\n");
    EXPECT_EQ(Run("checkup"), 0);
    MakeReadOnly(HostPath(BackedUp("worse")));
    app_ = State(App());
    game_ = State(Game());
  }

  std::string Consists() const { return Game() + "/TRAINS/CONSISTS"; }
  std::string BackedUp(const std::string& name) const {
    return GamePath("TRAINS\\CONSISTS\\QN-Backed-up-consists\\" + name + ".con");
  }
  void ExpectAllAsItWas(const std::string& when) {
    EXPECT_EQ(Changed(app_, State(App())), Strings()) << when;
    EXPECT_EQ(Changed(game_, State(Game())), Strings()) << when;
  }

  NamedTexts app_, game_;
};

TEST_F(GivenUpTest, NothingIsLeftOfItAnywhere) {
  RecordedOutput output;
  HeadlessFrontEnd frontEnd(output, options);
  int at = 0;
  for (bool done = false; !done; ++at) {
    RunningProgram program(App(), frontEnd);
    program.Get().shared.CheckTrains = true;
    GivesUp progress(at);
    done = Checkup(program.Get(), progress, [] {}).Run();
    if (!done) ExpectAllAsItWas("given up at " + std::to_string(at));
  }
  EXPECT_GT(at, 5);
  EXPECT_TRUE(Exists(BackedUp("bad")) && Exists(BackedUp("worse"))) << "the one that was not given up";
  EXPECT_EQ(Run("checkup"), 0);
  EXPECT_FALSE(Exists(DataPath("misc_info\\trains before")));
}

TEST_F(GivenUpTest, CancelClosesTheScreen) {
  StoreRoute("valley", "Valley Line", RouteEntries("Valley Line"));
  app_ = State(App());
  for (const bool routes : {false, true}) {
    RecordedOutput output;
    ImpatientFrontEnd frontEnd(output, options);
    RunningProgram program(App(), frontEnd);
    frontEnd.program = &program;
    SharedState& shared = program.Get().shared;
    shared.CheckTrains = shared.ShowReportWhenDone = true;
    if (routes) shared.RoutesToJudge = {"valley"};
    program.Screens().Do([&] { program.Screens().ShowModal("frmActivityCheck"); });
    EXPECT_EQ(program.Screens().Top(), nullptr);
    EXPECT_TRUE(program.Get().refused);
    EXPECT_FALSE(shared.ShowReportWhenDone || shared.CheckTrains || shared.BuildReportOnReturn);
    ExpectAllAsItWas(routes ? "routes" : "game");
  }
}

}  // namespace
}  // namespace quillon
