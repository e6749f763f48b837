#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>

#include "core/host/Console.h"

namespace quillon {

std::vector<std::string> PrepareProcess(int argc, char** argv) {
  // A reader that goes away, and a file that grows too large, end no work halfway: they come as errors.
  for (const int number : {SIGPIPE, SIGXFSZ}) std::signal(number, SIG_IGN);
  std::setlocale(LC_TIME, "");  // dates as the user writes them
  // Without it libc looks at the time zone's file for every stamp in an archive.
  ::setenv("TZ", ":/etc/localtime", 0);
  return {argv + 1, argv + argc};
}

bool IsTerminal(std::FILE* file) { return ::isatty(::fileno(file)) != 0; }

}  // namespace quillon
