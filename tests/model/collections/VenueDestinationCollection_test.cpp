#include "TernCoreKit/model/collections/VenueDestinationCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Venues 1 (without destinations), 2 (destinations 21 and 22) and 3 (destination 31).
std::shared_ptr<VenueDestinationCollection> threeVenues() {
  return VenueDestinationCollection::initWithItems(
      {made<TernVenueDestination>(R"({"venueId": 1})"),
       made<TernVenueDestination>(R"({"venueId": 2, "destinations": {"items": [
          {"id": 21, "name": "Shop", "externalId": "x", "tags": ["new", "new"], "keywords": ["food"], "unitNumber": "U1",
            "locations": [{"mapId": 5, "waypointIds": [51]}]},
          {"id": 22, "name": "Shop", "tags": ["new"], "keywords": ["food"],
            "locations": [{"mapId": 6, "waypointIds": [61]}]}]}})"),
       made<TernVenueDestination>(R"({"venueId": 3, "destinations": {"items": [
          {"id": 31, "name": "Shop", "unitNumber": "U1", "locations": [{"mapId": 6, "waypointIds": [61, 62]}]}]}})")});
}

std::int64_t venueOf(const std::shared_ptr<TernVenueDestination>& entry) {
  return entry != nullptr ? entry->venueId.integer() : -1;
}

std::vector<std::int64_t> venuesOf(const VenueDestinationCollection::Entries& entries) {
  std::vector<std::int64_t> venues;
  for (const auto& entry : entries) venues.push_back(venueOf(entry));
  return venues;
}

TEST(VenueDestinationCollection, getAllIsTheListItself) {
  CapturedLog log;
  const auto entry = std::make_shared<TernVenueDestination>();
  const auto collection = VenueDestinationCollection::initWithItems({entry, entry});
  EXPECT_THAT(collection->getAll(), ElementsAre(entry, entry));
  EXPECT_THAT(collection->items, ElementsAre(entry, entry));
}

TEST(VenueDestinationCollection, firstMatchesAnswerWithTheEntry) {
  CapturedLog log;
  const auto venues = threeVenues();
  EXPECT_EQ(venueOf(venues->getByVenueId(3)), 3);
  EXPECT_EQ(venueOf(venues->getByDestinationId(22)), 2);
  EXPECT_EQ(venueOf(venues->getByDestinationMapId(6)), 2);
  EXPECT_EQ(venueOf(venues->getByDestinationWaypointId(62)), 3);
  EXPECT_EQ(venueOf(venues->getByDestinationUnitNumber("U1")), 2);
}

TEST(VenueDestinationCollection, firstMatchesWithoutAMatchAreNull) {
  CapturedLog log;
  const auto venues = threeVenues();
  EXPECT_EQ(venues->getByVenueId(9), nullptr);
  EXPECT_EQ(venues->getByDestinationId(9), nullptr);
  EXPECT_EQ(venues->getByDestinationMapId(9), nullptr);
  EXPECT_EQ(venues->getByDestinationWaypointId(9), nullptr);
  EXPECT_EQ(venues->getByDestinationUnitNumber("U9"), nullptr);
  EXPECT_EQ(venues->getByDestinationUnitNumber(nullptr), nullptr);
  EXPECT_EQ(venues->getByDestinationUnitNumber(Value()), nullptr);
}

TEST(VenueDestinationCollection, listQueriesListAnEntryOnceForEachDestinationThatMatches) {
  CapturedLog log;
  const auto venues = threeVenues();
  EXPECT_THAT(venuesOf(venues->getByDestinationName("Shop")), ElementsAre(2, 2, 3));
  EXPECT_THAT(venuesOf(venues->getByDestinationTag("new")), ElementsAre(2, 2));
  EXPECT_THAT(venuesOf(venues->getByDestinationKeyword("food")), ElementsAre(2, 2));
  for (const Value& wrong : {Value("none"), Value(), Value(nullptr), Value(5)}) {
    EXPECT_THAT(venues->getByDestinationName(wrong), IsEmpty());
    EXPECT_THAT(venues->getByDestinationTag(wrong), IsEmpty());
    EXPECT_THAT(venues->getByDestinationKeyword(wrong), IsEmpty());
  }
}

TEST(VenueDestinationCollection,
     getByDestinationExternalIdAnswersWithEveryEntryWhateverTheArgument) {
  CapturedLog log;
  const auto venues = threeVenues();
  EXPECT_THAT(venuesOf(venues->getByDestinationExternalId("x")), ElementsAre(1, 2, 3));
  EXPECT_THAT(venuesOf(venues->getByDestinationExternalId("none")), ElementsAre(1, 2, 3));
  EXPECT_THAT(venuesOf(venues->getByDestinationExternalId(nullptr)), ElementsAre(1, 2, 3));
}

TEST(VenueDestinationCollection, anEmptyOneAndNullEntriesAnswerWithNothing) {
  CapturedLog log;
  const auto empty = VenueDestinationCollection::initWithItems({nullptr});
  EXPECT_EQ(empty->getByVenueId(0), nullptr);
  EXPECT_EQ(empty->getByDestinationId(0), nullptr);
  EXPECT_THAT(empty->getByDestinationName("Shop"), IsEmpty());
}

}  // namespace
}  // namespace tern::test
