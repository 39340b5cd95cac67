#include "TernCoreKit/platform/Clock.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "tests/support/TurnedClock.hpp"

namespace tern {
namespace {

using std::chrono::milliseconds;
using test::TurnedClock;

TEST(Clock, aHostsClockIsAskedUntilTheSystemsIsBroughtBack) {
  const WallTime before = wallTime();
  {
    TurnedClock clock;
    EXPECT_EQ(wallTime(), WallTime());
    clock.turn(milliseconds(1500));
    EXPECT_EQ(wallTime() - WallTime(), milliseconds(1500));
  }
  // Long after 1970, so not the clock that was turned.
  EXPECT_GT(before, WallTime() + std::chrono::hours(24));
  EXPECT_GT(wallTime(), WallTime() + std::chrono::hours(24));
}

TEST(ClockConcurrent, theClockMayBeReplacedWhileOthersAsk) {
  std::thread replacer([] {
    for (int i = 0; i < 200; ++i) {
      setWallClock(i % 2 == 0 ? WallClock([] { return WallTime(milliseconds(7)); }) : WallClock());
    }
  });
  for (int i = 0; i < 200; ++i) EXPECT_GE(wallTime(), WallTime(milliseconds(7)));
  replacer.join();
  setWallClock({});
}

}  // namespace
}  // namespace tern
