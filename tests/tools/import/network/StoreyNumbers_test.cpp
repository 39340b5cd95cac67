#include "tools/import/network/StoreyNumbers.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace tern::imports {
namespace {

TEST(StoreyNumbers, theGroundFloorIsTheFirstAndOutdoorsIsBesideIt) {
  EXPECT_EQ(ordinalOfStorey(Value(0)), 0);
  EXPECT_EQ(ordinalOfStorey(Value(1)), 0);
  EXPECT_EQ(ordinalOfStorey(Value(3)), 2);
  EXPECT_EQ(ordinalOfStorey(Value(-1)), -1);
}

TEST(StoreyNumbers, halvesLieBetweenTheirNeighbours) {
  EXPECT_EQ(ordinalOfStorey(Value(1.5)), 0.5);
  EXPECT_EQ(ordinalOfStorey(Value(-0.5)), -0.5);
  EXPECT_EQ(ordinalOfStorey(Value("M2")), 0.5);
}

TEST(StoreyNumbers, areTextsToo) {
  EXPECT_EQ(ordinalOfStorey(Value("2")), 1);
  EXPECT_EQ(ordinalOfStorey(Value("2F")), 1);
  EXPECT_EQ(ordinalOfStorey(Value("B2")), -2);
  EXPECT_EQ(ordinalOfStorey(Value("b1f")), -1);
}

TEST(StoreyNumbers, whatIsNoNumberIsNone) {
  for (const char* const text : {"", "F", "B", "RF", "B-1", "MB1", "1階", "nan", "1e999"}) {
    EXPECT_EQ(ordinalOfStorey(Value(text)), std::nullopt) << text;
  }
  EXPECT_EQ(ordinalOfStorey(Value()), std::nullopt);
  EXPECT_EQ(ordinalOfStorey(Value(std::numeric_limits<double>::infinity())), std::nullopt);
}

TEST(StoreyNumbers, numbersMayBeTexts) {
  EXPECT_EQ(numberOf(Value("139.5")), 139.5);
  EXPECT_EQ(numberOf(Value("139.5 E")), std::nullopt);
  EXPECT_EQ(numberOf(Value(true)), std::nullopt);
}

}  // namespace
}  // namespace tern::imports
