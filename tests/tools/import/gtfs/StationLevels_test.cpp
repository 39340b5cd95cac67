#include "tools/import/gtfs/StationLevels.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::ElementsAre;

constexpr LevelLink walk(std::size_t from, std::size_t to) { return {.from = from, .to = to}; }
constexpr LevelLink stairs(std::size_t from, std::size_t to, int rise = 0) {
  return {.from = from, .to = to, .climbs = true, .rise = rise};
}
constexpr LevelLink lift(std::size_t from, std::size_t to) {
  return {.from = from, .to = to, .climbs = true, .isLift = true};
}

TEST(StationLevels, entrancesLieOnTheGroundAndClimbsLeadDownFromThere) {
  const std::vector<LevelLink> links{walk(0, 1), stairs(1, 2), walk(2, 3), stairs(3, 4)};
  EXPECT_THAT(
      ordinalsOf(std::vector<std::optional<double>>(5), {true, false, false, false, false}, links),
      ElementsAre(0, 0, -1, -1, -2));
}

TEST(StationLevels, stepsSayWhereTheyLead) {
  const std::vector<LevelLink> links{stairs(0, 1, 1), stairs(2, 0, 1), stairs(3, 1, -1)};
  EXPECT_THAT(ordinalsOf(std::vector<std::optional<double>>(4), {true, false, false, false}, links),
              ElementsAre(0, 1, -1, 2));
}

TEST(StationLevels, liftMayPassALevel) {
  const std::vector<LevelLink> links{lift(0, 2), stairs(0, 1), stairs(1, 2)};
  EXPECT_THAT(ordinalsOf(std::vector<std::optional<double>>(3), {true, false, false}, links),
              ElementsAre(0, -1, -2));
}

TEST(StationLevels, bothEndsOfAFlightAreNeverOneLevel) {
  const std::vector<LevelLink> links{stairs(0, 1), stairs(0, 2), stairs(1, 2), walk(2, 3)};
  const auto levels =
      ordinalsOf(std::vector<std::optional<double>>(4), {true, false, false, false}, links);
  EXPECT_NE(levels[1], levels[2]);
  EXPECT_EQ(levels[2], levels[3]);
}

TEST(StationLevels, ringOfFlightsComesToAnEnd) {
  const std::vector<LevelLink> links{stairs(0, 1, 1), stairs(1, 2, 1), stairs(2, 0, 1)};
  EXPECT_EQ(ordinalsOf(std::vector<std::optional<double>>(3), {true, false, false}, links).size(),
            3U);
}

TEST(StationLevels, whatIsSaidStaysAndSpreadsOverWhatIsWalked) {
  const std::vector<LevelLink> links{walk(0, 1), stairs(1, 2, -1), walk(2, 3)};
  EXPECT_THAT(ordinalsOf({-0.5, {}, {}, -3.0}, {false, false, false, false}, links),
              ElementsAre(-0.5, -0.5, -3, -3));
}

TEST(StationLevels, stationWithoutAnEntranceBeginsAnywhere) {
  const std::vector<LevelLink> links{stairs(0, 1, 1)};
  EXPECT_THAT(ordinalsOf(std::vector<std::optional<double>>(3), {false, false, false}, links),
              ElementsAre(0, 1, 0));
}

}  // namespace
}  // namespace tern::imports
