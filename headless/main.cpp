// quillon: the route manager without a screen.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "core/host/Console.h"
#include "headless/Session.h"

int main(int argc, char** argv) {
  using namespace quillon;
  const std::vector<std::string> arguments = PrepareProcess(argc, argv);
  try {
    const CommandLine line = ParseCommandLine(arguments);
    const auto output =
        line.options.json ? MakeJsonOutput(stdout) : MakeTextOutput(stdout, IsTerminal(stdout));
    const int status = Session(line.options, *output).Run(line.command);
    if (!output->Lost()) return status;
    std::fputs("quillon: what was done could not be written to standard output\n", stderr);
    return status == kDone ? kFailed : status;
  } catch (const CommandLineEnd& end) {
    std::fputs(end.what(), end.help ? stdout : stderr);
    const int status = end.help ? kDone : kWrongCommandLine;
    const bool json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
    if (json && !end.help) MakeJsonOutput(stdout)->Put({{"event", "end"}, {"status", status}});
    return status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillon: %s\n", error.what());
    return kFailed;
  }
}
