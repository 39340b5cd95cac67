#include "tools/tern/words/FloorName.hpp"

#include <gtest/gtest.h>

#include "tests/tools/tern/picture/PictureVenue.hpp"

namespace tern::words {
namespace {

using picture::PictureVenue;

TEST(FloorName, isTheNameElseTheShortNameElseTheMap) {
  const PictureVenue venue{{.id = 1, .name = "Ground"}};
  TernFloor& floor = *venue.buildings->getAllFloors().front();
  floor.shortName = "G";
  EXPECT_EQ(floorName(venue, 1).text(), "Ground");
  floor.name = "";
  EXPECT_EQ(floorName(venue, 1).text(), "G");
  floor.shortName = "";
  EXPECT_EQ(floorName(venue, 1).text(), "map 1");
  EXPECT_EQ(floorName(venue, 9).text(), "map 9");
  EXPECT_EQ(floorName(TernVenueData(), 9).text(), "map 9");
}

TEST(FloorName, buildingStandsInFrontWhereThereAreSeveral) {
  const PictureVenue venue{{.id = 1, .name = "Ground"}, {.id = 2, .name = "Ground", .building = 2}};
  EXPECT_EQ(floorName(venue, 1).text(), "House 1, Ground");
  EXPECT_EQ(floorName(venue, 2).text(), "House 2, Ground");
  EXPECT_EQ(floorName(venue, 3).text(), "map 3");
}

}  // namespace
}  // namespace tern::words
