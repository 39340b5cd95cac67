#include "tools/tern/ManualPage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(ManualPage, saysWhatItIsTheManualOf) {
  EXPECT_THAT(manualPage(), StartsWith(".TH TERN 1 "));
  EXPECT_THAT(manualPage(), HasSubstr("\n.SH \"NAME\"\ntern \\- indoor maps and wayfinding\n"));
}

TEST(ManualPage, everyCommandHasItsPart) {
  const std::string page = manualPage();
  for (const Command* command : allCommands()) {
    EXPECT_THAT(page, HasSubstr("\n.SS \"tern " + std::string(command->name) + " "));
    EXPECT_THAT(page, HasSubstr("\n" + std::string(command->summary) + "\n"));
  }
  EXPECT_THAT(page, HasSubstr("\n.TP\n\\fB\\-\\-accessibility\\fR \\fIN\\fR\n"));
}

TEST(ManualPage, lettersStandForThemselves) {
  EXPECT_THAT(manualPage(), HasSubstr("echo \\(aq{\\(dqop\\(dq:"));
  EXPECT_THAT(manualPage(), Not(HasSubstr("\n'")));
}

// Of others roff knows the number only.
TEST(ManualPage, isAllAscii) {
  const std::string page = manualPage();
  EXPECT_TRUE(std::ranges::all_of(page, [](char c) { return c > 0; }));
  EXPECT_THAT(page, HasSubstr("\\-\\-from \\[u6771]\\[u53E3]"));
}

}  // namespace
}  // namespace tern::command
