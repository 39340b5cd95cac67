#include "TernCoreKit/spatial/detail/NearestIndex.hpp"

#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::test {
namespace {

// Maps 1 to 3 in the first building, maps 4 to 6 in the second, of the levels 0, 1 and 1 each.
class NearestIndexTest : public testing::Test {
 protected:
  NearestIndexTest() {
    std::vector<Drawing::Floor> floors(6, {.lines = {"A"}});
    for (std::size_t i = 0; i < floors.size(); ++i) {
      lines_.emplace_back(1, static_cast<char>('A' + i));
      floors[i].level = i % 3 == 0 ? 0 : 1;
    }
    for (std::size_t i = 0; i < floors.size(); ++i) floors[i].lines = {lines_[i]};
    venue_ = assembleVenue({.floors = floors}, {{0, 1, 2}, {3, 4, 5}});
  }

  // The ids of the maps on a level's floors.
  std::string floorsAt(std::int64_t level, std::int64_t besideMap) const {
    const detail::NearestIndex index(*venue_);
    TernMap beside;
    beside.id = besideMap;
    std::string ids;
    for (const auto& floor : index.floorsAt(level, beside)) ids += floor->map->id.printed();
    return ids;
  }

  std::vector<std::string> lines_;
  std::shared_ptr<TernActiveVenue> venue_;
};

TEST_F(NearestIndexTest, floorsOfALevelBeginWithThoseOfTheMapsOwnBuilding) {
  EXPECT_EQ(floorsAt(1, 1), "2356");
  EXPECT_EQ(floorsAt(1, 4), "5623");
  EXPECT_EQ(floorsAt(0, 5), "41");
}

TEST_F(NearestIndexTest, floorsOfALevelStandInOrderWhereNoFloorShowsTheMap) {
  EXPECT_EQ(floorsAt(1, 99), "2356");
}

TEST_F(NearestIndexTest, aLevelWithoutFloorsHasNone) { EXPECT_EQ(floorsAt(7, 1), ""); }

TEST_F(NearestIndexTest, aFloorWithoutALevelLiesAtLevelZero) {
  venue_->buildings->getFloorByMap(venue_->maps->getById(3))->level = Value();
  EXPECT_EQ(floorsAt(0, 1), "134");
  EXPECT_EQ(floorsAt(1, 1), "256");
}

}  // namespace
}  // namespace tern::test
