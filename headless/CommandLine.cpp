#include "headless/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

#include "core/Version.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

CommandLineEnd NoFolder() { return {"--app names no folder\nquillon --help tells what there is.\n", false}; }

/// The parser fills values of its own types; Take moves them over.
class Definition {
 public:
  explicit Definition(bool withOptions)
      : parser_("Quillon: a route manager for Microsoft Train Simulator", "quillon") {
    parser_.allow_windows_style_options(false);  // what begins with a slash is a path on every platform
    if (withOptions) DefineOptions();
    DefineCommands();
    parser_.require_subcommand(1);
  }

  CommandLine Parse(std::vector<std::string> arguments) {
    // The parser would take the next word for the folder.
    if (std::find(arguments.begin(), arguments.end(), "--app=") != arguments.end()) throw NoFolder();
    line_.options.appIsTyped = std::any_of(arguments.begin(), arguments.end(), [](const auto& word) {
      return word == "--app" || word.starts_with("--app=");
    });
    std::reverse(arguments.begin(), arguments.end());
    try {
      parser_.parse(arguments);
    } catch (const CLI::CallForHelp&) {
      throw CommandLineEnd(parser_.help(), true);
    } catch (const CLI::CallForAllHelp&) {
      throw CommandLineEnd(parser_.help("", CLI::AppFormatMode::All), true);
    } catch (const CLI::CallForVersion&) {
      throw CommandLineEnd(std::string("quillon ") + kRelease + "\n", true);
    } catch (const CLI::ParseError& error) {
      throw CommandLineEnd(std::string(error.what()) + "\nquillon --help tells what there is.\n", false);
    }
    return Take();
  }

 private:
  void DefineOptions() {
    auto& o = line_.options;
    parser_.add_option("--app", o.app, "The application folder; else the folder of the program")
        ->type_name("DIR")
        ->envname("QUILLON_APP");
    parser_.add_flag("--json", o.json, "One JSON object a line on standard output");
    parser_.add_option("--answer", answer_, "The answer to every Yes/No box")
        ->check(CLI::IsMember({"yes", "no"}));
    parser_.add_option("--welcome", welcome_, "The answer to the welcome screen")
        ->check(CLI::IsMember({"ok", "cancel"}));
    parser_.add_option("--noact", noAct_, "The answer when a route has no activities")
        ->check(CLI::IsMember({"load", "cancel"}));
    parser_.add_option("--seed", o.seed, "Seeds the random numbers");
    parser_.add_flag("--open", o.open, "Really opens documents, folders and help");
    parser_.set_version_flag("--version", std::string("quillon ") + kRelease);
    parser_.set_help_flag("--help", "Shows this text");
  }

  CLI::App* Add(const char* name, const char* what) {
    CLI::App* command = parser_.add_subcommand(name, what);
    command->callback([this, name] { line_.command.name = name; });
    return command;
  }

  void DefineCommands() {
    auto& c = line_.command;
    auto* setup = Add("setup", "Lays out the application folder, as an installer does");
    setup->add_option("--game", c.game, "The Train Simulator folder")->type_name("DIR");
    Add("start", "Start-up only");
    Add("routes", "Lists the routes")
        ->add_flag("--details", c.details, "All that is known of each, and nothing is changed");
    Add("pick", "Selects a route")->add_option("name", c.argument, "The route's name")->required();
    Add("info", "Lists the selected route's documents, or opens one")
        ->add_option("file", c.argument, "A document");
    loadName_ = Add("load", "Loads a route into Train Simulator")
                    ->add_option("name", c.argument, "The route; else the selected one");
    Add("add", "Adds all downloaded routes")->add_flag("--no-report", noReport_, "Writes no report");
    Add("clean", "Rebuilds the working route");
    Add("pack", "Packs an installed route into a zip among the downloads")
        ->add_option("folder", c.argument, "The route's folder")
        ->required();
    Add("remove", "Removes a route from Quillon")
        ->add_option("name", c.argument, "The route's name")
        ->required();
    Add("permanent", "Makes the loaded route an ordinary route of the game")
        ->add_option("name", c.argument, "The route's name")
        ->required();
    auto* checkup = Add("checkup", "Checks all trains, consists, services and activities");
    auto* route =
        checkup->add_option("--route", c.route, "Judges a route without loading it")->type_name("NAME");
    checkup->add_flag("--all", c.all, "Judges all routes without loading them")->excludes(route);
    Add("causes", "Tells what the last Checkup came to: what to install first")
        ->add_flag("--fix", c.fix, "Lists the renames that put misplaced trains right, and asks for them");
    auto* verify = Add("verify", "Compares the catalogue with the files");
    verify->add_flag("--deep", c.deep, "Reads and checks the data of all route files, too");
    verify->add_flag("--repair", c.repair, "Makes missing entries and pictures anew; deletes nothing");
    Add("report", "Opens the last Checkup's report");
    auto* options = Add("options", "Changes the settings");
    options->add_option("--game", c.game, "The Train Simulator folder")->type_name("DIR");
    options->add_option("--shortcut", shortcut_, "The shortcut on the desktop")
        ->check(CLI::IsMember({"on", "off"}));
    options->add_flag("--cancel", c.cancel, "Presses Cancel instead of OK");
    auto* shelf = Add("shelf", "Lists the rescued files, the newest first");
    auto* putBack = shelf->add_option("--put-back", c.putBack, "Copies a rescue back to where it came from");
    shelf->add_option("--drop", c.drop, "Deletes a rescue")->excludes(putBack);
    Add("make-list", "Lists the game's default files");
    Add("help", "Names the help")->add_option("screen", c.argument, "frmMain or frmRoutes");
    auto* sample = Add("sample", "Makes a small game and route zips for a first try");
    sample->add_option("dir", c.argument, "Where to")->required()->type_name("DIR");
    sample->add_option("--scale", c.scale, "How many times as many files")->check(CLI::Range(1, 1000));
    sample->add_option("--routes", c.routes, "Makes an installation with this many small routes instead")
        ->check(CLI::Range(1, 100000))
        ->type_name("N")
        ->excludes("--scale");
    Add("script", "Runs commands from a file, one a line")
        ->add_option("file", c.argument, "The file; - for standard input")
        ->required();
  }

  CommandLine Take() {
    if (line_.options.appIsTyped && line_.options.app.empty()) throw NoFolder();
    line_.options.answerYes = answer_ == "yes";
    line_.options.welcomeOk = welcome_ == "ok";
    line_.options.noActLoad = noAct_ == "load";
    if (!shortcut_.empty()) line_.command.shortcut = shortcut_ == "on";
    line_.command.report = !noReport_;
    line_.command.hasArgument = !loadName_->empty();
    return line_;
  }

  CLI::App parser_;
  CommandLine line_;
  std::string answer_ = "no", welcome_ = "cancel", noAct_ = "load", shortcut_;
  bool noReport_ = false;
  CLI::Option* loadName_ = nullptr;
};

/// Words as a shell takes them: quotes keep blanks, a backslash frees a blank, a quote or itself. Elsewhere
/// it stands for itself, as in the system's paths.
std::vector<std::string> ShellWords(const std::string& line) {
  std::vector<std::string> words;
  std::string word;
  bool inWord = false;
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char next = i + 1 < line.size() ? line[i + 1] : '\0';
    const bool blank = c == ' ' || c == '\t' || c == '\r';
    if (c == '\\' && quote != '\'' && (next == ' ' || next == '"' || next == '\'' || next == '\\')) {
      word += line[++i];
      inWord = true;
    } else if (quote != 0) {
      c == quote ? quote = 0 : (word += c, char{});
    } else if (c == '"' || c == '\'') {
      quote = c;
      inWord = true;
    } else if (c == '#' && !inWord) {
      break;
    } else if (!blank) {
      word += c;
      inWord = true;
    } else if (inWord) {
      words.push_back(std::exchange(word, {}));
      inWord = false;
    }
  }
  if (quote != 0) throw CommandLineEnd("a quote is not closed: " + line + "\n", false);
  if (inWord) words.push_back(word);
  return words;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  return Definition(true).Parse(arguments);
}

std::string AsToBeTyped(const std::string& text, const Options& options) {
  if (!options.appIsTyped) return text;
  const bool plain = options.app.find_first_of(" \t'\"&|;<>()*?[]!#$`") == options.app.npos;
  const std::string app = plain ? options.app : '"' + options.app + '"';
  return ReplaceAll(text, "quillon ", "quillon --app " + app + " ");
}

std::optional<Command> ParseScriptLine(const std::string& line) {
  const auto words = ShellWords(line);
  if (words.empty()) return std::nullopt;
  Command command = Definition(false).Parse(words).command;
  if (command.name == "script") throw CommandLineEnd("a script can't run another script\n", false);
  return command;
}

}  // namespace quillon
