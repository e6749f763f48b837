#include <unistd.h>

#include <csignal>

#include "core/host/Console.h"

namespace quillon {

std::vector<std::string> PrepareConsole(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  return {argv + 1, argv + argc};
}

bool IsTerminal(std::FILE* file) { return ::isatty(::fileno(file)) != 0; }

}  // namespace quillon
