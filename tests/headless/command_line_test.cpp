#include "headless/CommandLine.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Strings = std::vector<std::string>;

/// "wrong", "help", or "" when the words make a command.
template <class Parse>
std::string EndOf(Parse parse) {
  try {
    parse();
    return "";
  } catch (const CommandLineEnd& end) {
    EXPECT_NE(std::string(end.what()), "");
    return end.help ? "help" : "wrong";
  }
}

TEST(CommandLineTest, TakesAllThatTheContractNames) {
  const auto plain = ParseCommandLine({"load"}).options;
  EXPECT_FALSE(plain.json || plain.answerYes || plain.welcomeOk || plain.open || plain.seed);
  EXPECT_TRUE(plain.noActLoad && plain.app.empty());
  const auto set = ParseCommandLine({"--app", "/a b", "--json", "--answer", "yes", "--welcome", "ok",
                                     "--noact", "cancel", "--seed", "7", "--open", "start"})
                       .options;
  EXPECT_TRUE(set.json && set.answerYes && set.welcomeOk && set.open && !set.noActLoad);
  EXPECT_TRUE(set.app == "/a b" && set.seed == 7u);
  EXPECT_TRUE(ParseCommandLine({"add"}).command.report);
  EXPECT_FALSE(ParseCommandLine({"add", "--no-report"}).command.report);
  const auto options = ParseCommandLine({"options", "--game", "/g", "--shortcut", "off", "--cancel"}).command;
  EXPECT_TRUE(options.game == "/g" && options.shortcut == false && options.cancel);
  EXPECT_EQ(ParseCommandLine({"sample", "dir", "--scale", "4"}).command.scale, 4);
}

TEST(CommandLineTest, WrongOnesAreTold) {
  const std::vector<Strings> wrong = {{},
                                      {"fly"},
                                      {"--fly", "start"},
                                      {"pick"},
                                      {"script"},
                                      {"sample"},
                                      {"routes", "extra"},
                                      {"load", "a", "b"},
                                      {"--answer", "maybe", "start"},
                                      {"--welcome", "yes", "start"},
                                      {"--noact", "ok", "start"},
                                      {"--seed", "x", "start"},
                                      {"--app"},
                                      {"sample", "dir", "--scale", "0"},
                                      {"options", "--shortcut", "maybe"},
                                      {"start", "routes"}};
  for (const auto& words : wrong)
    EXPECT_EQ(EndOf([&] { ParseCommandLine(words); }), "wrong") << testing::PrintToString(words);
  EXPECT_EQ(EndOf([] { ParseCommandLine({"--help"}); }), "help");
  EXPECT_EQ(EndOf([] { ParseCommandLine({"--version"}); }), "help");
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
      {"load M\xC3\xBChle", "M\xC3\xBChle"},
      {"load", ""}};
  for (const auto& [line, argument] : lines) {
    const auto command = ParseScriptLine(line);
    ASSERT_TRUE(command) << line;
    EXPECT_EQ(command->name, "load") << line;
    EXPECT_EQ(command->argument, argument) << line;
  }
  for (const std::string line : {"", "   \t", "# load foo", "  #", "\r"})
    EXPECT_FALSE(ParseScriptLine(line)) << line;
}

TEST(ScriptLine, WrongOnesAreTold) {
  for (const std::string line : {"fly", "load \"foo", "load 'foo", "pick", "routes extra", "script other",
                                 "--json routes", "load foo \"bar"})
    EXPECT_EQ(EndOf([&] { ParseScriptLine(line); }), "wrong") << line;
}

}  // namespace
}  // namespace quillon
