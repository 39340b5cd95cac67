#include "tools/tern/Whereabouts.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

TEST(Whereabouts, placeIsNamedByWhatIsThere) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  attachWaypoints(*venue);
  EXPECT_EQ(placeName(*venue, 1), "Bakery");
  EXPECT_EQ(placeName(*venue, 4), "Exit");
  EXPECT_EQ(placeNameWithId(*venue, 1), "Bakery (waypoint 1)");
}

TEST(Whereabouts, placeWithoutANameIsCalledByWhatIsNearAndItsFloor) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  attachWaypoints(*venue);
  EXPECT_EQ(placeName(*venue, 2), "near Bakery");
  EXPECT_EQ(placeNameWithId(*venue, 2), "near Bakery (waypoint 2) on Ground Floor");
}

TEST(Whereabouts, placeWithNothingNearIsCalledByItsFloor) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  EXPECT_EQ(placeName(*venue, 2), "waypoint 2 on Ground Floor");
  EXPECT_EQ(placeNameWithId(*venue, 2), "waypoint 2 on Ground Floor");
}

TEST(Whereabouts, placeThatNoMapHasIsANumber) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  EXPECT_EQ(placeName(*venue, 2), "waypoint 2");
  EXPECT_EQ(placeNameWithId(*venue, 2), "waypoint 2");
}

}  // namespace
}  // namespace tern::command
