#include "TernCoreKit/model/collections/detail/Text.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {
namespace {

using detail::lowered;
using detail::sameTextInAnyCase;

TEST(Text, loweredMakesLettersOfSeveralScriptsSmall) {
  EXPECT_EQ(lowered("Toilet WC 2"), "toilet wc 2");
  EXPECT_EQ(lowered("\u00c9TAGE \u00c0 \u00d8 \u00de"), "\u00e9tage \u00e0 \u00f8 \u00fe");
  EXPECT_EQ(lowered("\u0141\u00d3D\u0179 \u017d\u0139"), "\u0142\u00f3d\u017a \u017e\u013a");
  EXPECT_EQ(lowered("\u0391\u03a9 \u0386\u0388\u038c\u038e"),
            "\u03b1\u03c9 \u03ac\u03ad\u03cc\u03cd");
  EXPECT_EQ(lowered("\u041c\u041e\u0421\u041a\u0412\u0410 \u0401"),
            "\u043c\u043e\u0441\u043a\u0432\u0430 \u0451");
  EXPECT_EQ(lowered("\u0531\u0556"), "\u0561\u0586");
  EXPECT_EQ(lowered("\u1ea0\u1ef0 \uff21"), "\u1ea1\u1ef1 \uff41");
}

TEST(Text, loweredLeavesEverythingElse) {
  for (const char* text : {"", "@[`{0 ", "\u00d7\u00f7\u00df\u00ff", "\u6771\u4eac", "\u03a2\u03c2",
                           "\U0001F6BB", "\u0130\u0131\u0138\u0149"}) {
    EXPECT_EQ(lowered(text), text);
  }
}

TEST(Text, loweredLeavesBytesThatAreNoText) {
  for (const char* text :
       {"\xff", "\xc3", "\xe1\xba", "\xc3z", "\xe1z\xa0", "\x80\x81", "\xc1\x81"}) {
    EXPECT_EQ(lowered(text), text);
  }
  EXPECT_EQ(lowered("A\xc3"
                    "B"),
            "a\xc3"
            "b");
}

TEST(Text, sameTextInAnyCaseTakesTextsOnly) {
  EXPECT_TRUE(sameTextInAnyCase("en-GB", "EN-gb"));
  EXPECT_TRUE(sameTextInAnyCase("", ""));
  EXPECT_FALSE(sameTextInAnyCase("en", "enn"));
  EXPECT_FALSE(sameTextInAnyCase(Value(), Value()));
  EXPECT_FALSE(sameTextInAnyCase(5, 5));
  EXPECT_FALSE(sameTextInAnyCase("5", 5));
}

RC_GTEST_PROP(Text, loweringAnyBytesKeepsTheirNumberAndIsDoneOnce, (const std::string& bytes)) {
  const std::string once = lowered(bytes);
  RC_ASSERT(once.size() == bytes.size());
  RC_ASSERT(lowered(once) == once);
}

}  // namespace
}  // namespace tern::test
