#include "tools/tern/RouteText.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

class RouteTextTest : public testing::Test {
 protected:
  RouteTextTest() {
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }

  std::string textOf(std::int64_t from, std::int64_t to) {
    const Value request =
        Value::map({{"op", "route"}, {"from", from}, {"to", to}, {"accessibility", 0}});
    return routeText(*venue_, TernAnswers(venue_).answer(request)["route"]);
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(RouteTextTest, routeIsToldFloorByFloor) {
  EXPECT_EQ(textOf(1, 4),
            "From Bakery (waypoint 1)\n"
            "  Ground Floor: walk 3 m\n"
            "  Lift up to First Floor\n"
            "  First Floor: walk 1 map units\n"
            "To Exit (waypoint 4)\n"
            "31 map units in all\n");
}

TEST_F(RouteTextTest, routeOnOneFloorIsInMetres) {
  EXPECT_EQ(textOf(3, 1),
            "From near Bakery (waypoint 3) on Ground Floor\n  Ground Floor: walk 6 m\nTo Bakery "
            "(waypoint 1)\n6 m in all\n");
}

}  // namespace
}  // namespace tern::command
