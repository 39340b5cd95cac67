#include "tests/support/TestLimit.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

namespace tern::test {
namespace {

TEST(TestLimitDeathTest, aTestThatDoesNotEndIsNamedAndEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        testing::TestEventListener& limit = *new TestLimit(1);
        limit.OnTestStart(*testing::UnitTest::GetInstance()->current_test_info());
        for (;;) pause();
      },
      testing::ExitedWithCode(124),
      "aTestThatDoesNotEndIsNamedAndEndsTheProcess has not ended after 1 seconds");
}

}  // namespace
}  // namespace tern::test
