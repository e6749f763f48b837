// The built program itself, as a process: what only a process can show.
#include "tests/world/Process.h"
#include "core/text/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

class ProcessTest : public ProgramTest {
 protected:
  Strings Words(const Strings& command) const {
    Strings words = {"--json", "--app", options.app, "--welcome", "ok"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
  }
  /// The exit status of a run whose every line is an event, the last one the end.
  int Run(const Strings& command, const std::string& input = {}, int mostBlocks = 0) const {
    Process process(Words(command), input, mostBlocks);
    std::string last;
    for (std::string line; process.Line(line); last = line)
      EXPECT_TRUE(line.starts_with("{\"event\":") && Event::accept(line)) << line;
    const int status = process.End();
    EXPECT_EQ(last, R"({"event":"end","status":)" + std::to_string(status) + "}");
    return status;
  }
};

TEST_F(ProcessTest, EndsWithTheStatusOfTheContract) {
  for (const Strings& words : {Strings{}, {"fly"}, {"--seed", "x", "start"}}) {
    EXPECT_EQ(Run(words), 2);
    EXPECT_EQ(Process(words).End(), 2);
  }
  for (const std::string word : {"--help", "--version"}) EXPECT_EQ(Process({word}).End(), 0);
  EXPECT_EQ(Run({"start"}), 0);
  EXPECT_EQ(Run({"load", "Nowhere"}), 3);
  Write(Root() + "/lines", "routes\nhelp\n");
  EXPECT_EQ(Run({"script", "-"}, Root() + "/lines"), 0);
  Process plain({"--app", App(), "routes"});
  for (std::string line; plain.Line(line);) EXPECT_FALSE(Contains(line, "{") || Contains(line, "\r")) << line;
}

TEST_F(ProcessTest, TheSampleGoesItsWholeRoadThroughLinksAndOddNames) {
  const fs::path root = ToPath(Root()) / ToPath("M\xC3\xBChle & S\xC3\xB6hne"), app = root / "the app";
  fs::path game = root / "game";
  options.app = FromPath(app);
  fs::create_directories(root / "real app");
  if (HasLinks()) {
    MakeFolderLink("real app", app);
    game = root / "Link.to game";
    MakeFolderLink(root / "game", game);
  }
  EXPECT_EQ(Run({"sample", FromPath(root)}), 0);
  EXPECT_EQ(Run({"setup", "--game", FromPath(game)}), 0);
  EXPECT_EQ(Run({"start"}), 0);
  for (const auto& zip : fs::directory_iterator(root / "zips"))
    fs::copy_file(zip.path(), app / "downloaded_routes" / zip.path().filename());
  EXPECT_EQ(Run({"add"}), 0);
  for (const std::string route :
       {"Grosstal Bahn", "M\xC3\xBChlenbach & S\xC3\xB6hne Kleinbahn", "Coastal Line (2)"})
    EXPECT_EQ(Run({"load", route}), 0) << route;
  EXPECT_EQ(Run({"clean"}), 0);
}

TEST_F(ProcessTest, AReaderThatLeavesEndsNothing) {
  ASSERT_EQ(FirstRun(), 0);
  StoreRoute("valley", "Valley Line", {Entry("V/World/w.w", "world")});
  EXPECT_EQ(Process(Words({"load", "Valley Line"})).End(), 0);
  EXPECT_EQ(Loaded(), "valley");
}

TEST_F(ProcessTest, ALimitOfFileSizesIsAnErrorLikeAnyOther) {
  if (!Process::CanLimitFiles()) GTEST_SKIP() << "the platform has no such limit";
  ASSERT_EQ(FirstRun(), 0);
  StoreRoute("valley", "Valley Line",
             {{.name = "V/World/w.w", .data = std::string(3'000'000, 'w'), .deflated = true}});
  EXPECT_EQ(Run({"load", "Valley Line"}, {}, 2000), 1);
  EXPECT_FALSE(Exists(WorkingPath("World\\w.w")));
  EXPECT_EQ(Run({"load", "Valley Line"}), 0);
}

TEST_F(ProcessTest, AKilledLoadIsMendedByTheNext) {
  TestProgram undisturbed;
  std::vector<ZipEntry> large = {Entry("S/World/w.w", "world"), Entry("S/forest.dat", "forest of the storm")};
  for (int i = 0; i < 3000; ++i)
    large.push_back(Entry("S/Shapes/s" + std::to_string(i) + ".s", std::string(3000, 's')));
  const auto storeHill = [](const TestProgram& program) {
    program.StoreRoute("hill", "Hill Line", {Entry("H/World/h.w", "world")});
  };
  for (TestProgram* program : {static_cast<TestProgram*>(this), &undisturbed}) {
    ASSERT_EQ(program->FirstRun(), 0);
    storeHill(*program);
  }
  ASSERT_EQ(undisturbed.Run("load", "Hill Line"), 0);
  StoreRoute("storm", "Storm", large);
  NamedTexts before;
  int status = 0;
  // A load may be over before the signal comes; then it is tried again.
  for (int i = 0; i < 5 && status == 0; ++i) {
    ASSERT_EQ(ProgramTest::Run("load", "Hill Line"), 0);
    before = State(Root());
    Process process(Words({"load", "Storm"}));
    for (std::string line; process.Line(line) && !Contains(line, "Transferring route data...");) continue;
    while (process.Runs() && !Exists(WorkingPath("shapes\\s0.s"))) continue;
    process.Kill();
    status = process.End();
  }
  ASSERT_EQ(status, Process::kKilled);
  EXPECT_EQ(Loaded(), "hill");

  auto after = State(Root());
  for (auto* state : {&before, &after})
    std::erase_if(*state, [](const auto& item) {
      const Strings changing = {"game/ROUTES/Quillon-route/", "game/SAVES/Quillon-route",
                                "app/routes/Saves/hill",      "app/routes/activities/",
                                "app/routes/custom/storm",    "app/resources/Do_Not_Delete!/"};
      return std::any_of(changing.begin(), changing.end(),
                         [&](const auto& start) { return item.first.starts_with(start); });
    });
  EXPECT_EQ(after, before);

  EXPECT_EQ(Run({"load", "Storm"}), 0);
  EXPECT_EQ(Working("ts-bak-forest.dat"), "template forest");
  // The activities of the route that was loaded when the program died are gone with it.
  storeHill(*this);
  EXPECT_EQ(Run({"load", "Hill Line"}), 0);
  EXPECT_EQ(State(WorkingPath("")), undisturbed.State(undisturbed.WorkingPath("")));
}

}  // namespace
}  // namespace quillon
