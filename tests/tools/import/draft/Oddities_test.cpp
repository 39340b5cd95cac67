#include "tools/import/draft/Oddities.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

TEST(Oddities, eachRecordIsToldOfOnce) {
  Oddities oddities;
  oddities.tell("a", "dangling", "First.");
  oddities.tell("b", "one-way", "Another.");
  oddities.tell("a", "far", "Second.");
  ASSERT_EQ(oddities.told().size(), 2U);
  EXPECT_EQ(oddities.told()[0].id, "a");
  EXPECT_EQ(oddities.told()[0].why, "First.");
  EXPECT_EQ(oddities.told()[1].kind, "one-way");
}

TEST(Oddities, whatDidNotComeThroughCountsBeforeWhatLooksOdd) {
  Oddities oddities;
  oddities.remark("a", "noDoor", "Odd.");
  oddities.tell("a", "one-way", "Changed.");
  oddities.remark("a", "island", "Odd too.");
  ASSERT_EQ(oddities.told().size(), 1U);
  EXPECT_EQ(oddities.told()[0].why, "Changed.");
  EXPECT_FALSE(oddities.told()[0].cameThrough);
}

}  // namespace
}  // namespace tern::imports
