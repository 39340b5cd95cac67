#include "tools/import/imdf/ImdfCodes.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

TEST(ImdfCodes, whatClimbsIsOfItsKind) {
  EXPECT_EQ(unitMeaningOf("stairs", false).link, LinkKind::stairs);
  EXPECT_EQ(unitMeaningOf("escalator", false).link, LinkKind::escalator);
  EXPECT_EQ(unitMeaningOf("ramp", false).link, LinkKind::ramp);
  EXPECT_EQ(unitMeaningOf("movingwalkway", false).link, LinkKind::movingWalkway);
  EXPECT_EQ(unitMeaningOf("elevator", false).link, LinkKind::lift);
  EXPECT_EQ(unitMeaningOf("elevator", true).link, LinkKind::stepFreeLift);
  EXPECT_EQ(unitMeaningOf("elevator", true).area, AreaKind::mover);
}

TEST(ImdfCodes, stepsAreWalkedAndNotStepFree) {
  EXPECT_EQ(unitMeaningOf("steps", true).link, LinkKind::walkway);
  EXPECT_TRUE(unitMeaningOf("steps", true).hasSteps);
  EXPECT_FALSE(unitMeaningOf("walkway", true).hasSteps);
}

TEST(ImdfCodes, nobodyWalksWhereTheFloorIsOpenNorInWalls) {
  for (const char* const category : {"opentobelow", "column", "structure", "glass", "fence"}) {
    EXPECT_FALSE(unitMeaningOf(category, false).isWalked) << category;
  }
  EXPECT_TRUE(unitMeaningOf("nonpublic", false).isWalked);
}

TEST(ImdfCodes, areasAreDrawnAsWhatTheyAre) {
  EXPECT_EQ(unitMeaningOf("walkway", false).area, AreaKind::way);
  EXPECT_EQ(unitMeaningOf("restroom.female", false).area, AreaKind::toilets);
  EXPECT_EQ(unitMeaningOf("nonpublic", false).area, AreaKind::closed);
  EXPECT_EQ(unitMeaningOf("parking", false).area, AreaKind::outdoors);
  EXPECT_EQ(unitMeaningOf("foodservice", false).area, AreaKind::shop);
  EXPECT_EQ(unitMeaningOf("something new", false).area, AreaKind::room);
}

TEST(ImdfCodes, relationshipsClimbByTheirCategory) {
  EXPECT_EQ(climbOf("elevator"), LinkKind::lift);
  EXPECT_EQ(climbOf("escalator"), LinkKind::escalator);
  EXPECT_EQ(climbOf("stairs"), LinkKind::stairs);
  EXPECT_EQ(climbOf("ramp"), LinkKind::ramp);
  EXPECT_EQ(climbOf("movingwalkway"), LinkKind::movingWalkway);
  EXPECT_EQ(climbOf("traversal"), LinkKind::walkway);
}

}  // namespace
}  // namespace tern::imports
