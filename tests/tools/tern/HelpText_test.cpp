#include "tools/tern/HelpText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "TernCoreKit/answers/detail/Operations.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/HelpPage.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr Look plain{};

void expectNoWider(const std::string& help, std::size_t width) {
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), width) << line;
    EXPECT_FALSE(line.ends_with(' ')) << line;
  }
}

TEST(HelpText, everyCommandIsListed) {
  const std::string help = generalHelp(plain);
  for (const Command* command : allCommands()) {
    EXPECT_THAT(help, HasSubstr("\n  " + std::string(command->name) + " "));
    EXPECT_THAT(help, HasSubstr(command->summary));
  }
}

TEST(HelpText, everyCommandTeachesByExample) {
  for (const Command* command : allCommands()) {
    const std::string help = helpOf(*command, plain);
    EXPECT_THAT(help, HasSubstr("Usage: tern " + std::string(command->name)));
    EXPECT_THAT(help, HasSubstr("\nExamples:\n  tern "));
    EXPECT_THAT(command->help, HasSubstr("tern " + std::string(command->name) + " "));
    if (!loadsData(*command)) continue;
    EXPECT_THAT(help, HasSubstr("\nExamples:\n  tern generate --out mall\n"));
  }
}

TEST(HelpText, everyRequestOfABatchIsShown) {
  for (const detail::Operation& operation : detail::operations()) {
    EXPECT_THAT(batchCommand.help, HasSubstr("\"op\":\"" + std::string(operation.name) + "\""));
  }
}

TEST(HelpText, linesAreNoWiderThanTheTerminal) {
  for (const std::size_t width : {40U, 41U, 57U, 80U, 100U}) {
    const Look look{.width = width};
    expectNoWider(generalHelp(look), width);
    for (const Command* command : allCommands()) expectNoWider(helpOf(*command, look), width);
  }
}

TEST(HelpText, wideTerminalsAreUsed) {
  std::istringstream lines(generalHelp({.width = 100}));
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) longest = std::max(longest, line.size());
  EXPECT_GT(longest, 90U);
}

// All that stands in it, without the spaces, line breaks and marks of its layout.
std::string letters(const std::string& text) {
  std::string bare;
  for (const char letter : text) {
    if (letter != ' ' && letter != '\n' && letter != '\\') bare += letter;
  }
  return bare;
}

TEST(HelpText, widthTakesNothingAway) {
  for (const Command* command : allCommands()) {
    EXPECT_EQ(letters(helpOf(*command, {.width = 40})), letters(helpOf(*command, {.width = 100})));
  }
}

TEST(HelpText, brokenExampleIsOneLineForAShell) {
  for (const Command* command : allCommands()) {
    std::string help = helpOf(*command, {.width = 40});
    for (std::size_t at = help.find(" \\\n    "); at != help.npos; at = help.find(" \\\n    ")) {
      help.replace(at, 7, " ");
    }
    for (const HelpPart& part : partsOf(command->help)) {
      if (part.kind != HelpPart::Kind::example) continue;
      EXPECT_THAT(help, HasSubstr("\n  " + part.text + "\n"));
    }
  }
}

TEST(HelpText, optionIsToldWithItsMeaningAndDefault) {
  const std::string help = helpOf(routeCommand, plain);
  EXPECT_THAT(help, HasSubstr("\nUsage: tern route --from W --to W [OPTIONS]\n"));
  EXPECT_THAT(help, HasSubstr("\n  --from W           where to start: a waypoint, or a place by "
                              "its name\n"));
  EXPECT_THAT(help, HasSubstr("\n  --accessibility N  take only paths of this level or below "
                              "(default 100)\n"));
  EXPECT_THAT(help, HasSubstr("\nBeside --host:\n  --customer N "));
}

TEST(HelpText, meaningsStandBelowNamesInANarrowTerminal) {
  const std::string help = helpOf(routeCommand, {.width = 40});
  EXPECT_THAT(help, HasSubstr("\n  --from W\n"
                              "      where to start: a waypoint, or a\n"
                              "      place by its name\n"));
}

TEST(HelpText, operandIsToldFirst) {
  EXPECT_THAT(helpOf(placesCommand, plain),
              HasSubstr("\nUsage: tern places [TEXT] [OPTIONS]\n\nOptions:\n"
                        "  TEXT               the name or some of it"));
}

TEST(HelpText, commandListsItsOptionsOnly) {
  EXPECT_THAT(helpOf(infoCommand, plain), Not(HasSubstr("--accessibility")));
  EXPECT_THAT(helpOf(generateCommand, plain), Not(HasSubstr("--data DIR")));
  EXPECT_THAT(helpOf(generateCommand, plain), Not(HasSubstr("--host")));
}

TEST(HelpText, exitStatusesAreExplained) {
  EXPECT_THAT(generalHelp(plain), HasSubstr("\nExit status:\n  0             answered\n"));
}

TEST(HelpText, headingsAreBoldWhereThereAreColours) {
  const std::string help = helpOf(routeCommand, {.isColoured = true});
  EXPECT_THAT(help, HasSubstr("\n\x1B[1mOptions:\x1B[0m\n"));
  EXPECT_THAT(help, HasSubstr("\n\x1B[1mExamples:\x1B[0m\n"));
  EXPECT_THAT(generalHelp(plain), Not(HasSubstr("\x1B")));
}

}  // namespace
}  // namespace tern::command
