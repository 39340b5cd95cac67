#include "tools/import/draft/MiddleValue.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

TEST(MiddleValue, oneThatIsFarOffDoesNotMoveIt) {
  EXPECT_EQ(middleValue({7, 1e9, 3, -2, 5}), 5);
  EXPECT_EQ(middleValue({4}), 4);
}

TEST(MiddleValue, ofTwoInTheMiddleItIsTheHigherOne) { EXPECT_EQ(middleValue({9, 1, 4, 3}), 4); }

}  // namespace
}  // namespace tern::imports
