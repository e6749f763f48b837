// The built program itself, as a process: what only a process can show.
#include <sys/wait.h>

#include <csignal>
#include <cstdio>

#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

constexpr const char* kNothing = "/dev/null";

/// A running `quillon`, its standard output in a pipe.
class Process {
 public:
  /// `before` is run by the shell first.
  explicit Process(const Strings& words, const std::string& input = kNothing,
                   const std::string& before = "true") {
    std::string command = before + "; echo $$; exec '" QUILLON_PROGRAM "'";
    for (const auto& word : words) command += " '" + word + "'";
    output_ = ::popen((command + " <'" + input + "' 2>/dev/null").c_str(), "r");
    std::string line;
    Line(line);
    pid_ = NumericValue(line);
  }
  ~Process() { End(); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// The next line without its end; false when there is none.
  bool Line(std::string& line) {
    line.clear();
    int c = 0;
    while ((c = std::fgetc(output_)) != EOF && c != '\n') line += static_cast<char>(c);
    return c != EOF;
  }
  bool Runs() const {
    siginfo_t info = {};
    ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT);
    return info.si_pid == 0;
  }
  void Kill() const { ::kill(pid_, SIGKILL); }
  /// Closes the pipe and waits. The exit status; the number of the signal that ended it, negative.
  int End() {
    const int status = output_ != nullptr ? ::pclose(std::exchange(output_, nullptr)) : 0;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }

 private:
  std::FILE* output_ = nullptr;
  pid_t pid_ = 0;
};

class ProcessTest : public ProgramTest {
 protected:
  Strings Words(const Strings& command) const {
    Strings words = {"--json", "--app", options.app, "--welcome", "ok"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
  }
  /// The exit status of a run whose every line is an event, the last one the end.
  int Run(const Strings& command, const std::string& input = kNothing,
          const std::string& before = "true") const {
    Process process(Words(command), input, before);
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
  const std::string root = Root() + "/M\xC3\xBChle & S\xC3\xB6hne";
  options.app = root + "/the app";
  fs::create_directories(root + "/real app");
  fs::create_directory_symlink("real app", options.app);
  fs::create_directory_symlink(root + "/game", root + "/Link.to game");
  EXPECT_EQ(Run({"sample", root}), 0);
  EXPECT_EQ(Run({"setup", "--game", root + "/Link.to game"}), 0);
  EXPECT_EQ(Run({"start"}), 0);
  fs::copy(root + "/zips", options.app + "/downloaded_routes");
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
  ASSERT_EQ(FirstRun(), 0);
  StoreRoute("valley", "Valley Line",
             {{.name = "V/World/w.w", .data = std::string(3'000'000, 'w'), .deflated = true}});
  EXPECT_EQ(Run({"load", "Valley Line"}, kNothing, "ulimit -f 2000"), 1);
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
  ASSERT_EQ(status, -SIGKILL);
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
