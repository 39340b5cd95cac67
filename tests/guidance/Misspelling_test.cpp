#include "TernCoreKit/guidance/Misspelling.hpp"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tern {
namespace {

// The literal definition: what the last letters may have become, tried in every way.
std::size_t literalSlips(const std::u32string& a, const std::u32string& b) {
  if (a.empty() || b.empty()) return a.size() + b.size();
  const auto without = [](const std::u32string& text, std::size_t count) {
    return text.substr(0, text.size() - count);
  };
  std::size_t fewest = literalSlips(without(a, 1), without(b, 1)) + (a.back() != b.back() ? 1 : 0);
  fewest =
      std::min({fewest, literalSlips(without(a, 1), b) + 1, literalSlips(a, without(b, 1)) + 1});
  const bool isSwap =
      a.size() > 1 && b.size() > 1 && a.back() == b[b.size() - 2] && b.back() == a[a.size() - 2];
  return isSwap ? std::min(fewest, literalSlips(without(a, 2), without(b, 2)) + 1) : fewest;
}

// Letters of one to four bytes; those of equal size begin or end with the same bytes.
const std::vector<std::string> alphabet{"a", "b", "é", "è", "ガ", "ギ", "😀", "😁"};

struct Typed {
  std::string text;
  std::u32string letters;
};

Typed typed(const std::vector<std::size_t>& places) {
  Typed made;
  for (const std::size_t place : places) {
    made.text += alphabet[place];
    made.letters += static_cast<char32_t>(place);
  }
  return made;
}

Typed someTyped() {
  const auto size = *rc::gen::inRange<std::size_t>(0, 6);
  return typed(*rc::gen::container<std::vector<std::size_t>>(
      size, rc::gen::inRange<std::size_t>(0, alphabet.size())));
}

TEST(Misspelling, lettersAreCountedAndNotBytes) {
  EXPECT_EQ(lettersIn(""), 0U);
  EXPECT_EQ(lettersIn("aéガ😀"), 4U);
}

TEST(Misspelling, oneLetterLessMoreOrAnotherIsOneSlip) {
  EXPECT_TRUE(isOneSlipApart("coffee", "coffee"));
  EXPECT_TRUE(isOneSlipApart("coffee", "cofee"));
  EXPECT_TRUE(isOneSlipApart("offee", "coffee"));
  EXPECT_TRUE(isOneSlipApart("coffees", "coffee"));
  EXPECT_TRUE(isOneSlipApart("toffee", "coffee"));
  EXPECT_FALSE(isOneSlipApart("tofee", "coffee"));
}

TEST(Misspelling, neighboursThatChangedPlacesAreOneSlip) {
  EXPECT_TRUE(isOneSlipApart("ocffee", "coffee"));
  EXPECT_TRUE(isOneSlipApart("ラガス", "ガラス"));
  EXPECT_FALSE(isOneSlipApart("focfee", "coffee"));
}

TEST(Misspelling, slipsThatReachTheBoundAreNotCountedOn) {
  EXPECT_EQ(slipsBetween("coffee", "tea", 9), 5U);
  EXPECT_EQ(slipsBetween("coffee", "tea", 3), 3U);
  EXPECT_EQ(slipsBetween("coffee", "", 2), 2U);
  EXPECT_EQ(slipsBetween("", "", 2), 0U);
}

RC_GTEST_PROP(MisspellingProperties, slipsAreThoseOfTheDefinition, ()) {
  const Typed a = someTyped();
  const Typed b = someTyped();
  const std::size_t slips = literalSlips(a.letters, b.letters);
  RC_ASSERT(slipsBetween(a.text, b.text, 99) == slips);
  const auto most = *rc::gen::inRange<std::size_t>(0, 8);
  RC_ASSERT(slipsBetween(a.text, b.text, most) == std::min(slips, most));
  RC_ASSERT(isOneSlipApart(a.text, b.text) == (slips <= 1));
}

}  // namespace
}  // namespace tern
