#include "TernCoreKit/guidance/detail/Folding.hpp"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/guidance/detail/LetterFolds.hpp"
#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::detail {
namespace {

std::string utf8(char32_t letter) {
  char bytes[4];
  return {bytes, putUtf8(bytes, letter)};
}

void expectSame(const std::vector<std::pair<std::string_view, std::string_view>>& pairs) {
  for (const auto& [a, b] : pairs) EXPECT_EQ(folded(a), folded(b)) << a << " and " << b;
}

TEST(Folding, caseAndAccentsOfLatinDoNotCount) {
  expectSame({{"Café Crème", "CAFE CREME"},
              {"ȘTEFAN ȚEPEȘ", "stefan tepes"},
              {"Ştefan", "Ștefan"},
              {"Phở Đặc Biệt", "pho dac biet"},
              {"ÅNGSTRÖM", "angstrom"},
              {"Łódź", "lodz"},
              {"Smørrebrød", "smorrebrod"}});
}

TEST(Folding, dottedAndDotlessIAreOne) {
  expectSame({{"İstanbul Işık", "istanbul ısik"}, {"ISTANBUL IŞIK", "istanbul ışık"}});
}

TEST(Folding, ligaturesAndSharpSAreTheirLetters) {
  expectSame({{"Straße", "STRASSE"},
              {"ẞ", "ss"},
              {"Œuvre", "oeuvre"},
              {"Ærø", "aero"},
              {"ﬁne oﬃce", "fine office"}});
}

TEST(Folding, caseAndAccentsOfGreekAndCyrillicDoNotCount) {
  expectSame({{"ΚΑΦΈΣ", "καφες"}, {"Ἀθῆναι", "αθηναι"}, {"Ёлка", "ЕЛКА"}, {"Чай", "чаи"}});
}

TEST(Folding, widthDoesNotCount) {
  expectSame({{"ＣＡＦＥ　１２", "cafe 12"},
              {"ｶﾞﾗｽ ﾊﾟﾝ", "ガラス パン"},
              {"ﾗｰﾒﾝ", "ラーメン"},
              {"㈱花", "(株)花"}});
}

TEST(Folding, voicedKanaAreLettersOfTheirOwn) {
  EXPECT_NE(folded("ガラス"), folded("カラス"));
  EXPECT_NE(folded("パン"), folded("バン"));
  expectSame({{"カ\xE3\x82\x99ラス", "ガラス"}});
}

TEST(Folding, hiraganaAndKatakanaAreNotTheSame) { EXPECT_NE(folded("すし"), folded("スシ")); }

TEST(Folding, syllablesOfHangulAreTheirLetters) {
  expectSame({{"강남", "\u1100\u1161\u11BC\u1102\u1161\u11B7"}, {"ﾡ", "ㄱ"}});
  EXPECT_TRUE(folded("커피").starts_with(folded("커ㅍ")));
  EXPECT_NE(folded("가"), folded("까"));
}

TEST(Folding, pointsOfArabicAndHebrewDoNotCount) {
  expectSame(
      {{"مَقْهَى", "مقهى"}, {"أحمد", "احمد"}, {"مـقـهى", "مقهى"}, {"שָׁלוֹם", "שלום"}, {"ﻻ", "لا"}});
}

TEST(Folding, vowelSignsOfIndiaAndThailandCount) {
  EXPECT_NE(folded("कि"), folded("की"));
  EXPECT_NE(folded("ปา"), folded("ปี"));
}

TEST(Folding, spacesBetweenWordsAreOneAndNoneStandAtTheEnds) {
  EXPECT_EQ(folded("  Coral \t\n  Books\u3000"), "coral books");
  EXPECT_EQ(folded("\u00A0 "), "");
  EXPECT_EQ(folded(std::string_view("a\0b", 3)), "a b");
}

TEST(Folding, quotesAndDashesAreThoseOfAKeyboard) {
  expectSame({{"Levi’s", "levi's"}, {"“A”–B", "\"a\"-b"}});
}

TEST(Folding, whatIsNotSeenDoesNotCount) { expectSame({{"Co\u00ADral\u200D\uFE0F", "coral"}}); }

TEST(Folding, bytesThatAreNoTextStayApart) {
  EXPECT_EQ(folded("a\xFF"), "a\uFFFD");
  EXPECT_EQ(folded(folded("\xC3\u00AD\xA9")), folded("\xC3\u00AD\xA9"));
}

// Of every code point that is a letter somewhere.
TEST(Folding, whatIsFoldedStays) {
  for (char32_t letter = 0; letter <= 0x1FFFF; ++letter) {
    if (letter == 0xD800) letter = 0xE000;
    const std::string once = folded("x" + utf8(letter) + "x");
    ASSERT_EQ(folded(once), once) << std::hex << static_cast<std::uint32_t>(letter);
  }
}

RC_GTEST_PROP(FoldingProperties, whatIsFoldedStays, ()) {
  std::string text;
  for (const char32_t letter : *rc::gen::container<std::vector<char32_t>>(rc::gen::map(
           rc::gen::weightedOneOf<std::uint32_t>({{5, rc::gen::inRange(0U, 0x600U)},
                                                  {2, rc::gen::inRange(0x3040U, 0x3100U)},
                                                  {1, rc::gen::inRange(0U, 0xD800U)}}),
           [](std::uint32_t code) { return static_cast<char32_t>(code); }))) {
    text += utf8(letter);
  }
  const std::string once = folded(text);
  RC_ASSERT(folded(once) == once);
}

// A phone carries the table.
TEST(Folding, tableIsSmall) {
  EXPECT_LT(sizeof(letterFolds) + sizeof(foldedTexts) + sizeof(markedLetters), 30'000U);
}

}  // namespace
}  // namespace tern::detail
