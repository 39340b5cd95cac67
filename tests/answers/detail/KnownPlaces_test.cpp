#include "TernCoreKit/answers/detail/KnownPlaces.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::detail {
namespace {

std::shared_ptr<TernActiveVenue> builtVenue() {
  auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  attachWaypoints(*venue);
  venue->loadGridData();
  return venue;
}

TEST(KnownPlaces, areMadeOnceForAGraph) {
  const auto venue = builtVenue();
  KnownPlaces known;
  const auto places = known.of(*venue);
  EXPECT_EQ(known.of(*venue), places);
  EXPECT_FALSE(places->named("Bakery").empty());
}

TEST(KnownPlaces, areMadeAnewBehindARebuild) {
  const auto venue = builtVenue();
  KnownPlaces known;
  const auto before = known.of(*venue);
  venue->destinations->create(Value::map({{"id", 99}, {"name", "New Shop"}}));
  EXPECT_TRUE(known.of(*venue)->named("New Shop").empty());
  venue->loadGridData();
  EXPECT_FALSE(known.of(*venue)->named("New Shop").empty());
  EXPECT_TRUE(before->named("New Shop").empty());
}

TEST(KnownPlaces, areThoseOfEachVenue) {
  const auto one = builtVenue();
  const auto other = builtVenue();
  KnownPlaces known;
  EXPECT_NE(known.of(*one), known.of(*other));
}

}  // namespace
}  // namespace tern::detail
