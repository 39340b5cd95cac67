#include "tools/import/draft/Names.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

TEST(Names, languageThatIsAskedForComesFirst) {
  const Names names{{"ja", "出口"}, {"en", "Exit"}, {"en-GB", "Way out"}};
  EXPECT_EQ(nameIn(names, "en-GB"), "Way out");
  EXPECT_EQ(nameIn(names, "en"), "Exit");
}

TEST(Names, otherFormOfTheLanguageIsBetterThanNone) {
  EXPECT_EQ(nameIn({{"ja", "出口"}, {"en", "Exit"}}, "en-US"), "Exit");
}

TEST(Names, firstStandsInForALanguageThatIsMissing) {
  EXPECT_EQ(nameIn({{"ja", "出口"}, {"en", "Exit"}}, "fr"), "出口");
  EXPECT_EQ(nameIn({}, "fr"), "");
}

}  // namespace
}  // namespace tern::imports
