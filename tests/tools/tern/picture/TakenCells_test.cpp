#include "tools/tern/picture/TakenCells.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tern::picture {
namespace {

constexpr Size picture{358, 220};

Box anyBox() {
  const double left = *rc::gen::inRange(-50, 400);
  const double top = *rc::gen::inRange(-50, 250);
  return {left, top, left + *rc::gen::inRange(1, 300), top + *rc::gen::inRange(1, 90)};
}

TEST(TakenCells, freshOnesAreFree) {
  const TakenCells cells(picture);
  EXPECT_TRUE(cells.areFree({0, 0, 358, 220}));
  EXPECT_EQ(cells.takenArea({-1e9, -1e9, 1e9, 1e9}), 0);
}

TEST(TakenCells, neighboursDoNotTouch) {
  TakenCells cells(picture);
  cells.take({10, 10, 20, 20});
  EXPECT_EQ(cells.takenArea({0, 0, 358, 220}), 100);
  EXPECT_TRUE(cells.areFree({20, 10, 30, 20}));
  EXPECT_FALSE(cells.areFree({19, 10, 30, 20}));
}

TEST(TakenCells, linesAreTakenAsFarAsTheyAreSeen) {
  TakenCells cells(picture);
  cells.takeLine({-1e7, 100}, {1e7, 100}, 5);
  EXPECT_EQ(cells.takenArea({0, 0, 358, 220}), 358 * 12);
  cells.takeLine({-1e7, -500}, {1e7, -500}, 5);
  cells.takeLine({900, 900}, {900, 900}, 5);
  EXPECT_EQ(cells.takenArea({0, 0, 358, 220}), 358 * 12);
}

RC_GTEST_PROP(TakenCells, whatIsFreeMeetsNothingThatIsTaken, ()) {
  TakenCells cells(picture);
  std::vector<Box> taken;
  for (int i = *rc::gen::inRange(0, 6); i > 0; --i) {
    taken.push_back(anyBox());
    cells.take(taken.back());
  }
  const Box asked = anyBox();
  const auto meetsInside = [&](const Box& box) {
    const Box seen{std::max(box.left, 0.0), std::max(box.top, 0.0),
                   std::min(box.right, picture.width), std::min(box.bottom, picture.height)};
    return seen.left < seen.right && seen.top < seen.bottom && seen.meets(asked);
  };
  // Up to the squares that a box touches but does not fill.
  const auto meetsNearly = [&](const Box& box) { return box.grownBy(4).meets(asked); };
  if (std::ranges::any_of(taken, meetsInside)) RC_ASSERT(!cells.areFree(asked));
  if (std::ranges::none_of(taken, meetsNearly)) RC_ASSERT(cells.areFree(asked));
}

RC_GTEST_PROP(TakenCells, noPointNearALineIsFree, ()) {
  const Point at{double(*rc::gen::inRange(1, 357)), double(*rc::gen::inRange(1, 219))};
  const Point way{double(*rc::gen::inRange(-90, 90)), double(*rc::gen::inRange(-90, 90))};
  const double before = *rc::gen::inRange(0, 1000);
  const double behind = *rc::gen::inRange(0, 1000);
  TakenCells cells(picture);
  cells.takeLine({at.x - before * way.x, at.y - before * way.y},
                 {at.x + behind * way.x, at.y + behind * way.y}, 5);
  for (int turn = 0; turn < 8; ++turn) {
    const Point near{at.x + 4.9 * std::cos(turn), at.y + 4.9 * std::sin(turn)};
    const Box spot{near.x, near.y, near.x + 0.01, near.y + 0.01};
    if (Box{1, 1, 357, 219}.contains(near)) RC_ASSERT(!cells.areFree(spot));
  }
}

}  // namespace
}  // namespace tern::picture
