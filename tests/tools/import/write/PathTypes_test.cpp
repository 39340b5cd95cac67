#include "tools/import/write/PathTypes.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

const PathTypeRow& rowOf(LinkKind kind, bool changesFloor = false) {
  DraftLink link;
  link.kind = kind;
  return pathTypeRow(pathTypeOf(link, changesFloor));
}

TEST(PathTypes, idsAreThePlacesInTheTable) {
  int id = 1;
  for (const PathTypeRow& row : pathTypeRows()) EXPECT_EQ(row.id, id++) << row.externalId;
}

TEST(PathTypes, levelsSayWhoCanGo) {
  EXPECT_EQ(rowOf(LinkKind::walkway).accessibility, 0);
  EXPECT_EQ(rowOf(LinkKind::ramp, true).accessibility, 0);
  EXPECT_EQ(rowOf(LinkKind::stepFreeLift).accessibility, 0);
  EXPECT_EQ(rowOf(LinkKind::movingWalkway).accessibility, 0);
  EXPECT_EQ(rowOf(LinkKind::gate).accessibility, 0);
  EXPECT_EQ(rowOf(LinkKind::lift).accessibility, 20);
  EXPECT_EQ(rowOf(LinkKind::escalator).accessibility, 60);
  EXPECT_EQ(rowOf(LinkKind::movingWalkway, true).accessibility, 60);
  EXPECT_EQ(rowOf(LinkKind::unknown).accessibility, 80);
  EXPECT_EQ(rowOf(LinkKind::stairs).accessibility, 100);
}

TEST(PathTypes, stepsInAWalkTakeItOutOfTheStepFreeLevel) {
  DraftLink link;
  link.hasSteps = true;
  EXPECT_EQ(pathTypeRow(pathTypeOf(link, false)).accessibility, 100);
  EXPECT_EQ(pathTypeRow(pathTypeOf(link, true)).accessibility, 100);
  link.kind = LinkKind::ramp;
  EXPECT_EQ(pathTypeRow(pathTypeOf(link, false)).accessibility, 100);
}

TEST(PathTypes, rampCountsItsLengthUnlessItIsSteepOrClimbs) {
  DraftLink ramp;
  ramp.kind = LinkKind::ramp;
  EXPECT_EQ(pathTypeOf(ramp, false), walkwayType);
  EXPECT_NE(pathTypeOf(ramp, true), walkwayType);
  ramp.isSteep = true;
  EXPECT_NE(pathTypeOf(ramp, false), walkwayType);
}

TEST(PathTypes, oneFloorUpPeopleTakeTheEscalatorSeveralFloorsUpTheLift) {
  const auto metres = [](LinkKind kind, int levels) {
    const PathTypeRow& row = rowOf(kind, true);
    return row.weightMetres * (1 + 100.0 * levels / (row.verticalWeight + 1));
  };
  // A lift is entered and left.
  const auto lift = [&](int levels) {
    return metres(LinkKind::lift, levels) + 2 * rowOf(LinkKind::lift).weightMetres;
  };
  EXPECT_LT(metres(LinkKind::escalator, 1), metres(LinkKind::stairs, 1));
  EXPECT_LT(metres(LinkKind::escalator, 1), lift(1));
  EXPECT_LT(metres(LinkKind::stairs, 1), lift(1));
  EXPECT_LT(lift(5), 5 * metres(LinkKind::escalator, 1));
}

}  // namespace
}  // namespace tern::imports
