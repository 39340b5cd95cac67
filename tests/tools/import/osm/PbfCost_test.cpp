#include "tools/import/osm/PbfCost.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/import/osm/WrittenPbf.hpp"

namespace tern::imports {
namespace {

using test::pbfBlob;
using test::pbfBlock;
using test::pbfHeader;
using testing::HasSubstr;

constexpr std::size_t budgetBytes = std::size_t{1} << 20U;

bool fits(const std::string& bytes) {
  OsmBudget budget(budgetBytes);
  EXPECT_EQ(spendOnPbf(bytes, budget), std::nullopt);
  return !budget.isSpent();
}

std::string refusal(const std::string& bytes) {
  OsmBudget budget(budgetBytes);
  return spendOnPbf(bytes, budget).value_or("none");
}

TEST(PbfCost, smallFilesFit) {
  EXPECT_TRUE(fits(pbfHeader() + pbfBlob({.data = pbfBlock({"", "a", "b"}, 100, {1, 2})})));
  EXPECT_TRUE(fits(pbfHeader() + pbfBlob({.data = pbfBlock({""}, 10, {}), .isPacked = false})));
}

TEST(PbfCost, manyNodesInFewBytesAreCounted) {
  const std::string bytes = pbfHeader() + pbfBlob({.data = pbfBlock({""}, 20'000, {})});
  EXPECT_LT(bytes.size(), 5'000U);
  EXPECT_FALSE(fits(bytes));
}

TEST(PbfCost, longTextsNamedManyTimesAreCounted) {
  const std::vector<std::uint32_t> tags(2'000, 1);
  const std::string bytes =
      pbfHeader() + pbfBlob({.data = pbfBlock({"", std::string(1'000, 'x')}, 2, tags)});
  EXPECT_LT(bytes.size(), 5'000U);
  EXPECT_FALSE(fits(bytes));
}

TEST(PbfCost, placesBesideTheTextsAreNoReach) {
  EXPECT_TRUE(fits(pbfHeader() + pbfBlob({.data = pbfBlock({""}, 2, {9, 4'000'000'000})})));
}

TEST(PbfCost, blockThatUnpacksToMoreThanItMayIsRefused) {
  EXPECT_THAT(refusal(pbfBlob({.data = "x", .statedBytes = 40 << 20})), HasSubstr("32 MiB"));
}

TEST(PbfCost, blockThatUnpacksToOtherThanItSaysIsRefused) {
  const std::string zeros(1'000'000, '\0');
  EXPECT_THAT(refusal(pbfBlob({.data = zeros, .statedBytes = 10})), HasSubstr("unpacked"));
  EXPECT_THAT(refusal(pbfBlob({.data = "x", .statedBytes = 1'000'000})), HasSubstr("unpacked"));
}

// The reader of the file ran on behind the text.
TEST(PbfCost, textsWithAZeroWithinAreRefused) {
  const std::vector<std::string> texts{"", std::string("high\0way", 8)};
  EXPECT_THAT(refusal(pbfHeader() + pbfBlob({.data = pbfBlock(texts, 2, {1, 1})})),
              HasSubstr("zero"));
}

// A header whose first field is a number and no text ended the process.
TEST(PbfCost, fieldsOfOtherTypesArePassedOver) {
  EXPECT_THAT(refusal(std::string("\0\0\0\2\x08\1", 6)), HasSubstr("unpacked"));
  std::string bytes = pbfBlob({.data = pbfBlock({"", "a"}, 3, {1, 1}), .isPacked = false});
  for (std::size_t i = 4; i < bytes.size(); ++i) {
    std::string changed = bytes;
    for (const unsigned type : {0U, 1U, 2U, 5U}) {
      changed[i] = static_cast<char>((static_cast<unsigned char>(bytes[i]) & 0xF8U) | type);
      OsmBudget budget(budgetBytes);
      static_cast<void>(spendOnPbf(changed, budget));
      EXPECT_FALSE(budget.isSpent());
    }
  }
}

TEST(PbfCost, sizesBeyondTheEndAreRefused) {
  const std::string whole = pbfBlob({.data = "x"});
  EXPECT_THAT(refusal(whole.substr(0, whole.size() - 1)), HasSubstr("ends within"));
  EXPECT_THAT(refusal(std::string("\0\0\0\5ab", 6)), HasSubstr("ends within"));
  EXPECT_THAT(refusal("\x7F\xFF\xFF\xFF"), HasSubstr("no header"));
  EXPECT_THAT(refusal("\1"), HasSubstr("ends within"));
}

}  // namespace
}  // namespace tern::imports
