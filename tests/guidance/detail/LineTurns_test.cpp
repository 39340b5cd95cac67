#include "TernCoreKit/guidance/detail/LineTurns.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdlib>
#include <vector>

namespace tern {
namespace {

using detail::LineTurn;
using Line = std::vector<TernCoordinate>;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<LineTurn> turnsOf(const Line& line, std::vector<std::size_t> decisions = {}) {
  return detail::turnsOf(line, decisions);
}

TEST(LineTurns, aLineWithoutAnInnerPointHasNone) {
  EXPECT_THAT(turnsOf({}), IsEmpty());
  EXPECT_THAT(turnsOf({{0, 0}}), IsEmpty());
  EXPECT_THAT(turnsOf({{0, 0}, {5, 5}}), IsEmpty());
}

TEST(LineTurns, downTheMapIsToTheRightOfSomebodyWhoWalksEast) {
  EXPECT_THAT(turnsOf({{0, 0}, {10, 0}, {10, 10}}), ElementsAre(LineTurn{1, 90}));
  EXPECT_THAT(turnsOf({{0, 0}, {10, 0}, {10, -10}}), ElementsAre(LineTurn{1, -90}));
}

TEST(LineTurns, smallWigglesAndSlightBendsAreStraightOn) {
  EXPECT_THAT(turnsOf({{0, 0}, {10, 1.4}, {20, 0}, {30, -1.4}, {40, 0}}), IsEmpty());
  EXPECT_THAT(turnsOf({{0, 0}, {20, 0}, {40, 10}}), IsEmpty());
}

TEST(LineTurns, aCornerThatIsCutIsOneTurnAtItsBeginning) {
  const auto turns = turnsOf({{0, 0}, {20, 0}, {24, 4}, {24, 30}});
  ASSERT_EQ(turns.size(), 1U);
  EXPECT_EQ(turns[0].point, 1U);
  EXPECT_NEAR(turns[0].degrees, 90, 1e-9);
}

TEST(LineTurns, twoCornersCloseToEachOtherAreTwo) {
  EXPECT_THAT(turnsOf({{0, 0}, {20, 0}, {20, 6}, {0, 6}}),
              ElementsAre(LineTurn{1, 90}, LineTurn{2, 90}));
}

TEST(LineTurns, closerThanAPersonTellsApartTheyAreOne) {
  const auto turns = turnsOf({{0, 0}, {20, 0}, {20, 2.5}, {0, 2.5}});
  ASSERT_EQ(turns.size(), 1U);
  EXPECT_NEAR(std::abs(turns[0].degrees), 180, 1e-9);
  EXPECT_THAT(turnsOf({{0, 0}, {20, 0}, {20, 2.5}, {40, 2.5}}), IsEmpty()) << "a step aside";
}

TEST(LineTurns, whereWaysPartASlightBendIsATurn) {
  const Line line{{0, 0}, {20, 0}, {40, 8}};
  EXPECT_THAT(turnsOf(line), IsEmpty());
  const auto turns = turnsOf(line, {1});
  ASSERT_EQ(turns.size(), 1U);
  EXPECT_EQ(turns[0].point, 1U);
  EXPECT_NEAR(turns[0].degrees, 21.8, 0.1);
  EXPECT_THAT(turnsOf({{0, 0}, {20, 0}, {40, 2}}, {1}), IsEmpty()) << "hardly one at all";
  EXPECT_THAT(turnsOf({{0, 0}, {20, 0}, {40, 3.4}}, {1}), IsEmpty()) << "9.6 degrees";
  EXPECT_EQ(turnsOf({{0, 0}, {20, 0}, {40, 3.7}}, {1}).size(), 1U) << "10.5 degrees";
}

TEST(LineTurns, pointsThatRepeatChangeNothing) {
  EXPECT_THAT(turnsOf({{0, 0}, {0, 0}, {10, 0}, {10, 0}, {10, 10}, {10, 10}}).size(), 1U);
  EXPECT_THAT(turnsOf({{3, 3}, {3, 3}, {3, 3}}), IsEmpty());
}

Line randomLine() {
  Line line;
  const auto points = *rc::gen::container<std::vector<std::pair<int, int>>>(
      rc::gen::pair(rc::gen::inRange(-400, 400), rc::gen::inRange(-400, 400)));
  for (const auto& [x, y] : points) line.push_back({x / 10.0, y / 10.0});
  return line;
}

RC_GTEST_PROP(LineTurns, ofTheMirrorImageHaveTheOtherSide, ()) {
  const Line line = randomLine();
  Line mirrored = line;
  for (TernCoordinate& point : mirrored) point.x = -point.x;
  const auto turns = turnsOf(line);
  const auto others = turnsOf(mirrored);
  RC_ASSERT(turns.size() == others.size());
  for (std::size_t i = 0; i < turns.size(); ++i) {
    RC_ASSERT(turns[i].point == others[i].point);
    const double sum = turns[i].degrees + others[i].degrees;
    RC_ASSERT(std::abs(std::remainder(sum, 360)) < 1e-6);
  }
}

RC_GTEST_PROP(LineTurns, areInOrderFarEnoughApartAndTurns, ()) {
  const Line line = randomLine();
  std::vector<double> walked(line.size());
  for (std::size_t i = 1; i < line.size(); ++i) {
    walked[i] = walked[i - 1] + std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
  }
  double last = -detail::tellableApart;
  for (const LineTurn& turn : turnsOf(line)) {
    RC_ASSERT(turn.point > 0U && turn.point + 1 < line.size());
    RC_ASSERT(walked[turn.point] - last >= detail::tellableApart);
    RC_ASSERT(std::abs(turn.degrees) >= detail::leastTurn && std::abs(turn.degrees) <= 180);
    last = walked[turn.point];
  }
}

}  // namespace
}  // namespace tern
