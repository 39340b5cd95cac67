#include "tools/import/write/Levels.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

namespace tern::imports {
namespace {

using testing::ElementsAre;

Draft floorsAt(std::initializer_list<double> ordinals) {
  Draft draft;
  for (const double ordinal : ordinals) {
    DraftFloor floor;
    floor.ordinal = ordinal;
    draft.floors.push_back(floor);
  }
  return draft;
}

TEST(Levels, ordinalZeroIsTheGround) {
  EXPECT_THAT(levelsOf(floorsAt({-2, -1, 0, 1})), ElementsAre(-2, -1, 0, 1));
}

TEST(Levels, ranksLeaveNoGap) {
  EXPECT_THAT(levelsOf(floorsAt({-2, 0, 3, 7})), ElementsAre(-1, 0, 1, 2));
}

TEST(Levels, halfDeckIsALevelOfItsOwn) {
  EXPECT_THAT(levelsOf(floorsAt({0, -0.5, -1})), ElementsAre(0, -1, -2));
}

TEST(Levels, withoutOrdinalZeroTheLowestEntranceIsTheGround) {
  Draft draft = floorsAt({-1, 1, 2});
  EXPECT_THAT(levelsOf(draft), ElementsAre(0, 1, 2));
  DraftNode door;
  door.isEntrance = true;
  door.floor = 2;
  draft.nodes.push_back(door);
  EXPECT_THAT(levelsOf(draft), ElementsAre(-2, -1, 0));
  door.floor = 1;
  draft.nodes.push_back(door);
  EXPECT_THAT(levelsOf(draft), ElementsAre(-1, 0, 1));
}

TEST(Levels, floorsOfOneOrdinalShareALevel) {
  EXPECT_THAT(levelsOf(floorsAt({0, 1, 0, 1})), ElementsAre(0, 1, 0, 1));
  EXPECT_THAT(levelsOf({}), ElementsAre());
}

}  // namespace
}  // namespace tern::imports
