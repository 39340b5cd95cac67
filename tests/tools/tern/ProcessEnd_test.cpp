#include "tools/tern/ProcessEnd.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>

#include "tests/support/Waiting.hpp"

namespace tern::command {
namespace {

using std::chrono::milliseconds;

TEST(ProcessEndDeathTest, aProcessThatWaitsForEverEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        endProcessWithin(milliseconds(1), ExitStatus::nothingFound);
        std::promise<void> end;
        test::await(end, "the end of the process");
      },
      testing::ExitedWithCode(static_cast<int>(ExitStatus::nothingFound)), "");
}

TEST(ProcessEndDeathTest, aProcessThatEndsByItselfIsNotHeldUp) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        endProcessWithin(10 * test::longestWait, ExitStatus::nothingFound);
        std::exit(7);
      },
      testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace tern::command
