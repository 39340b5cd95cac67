#include "TernCoreKit/guidance/detail/Movers.hpp"

#include <gtest/gtest.h>

namespace tern::detail {
namespace {

std::shared_ptr<TernPathType> typeOf(std::string_view name, double speed) {
  return TernPathType::initWithDictionary(
      Value::map({{"id", 5}, {"name", name}, {"speed", speed}}));
}

double secondsUp(std::string_view name, double speed, int floors = 2) {
  return ridingSeconds(typeOf(name, speed).get(), floors, 0);
}

TEST(Movers, haveTheSpeedOfTheirPathType) {
  EXPECT_DOUBLE_EQ(secondsUp("Elevator", 2), 30 + 8 + 2 * 4 / 2.0);
  EXPECT_DOUBLE_EQ(secondsUp("Elevator", 0.1), 30 + 8 + 2 * 4 / 0.1);
  EXPECT_DOUBLE_EQ(secondsUp("Elevator", 10), 30 + 8 + 2 * 4 / 10.0);
  EXPECT_DOUBLE_EQ(secondsUp("Escalator", 0.4), 2 * 8 / 0.4);
  EXPECT_DOUBLE_EQ(secondsUp("Stairs", 0.3, -1), 6.9 / 0.3);
  EXPECT_DOUBLE_EQ(ridingSeconds(typeOf("Moving walkway", 0.9).get(), 0, 45), 45 / 0.9);
}

TEST(Movers, haveAUsualSpeedWhereThatOfTheirTypeCannotBe) {
  const double usual = secondsUp("Elevator", 0);
  EXPECT_DOUBLE_EQ(usual, 30 + 8 + 2 * 4 / 1.0);
  for (const double speed : {-1.0, 0.09, 10.1, 1e300}) {
    EXPECT_DOUBLE_EQ(secondsUp("Elevator", speed), usual) << speed;
  }
}

}  // namespace
}  // namespace tern::detail
