// The built program itself, as a process: what only a process can show.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <filesystem>

#include "core/Text.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

/// A running `quillon`, its standard output in a pipe.
class Process {
 public:
  explicit Process(const Strings& words, const std::string& input = "/dev/null") {
    std::string command = "echo $$; exec '" QUILLON_PROGRAM "'";
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

class ProcessTest : public testing::Test {
 protected:
  Strings Words(const Strings& command) const {
    Strings words = {"--json", "--app", program_.App(), "--welcome", "ok"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
  }
  /// The exit status of a run whose every line is an event, the last one the end.
  static int RunJson(const Strings& words, const std::string& input = "/dev/null") {
    Process process(words, input);
    std::string last;
    for (std::string line; process.Line(line); last = line)
      EXPECT_TRUE(line.starts_with("{\"event\":") && Event::accept(line)) << line;
    const int status = process.End();
    EXPECT_EQ(last, R"({"event":"end","status":)" + std::to_string(status) + "}");
    return status;
  }
  int Run(const Strings& command, const std::string& input = "/dev/null") const {
    return RunJson(Words(command), input);
  }
  std::string Loaded() const { return program_.Ini("routes.ini", "Current", "Loaded"); }

  TestProgram program_;
};

TEST_F(ProcessTest, EndsWithTheStatusOfTheContract) {
  for (const Strings& words : {Strings{}, {"fly"}, {"--fly", "start"}, {"pick"}, {"--seed", "x", "start"}}) {
    EXPECT_EQ(Run(words), 2);
    EXPECT_EQ(Process(words).End(), 2);
  }
  for (const std::string word : {"--help", "--version"}) EXPECT_EQ(Process({word}).End(), 0);
  EXPECT_EQ(Run({"start"}), 0);
  EXPECT_EQ(Run({"load", "Nowhere"}), 3);
  program_.Write(program_.Root() + "/lines", "routes\nhelp\n");
  EXPECT_EQ(Run({"script", "-"}, program_.Root() + "/lines"), 0);
  Process plain({"--app", program_.App(), "routes"});
  for (std::string line; plain.Line(line);) EXPECT_FALSE(Contains(line, "{") || Contains(line, "\r")) << line;
}

TEST_F(ProcessTest, TheSampleGoesItsWholeRoadThroughLinksAndOddNames) {
  const std::string root = program_.Root() + "/M\xC3\xBChle & S\xC3\xB6hne", app = root + "/the app";
  fs::create_directories(root + "/real app");
  fs::create_directory_symlink("real app", app);
  fs::create_directory_symlink(root + "/game", root + "/Link.to game");
  const auto run = [&](Strings command) {
    command.insert(command.begin(), {"--json", "--app", app, "--welcome", "ok"});
    return RunJson(command);
  };
  EXPECT_EQ(run({"sample", root}), 0);
  EXPECT_EQ(run({"setup", "--game", root + "/Link.to game"}), 0);
  EXPECT_EQ(run({"start"}), 0);
  fs::copy(root + "/zips", app + "/downloaded_routes");
  EXPECT_EQ(run({"add"}), 0);
  for (const std::string route :
       {"Grosstal Bahn", "M\xC3\xBChlenbach & S\xC3\xB6hne Kleinbahn", "Coastal Line (2)"})
    EXPECT_EQ(run({"load", route}), 0) << route;
  EXPECT_EQ(run({"clean"}), 0);
}

TEST_F(ProcessTest, AReaderThatLeavesEndsNothing) {
  ASSERT_EQ(program_.FirstRun(), 0);
  program_.StoreRoute("valley", "Valley Line", {{.name = "V/World/w.w", .data = "world"}});
  EXPECT_EQ(Process(Words({"load", "Valley Line"})).End(), 0);
  EXPECT_EQ(Loaded(), "valley");
}

TEST_F(ProcessTest, AKilledLoadIsMendedByTheNext) {
  TestProgram undisturbed;
  const std::vector<ZipEntry> small = {{.name = "H/World/h.w", .data = "world"}};
  std::vector<ZipEntry> large = {{.name = "S/World/w.w", .data = "world"},
                                 {.name = "S/forest.dat", .data = "forest of the storm"}};
  for (int i = 0; i < 3000; ++i)
    large.push_back({.name = "S/Shapes/s" + std::to_string(i) + ".s", .data = std::string(3000, 's')});
  for (TestProgram* program : {&program_, &undisturbed}) {
    ASSERT_EQ(program->FirstRun(), 0);
    program->StoreRoute("hill", "Hill Line", small);
  }
  ASSERT_EQ(undisturbed.Run("load", "Hill Line"), 0);
  program_.StoreRoute("storm", "Storm", large);
  std::map<std::string, std::string> before;
  int status = 0;
  // A load may be over before the signal comes; then it is tried again.
  for (int i = 0; i < 5 && status == 0; ++i) {
    ASSERT_EQ(program_.Run("load", "Hill Line"), 0);
    before = program_.State(program_.Root());
    Process process(Words({"load", "Storm"}));
    for (std::string line; process.Line(line) && !Contains(line, "Transferring route data...");) continue;
    while (process.Runs() && !program_.Exists(program_.WorkingPath("shapes\\s0.s"))) continue;
    process.Kill();
    status = process.End();
  }
  ASSERT_EQ(status, -SIGKILL);
  EXPECT_EQ(Loaded(), "hill");

  auto after = program_.State(program_.Root());
  const auto forgetKnownPlaces = [](const auto& item) {
    for (const std::string start :
         {"game/ROUTES/Quillon-route/", "game/SAVES/Quillon-route", "app/routes/Saves/hill",
          "app/routes/activities/", "app/routes/custom/storm", "app/resources/Do_Not_Delete!/"})
      if (item.first.starts_with(start)) return true;
    return false;
  };
  std::erase_if(before, forgetKnownPlaces);
  std::erase_if(after, forgetKnownPlaces);
  EXPECT_EQ(after, before);

  EXPECT_EQ(Run({"load", "Storm"}), 0);
  EXPECT_EQ(program_.ReadBytes(program_.WorkingPath("ts-bak-forest.dat")), "template forest");
  // The activities of the route that was loaded when the program died are gone with it.
  program_.StoreRoute("hill", "Hill Line", small);
  EXPECT_EQ(Run({"load", "Hill Line"}), 0);
  EXPECT_EQ(program_.State(program_.WorkingPath("")), undisturbed.State(undisturbed.WorkingPath("")));
}

}  // namespace
}  // namespace quillon
