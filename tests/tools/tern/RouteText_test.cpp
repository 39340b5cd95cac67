#include "tools/tern/RouteText.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/Routing.hpp"

namespace tern::command {
namespace {

class RouteTextTest : public testing::Test {
 protected:
  RouteTextTest() {
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(RouteTextTest, placeIsNamedByWhatIsThere) {
  EXPECT_EQ(placeName(*venue_, 1), "Bakery");
  EXPECT_EQ(placeName(*venue_, 4), "Exit");
  EXPECT_EQ(placeName(*venue_, 2), "waypoint 2");
  EXPECT_EQ(placeNameWithId(*venue_, 1), "Bakery (waypoint 1)");
  EXPECT_EQ(placeNameWithId(*venue_, 2), "waypoint 2");
}

TEST_F(RouteTextTest, routeIsToldFloorByFloor) {
  EXPECT_EQ(routeText(*venue_, findRoute(*venue_, 1, 4, 0)),
            "From Bakery (waypoint 1)\n"
            "  Ground Floor: walk 3 m\n"
            "  Lift up to First Floor\n"
            "  First Floor: walk 1 map units\n"
            "To Exit (waypoint 4)\n"
            "31 map units in all\n");
}

TEST_F(RouteTextTest, routeOnOneFloorIsInMetres) {
  EXPECT_EQ(routeText(*venue_, findRoute(*venue_, 3, 1, 0)),
            "From waypoint 3\n  Ground Floor: walk 6 m\nTo Bakery (waypoint 1)\n6 m in all\n");
}

}  // namespace
}  // namespace tern::command
