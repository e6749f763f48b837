// What was asked of the program: its options and one command.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillon {

/// One command with its arguments, as far as it takes them.
struct Command {
  std::string name;
  std::string argument;      // route, folder, file or screen; empty without one
  bool hasArgument = false;  // of `load`: an empty name is one, too
  std::optional<std::string> game;
  std::optional<bool> shortcut;
  bool cancel = false;
  bool report = true;
  int scale = 1;
  std::optional<int> putBack, drop;  // numbers of rescues
  std::optional<std::string> route;  // of `checkup`: only this one, which need not be loaded
  bool all = false;                  // all routes, one by one
  bool fix = false;
  bool details = false;
  bool deep = false, repair = false;  // of `verify`
  int routes = 0;                     // of `sample`: this many, catalogued
};

struct Options {
  std::string app;          // host path; empty: the executable's folder
  bool appIsTyped = false;  // on the command line
  bool json = false;
  bool answerYes = false;
  bool welcomeOk = false;
  bool noActLoad = true;
  std::optional<std::uint32_t> seed;
  bool open = false;
};

struct CommandLine {
  Options options;
  Command command;
};

/// The command line is wrong, or only asked for help: `what()` is the text to show.
struct CommandLineEnd : std::runtime_error {
  CommandLineEnd(const std::string& text, bool isHelp) : std::runtime_error(text), help(isHelp) {}
  bool help;
};

/// Throws CommandLineEnd.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// `text`, which names commands as a user would type them, with what this command line says of the
/// application folder.
std::string AsToBeTyped(const std::string& text, const Options& options);

/// One line of a script: a command without options. Nothing for a blank line or a comment ("#"). Throws
/// CommandLineEnd.
std::optional<Command> ParseScriptLine(const std::string& line);

}  // namespace quillon
