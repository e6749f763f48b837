#include "headless/CommandLine.h"

#include <gtest/gtest.h>

#include "core/text/Text.h"

namespace quillon {
namespace {

using Strings = std::vector<std::string>;

/// What `parse` is told instead of a command, "help: " in front when that was asked for.
template <class Parse>
std::string EndOf(Parse parse) {
  try {
    parse();
    return "";
  } catch (const CommandLineEnd& end) {
    return (end.help ? "help: " : "") + std::string(end.what());
  }
}

TEST(CommandLineTest, SaysWhatIsWrong) {
  const std::vector<std::pair<Strings, std::string>> wrong = {{{}, "subcommand is required"},
                                                              {{"fly"}, "subcommand is required"},
                                                              {{"--fly", "start"}, "--fly"},
                                                              {{"pick"}, "name is required"},
                                                              {{"load", "a", "b"}, "b"},
                                                              {{"--answer", "maybe", "start"}, "maybe"},
                                                              {{"--seed", "x", "start"}, "--seed"},
                                                              {{"--app"}, "--app"},
                                                              {{"sample", "dir", "--scale", "0"}, "--scale"},
                                                              {{"start", "routes"}, "routes"}};
  for (const auto& [words, part] : wrong) {
    const std::string end = EndOf([words = words] { ParseCommandLine(words); });
    EXPECT_TRUE(!end.starts_with("help: ") && Contains(end, part)) << part << " is not in: " << end;
  }
  for (const auto* word : {"--help", "--version"})
    EXPECT_TRUE(EndOf([&] { ParseCommandLine({word}); }).starts_with("help: ")) << word;
}

TEST(CommandLineTest, AnswersAreTheCautiousOnesUnlessToldOtherwise) {
  const auto plain = ParseCommandLine({"options"});
  EXPECT_FALSE(plain.options.answerYes || plain.options.welcomeOk || plain.command.shortcut);
  EXPECT_TRUE(plain.options.noActLoad && plain.command.report);
  const auto told = ParseCommandLine({"--answer", "yes", "--welcome", "ok", "--noact", "cancel", "--seed",
                                      "7", "options", "--shortcut", "off", "--game", "/g"});
  EXPECT_TRUE(told.options.answerYes && told.options.welcomeOk && !told.options.noActLoad);
  EXPECT_TRUE(told.options.seed == 7u && told.command.shortcut == false && told.command.game == "/g");
  EXPECT_FALSE(ParseCommandLine({"add", "--no-report"}).command.report);
}

TEST(ScriptLine, QuotesAsAShellDoes) {
  const std::vector<std::pair<std::string, std::string>> lines = {
      {R"x(load "Coastal Line (2)")x", "Coastal Line (2)"},
      {R"(  load  'a "b" # c'  )", R"(a "b" # c)"},
      {R"(load Coastal\ Line)", "Coastal Line"},
      {R"(load Coa"stal Li"ne)", "Coastal Line"},
      {R"(load "say \"so\"")", R"(say "so")"},
      {R"(load 'a\ b')", R"(a\ b)"},
      {R"(load "/tmp/x\routes\foo")", R"(/tmp/x\routes\foo)"},
      {"load foo # and a comment", "foo"},
      {"load foo#1\r", "foo#1"},
      {"load", ""}};
  for (const auto& [line, argument] : lines) {
    const auto command = ParseScriptLine(line);
    ASSERT_TRUE(command) << line;
    EXPECT_EQ(command->name + "|" + command->argument, "load|" + argument) << line;
  }
  for (const std::string line : {"", "   \t", "# load foo", "  #", "\r"})
    EXPECT_FALSE(ParseScriptLine(line)) << line;
  for (const std::string line : {"fly", "load \"foo", "load 'foo", "script other", "--json routes"})
    EXPECT_NE(EndOf([&] { ParseScriptLine(line); }), "") << line;
}

}  // namespace
}  // namespace quillon
