#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <utility>

#include "core/text/Text.h"
#include "tests/world/Process.h"

namespace quillon {

struct Process::State {
  std::FILE* output = nullptr;
  pid_t id = 0;
};

Process::Process(const std::vector<std::string>& words, const std::string& input, int mostBlocks)
    : state_(std::make_unique<State>()) {
  std::string command = mostBlocks > 0 ? "ulimit -f " + std::to_string(mostBlocks) + "; " : "";
  command += "echo $$; exec '" QUILLON_PROGRAM "'";
  for (const auto& word : words) command += " '" + word + "'";
  const std::string from = input.empty() ? "/dev/null" : input;
  state_->output = ::popen((command + " <'" + from + "' 2>/dev/null").c_str(), "r");
  std::string line;
  Line(line);
  state_->id = NumericValue(line);
}

Process::~Process() { End(); }

bool Process::CanLimitFiles() { return true; }

bool Process::Line(std::string& line) {
  line.clear();
  int c = 0;
  while ((c = std::fgetc(state_->output)) != EOF && c != '\n') line += static_cast<char>(c);
  return c != EOF;
}

bool Process::Runs() const {
  siginfo_t info = {};
  ::waitid(P_PID, static_cast<id_t>(state_->id), &info, WEXITED | WNOHANG | WNOWAIT);
  return info.si_pid == 0;
}

void Process::Kill() const { ::kill(state_->id, SIGKILL); }

int Process::End() {
  const int status = state_->output != nullptr ? ::pclose(std::exchange(state_->output, nullptr)) : 0;
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace quillon
