#include "TernCoreKit/guidance/detail/StepTexts.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::detail {
namespace {

// One map of a metre a map unit with a shop at waypoint 1, and waypoints that go by no name.
std::shared_ptr<TernVenueData> venueWithOneShop() {
  auto venue = std::make_shared<TernVenueData>();
  venue->maps = test::filled<TernMapCollection>(
      R"([{"id": 7, "mmPerPixel": 1000, "waypoints": {"items": [
            {"id": 1, "mapId": 7, "coordinates": [0, 0]},
            {"id": 2, "mapId": 7, "coordinates": [0, 29]},
            {"id": 3, "mapId": 7, "coordinates": [0, 31]}]}}])");
  venue->destinations = test::filled<TernDestinationCollection>(R"([{"id": 1, "name": "Bakery"}])");
  venue->destinations->getById(1)->addWaypoints({venue->maps->getAllWaypoints().front()});
  return venue;
}

TEST(StepTexts, aPlaceWithoutANameIsCalledByALandmarkThatCanBeSeenFromIt) {
  const std::shared_ptr<const TernVenueData> venue = venueWithOneShop();
  const auto floor = test::made<TernFloor>(R"({"id": 3, "name": "Ground Floor"})");
  const MapPlace place{venue, nullptr, floor, venue->maps->getById(7)};
  const auto book = PhraseBook::of("en");
  EXPECT_EQ(placeText(book, place, 2), "a place near Bakery");
  EXPECT_EQ(placeText(book, place, 3), "a place on Ground Floor");
  EXPECT_EQ(placeText(book, place, 999), "a place on Ground Floor") << "of no map";
  EXPECT_EQ(placeText(book, {}, 2), "") << "nowhere";
}

}  // namespace
}  // namespace tern::detail
