#include "tools/tern/HelpText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/tern/CommandWords.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

TEST(HelpText, everyCommandIsListedAndHasExamples) {
  const std::string help = generalHelp();
  for (const CommandWord& word : commandWords) {
    EXPECT_THAT(help, HasSubstr("\n  " + std::string(word.name) + " "));
    EXPECT_THAT(help, HasSubstr(word.summary));
    EXPECT_THAT(examplesOf(word.name), HasSubstr("tern " + std::string(word.name)));
  }
  EXPECT_EQ(examplesOf("fly"), "");
}

TEST(HelpText, exitStatusesAreExplained) {
  EXPECT_THAT(generalHelp(), HasSubstr("Exit status: 0 answered; 1 answered"));
}

}  // namespace
}  // namespace tern::command
