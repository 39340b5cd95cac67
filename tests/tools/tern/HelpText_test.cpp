#include "tools/tern/HelpText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::Not;

void expectNarrow(const std::string& help) {
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
}

TEST(HelpText, everyCommandIsListed) {
  const std::string help = generalHelp();
  for (const Command* command : allCommands()) {
    EXPECT_THAT(help, HasSubstr("\n  " + std::string(command->name) + " "));
    EXPECT_THAT(help, HasSubstr(command->summary));
  }
}

TEST(HelpText, everyCommandTeachesByExample) {
  for (const Command* command : allCommands()) {
    const std::string help = helpOf(*command);
    EXPECT_THAT(help, HasSubstr("Usage: tern " + std::string(command->name)));
    EXPECT_THAT(help, HasSubstr("\nExamples:\n  tern generate --out mall\n"));
    EXPECT_THAT(command->help, HasSubstr("tern " + std::string(command->name) + " --"));
  }
}

TEST(HelpText, linesFitATerminal) {
  expectNarrow(generalHelp());
  for (const Command* command : allCommands()) expectNarrow(helpOf(*command));
}

TEST(HelpText, optionIsToldWithItsMeaningAndDefault) {
  const std::string help = helpOf(routeCommand);
  EXPECT_THAT(help, HasSubstr("\nUsage: tern route --from W --to W [OPTIONS]\n"));
  EXPECT_THAT(help,
              HasSubstr("\n  --from W               where to start: a waypoint, or a place by "
                        "its name\n"));
  EXPECT_THAT(help, HasSubstr("\n  --accessibility N      take only paths of this level or below "
                              "(default 100)\n"));
  EXPECT_THAT(help, HasSubstr("\nBeside --host:\n  --customer N "));
}

TEST(HelpText, operandIsToldFirst) {
  EXPECT_THAT(helpOf(placesCommand), HasSubstr("\nUsage: tern places [TEXT] [OPTIONS]\n\nOptions:\n"
                                               "  TEXT                   the name or some of it"));
}

TEST(HelpText, commandListsItsOptionsOnly) {
  EXPECT_THAT(helpOf(infoCommand), Not(HasSubstr("--accessibility")));
  EXPECT_THAT(helpOf(generateCommand), Not(HasSubstr("--data DIR")));
  EXPECT_THAT(helpOf(generateCommand), Not(HasSubstr("--host")));
}

TEST(HelpText, exitStatusesAreExplained) {
  EXPECT_THAT(generalHelp(), HasSubstr("Exit status: 0 answered; 1 answered"));
}

}  // namespace
}  // namespace tern::command
