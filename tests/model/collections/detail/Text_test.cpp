#include "TernCoreKit/model/collections/detail/Text.hpp"

#include <gtest/gtest.h>
#include <locale.h>
#include <rapidcheck/gtest.h>
#include <wctype.h>

#include <string>

#include "TernCoreKit/platform/Utf8.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {
namespace {

using detail::lowered;
using detail::sameTextInAnyCase;

std::string utf8(char32_t code) {
  char bytes[4];
  return {bytes, putUtf8(bytes, code)};
}

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
                           "\U0001F6BB", "\u0131\u0138\u0149", "\ufffd"}) {
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

// The C library has a table of its own, of the version before.
TEST(Text, loweredKnowsEverySmallLetterThatTheCLibraryKnows) {
  const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  ASSERT_NE(unicode, nullptr);
  int letters = 0;
  for (char32_t code = 1; code <= 0x10ffff; ++code) {
    const auto wanted = static_cast<char32_t>(towlower_l(static_cast<wint_t>(code), unicode));
    if (wanted == code || (code >= 0xd800 && code < 0xe000)) continue;
    ++letters;
    EXPECT_EQ(lowered(utf8(code)), utf8(wanted)) << std::hex << static_cast<unsigned>(code);
  }
  freelocale(unicode);
  EXPECT_GT(letters, 1350);
}

TEST(Text, sameTextInAnyCaseComparesLettersOfDifferentLengths) {
  EXPECT_TRUE(sameTextInAnyCase("\u0130stanbul", "istanbul"));
  EXPECT_TRUE(sameTextInAnyCase("STRA\u1e9eE", "stra\u00dfe"));
  EXPECT_TRUE(sameTextInAnyCase("\u2c62", "\u026b"));
  EXPECT_TRUE(sameTextInAnyCase("LO\u0178C", "lo\u00ffc"));
  EXPECT_TRUE(sameTextInAnyCase("\u0218COAL\u0102", "\u0219coal\u0103"));
  EXPECT_TRUE(sameTextInAnyCase("\u01a0\u01afU", "\u01a1\u01b0u"));
}

RC_GTEST_PROP(Text, loweringAnyBytesIsDoneOnce, (const std::string& bytes)) {
  const std::string once = lowered(bytes);
  RC_ASSERT(lowered(once) == once);
}

}  // namespace
}  // namespace tern::test
