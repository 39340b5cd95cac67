#include "tests/support/Waiting.hpp"

#include <gtest/gtest.h>

#include <atomic>

namespace tern::test {
namespace {

TEST(WaitingConcurrent, whatComesInTimeIsGiven) {
  std::promise<int> number;
  std::atomic<bool> isSet = false;
  std::thread other([&] {
    number.set_value(7);
    isSet = true;
  });
  EXPECT_EQ(await(number, "the number"), 7);
  awaitUntil([&] { return isSet.load(); }, "the mark");
  other.join();
  EXPECT_TRUE(isSet);
}

TEST(WaitingDeathTest, whatDoesNotComeIsNamedAndEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(giveUp("the number"),
               "WaitingDeathTest.whatDoesNotComeIsNamedAndEndsTheProcess: the number did not come "
               "within 120 seconds");
}

}  // namespace
}  // namespace tern::test
