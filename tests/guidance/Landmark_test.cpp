#include "TernCoreKit/guidance/Landmark.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern {
namespace {

std::shared_ptr<TernWaypoint> waypointAt(double x, double y, std::int64_t mapId = 1) {
  return TernWaypoint::initWithDictionary(
      Value::map({{"id", 5}, {"mapId", mapId}, {"coordinates", Value::list({x, y})}}));
}

// Destinations 1, 2, ..., each at one waypoint, on maps of 1000 mm a map unit.
class LandmarkTest : public testing::Test {
 protected:
  void place(const std::string& name, const std::shared_ptr<TernWaypoint>& at) {
    const std::int64_t id = ++count_;
    venue_.destinations->create(Value::map({{"id", id}, {"name", name}}));
    venue_.destinations->getById(id)->addWaypoints({at});
  }

  std::string nameNear(const std::shared_ptr<TernWaypoint>& waypoint) {
    const auto found = landmarkNear(venue_, *waypoint);
    return found != nullptr ? std::string(found->name.text()) : "none";
  }

  LandmarkTest() {
    venue_.destinations = std::make_shared<TernDestinationCollection>();
    venue_.maps = test::filled<TernMapCollection>(
        R"([{"id": 1, "mmPerPixel": 1000}, {"id": 2, "mmPerPixel": 1000}, {"id": 3}])");
  }

  TernVenueData venue_;

 private:
  std::int64_t count_ = 0;
};

TEST_F(LandmarkTest, isTheNearestOnTheSameMap) {
  place("Far", waypointAt(0, 20));
  place("Near", waypointAt(3, 4));
  place("Upstairs", waypointAt(0, 1, 2));
  EXPECT_EQ(nameNear(waypointAt(0, 0)), "Near");
  EXPECT_EQ(nameNear(waypointAt(0, 19)), "Far");
  EXPECT_EQ(nameNear(waypointAt(0, 0, 2)), "Upstairs");
}

TEST_F(LandmarkTest, ofEquallyNearOnesIsTheFirst) {
  place("First", waypointAt(5, 0));
  place("Second", waypointAt(0, 5));
  EXPECT_EQ(nameNear(waypointAt(0, 0)), "First");
}

TEST_F(LandmarkTest, hasAName) {
  place("", waypointAt(0, 0));
  EXPECT_EQ(nameNear(waypointAt(0, 0)), "none");
}

TEST_F(LandmarkTest, liesWithinThirtyMetres) {
  place("Shop", waypointAt(0, 0));
  EXPECT_EQ(nameNear(waypointAt(30, 0)), "Shop");
  EXPECT_EQ(nameNear(waypointAt(30.001, 0)), "none");
}

TEST_F(LandmarkTest, mayLieAnywhereOnAMapWithoutAScale) {
  place("Shop", waypointAt(0, 0, 3));
  EXPECT_EQ(nameNear(waypointAt(90'000, 0, 3)), "Shop");
}

TEST_F(LandmarkTest, isNoneInAVenueWithoutDestinations) {
  EXPECT_EQ(nameNear(waypointAt(0, 0)), "none");
  const TernVenueData empty;
  EXPECT_EQ(landmarkNear(empty, *waypointAt(0, 0)), nullptr);
}

}  // namespace
}  // namespace tern
