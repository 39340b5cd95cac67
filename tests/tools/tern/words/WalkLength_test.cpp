#include "tools/tern/words/WalkLength.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::words {
namespace {

TEST(WalkLength, readsAsPeopleSayIt) {
  EXPECT_EQ((WalkLength{0, 0.4}).text(), "");
  EXPECT_EQ((WalkLength{0, 0.5}).text(), "1 m");
  EXPECT_EQ((WalkLength{0, 999.4}).text(), "999 m");
  EXPECT_EQ((WalkLength{0, 1250}).text(), "1.2 km");
  EXPECT_EQ((WalkLength{0.2}).text(), "");
  EXPECT_EQ((WalkLength{2.5}).text(), "3 map units");
}

TEST(WalkLength, isInMetresWhereTheMapsScaleIsKnown) {
  TernMap map;
  EXPECT_EQ(lengthOn(&map, 40).text(), "40 map units");
  EXPECT_EQ(lengthOn(nullptr, 40).text(), "40 map units");
  map.mmPerPixel = 50;
  EXPECT_EQ(lengthOn(&map, 40).text(), "2 m");
  map.mmPerPixel = -50;
  EXPECT_EQ(lengthOn(&map, 40).text(), "40 map units");
}

TEST(WalkLength, senselessLengthIsNothing) {
  TernMap map;
  map.mmPerPixel = 50;
  for (const double length : {std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), -5.0, 1e38}) {
    EXPECT_EQ(lengthOn(&map, length).text(), "") << length;
  }
}

TEST(WalkLength, sumIsInMetresOnlyWhenBothAre) {
  EXPECT_EQ((WalkLength{10, 2} + WalkLength{20, 3}).text(), "5 m");
  EXPECT_EQ((WalkLength{10, 2} + WalkLength{20}).text(), "30 map units");
}

}  // namespace
}  // namespace tern::words
