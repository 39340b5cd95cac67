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

}  // namespace
}  // namespace tern::imports
