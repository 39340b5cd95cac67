#include "TernCoreKit/model/collections/VenueDestinationCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
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

// --- A law ---

// Up to three venues whose destinations have few ids, names and places.
VenueDestinationCollection::Entries anyEntries() {
  const auto number = rc::gen::inRange<std::int64_t>(0, 3);
  const auto text = rc::gen::element("a", "b");
  VenueDestinationCollection::Entries entries;
  for (int left = *rc::gen::inRange(0, 4); left > 0; --left) {
    Value items = Value::list();
    for (int destinations = *rc::gen::inRange(0, 4); destinations > 0; --destinations) {
      const Value location =
          Value::map({{"mapId", *number}, {"waypointIds", Value::list({*number})}});
      items.append(Value::map({{"id", *number},
                               {"name", *text},
                               {"unitNumber", *text},
                               {"tags", Value::list({*text, *text})},
                               {"locations", Value::list({location})}}));
    }
    entries.push_back(TernVenueDestination::initWithDictionary(Value::map(
        {{"venueId", *number}, {"destinations", Value::map({{"items", std::move(items)}})}})));
  }
  return entries;
}

RC_GTEST_PROP(VenueDestinationCollection, answersAsAScanOfItsEntries, ()) {
  const auto entries = anyEntries();
  const auto venues = VenueDestinationCollection::initWithItems(entries);
  const auto id = *rc::gen::inRange<std::int64_t>(0, 4);
  const auto text = Value(*rc::gen::element("a", "b", "c"));
  // The entries, once for each of their destinations that is wanted.
  const auto scan = [&](auto wanted) {
    VenueDestinationCollection::Entries found;
    for (const auto& entry : entries) {
      for (const auto& destination : entry->destinations->getAll()) {
        if (wanted(*destination)) found.push_back(entry);
      }
    }
    return found;
  };
  const auto first = [](const VenueDestinationCollection::Entries& found) {
    return found.empty() ? nullptr : found.front();
  };
  const auto placed = [](const TernDestination& destination) -> const TernLocation& {
    return *destination.locations.front();
  };
  RC_ASSERT(venues->getByDestinationName(text) ==
            scan([&](const TernDestination& each) { return each.name == text; }));
  RC_ASSERT(venues->getByDestinationTag(text) == scan([&](const TernDestination& each) {
              return each.tags.items()[0] == text || each.tags.items()[1] == text;
            }));
  RC_ASSERT(venues->getByDestinationId(id) ==
            first(scan([&](const TernDestination& each) { return each.id == Value(id); })));
  RC_ASSERT(venues->getByDestinationMapId(id) == first(scan([&](const TernDestination& each) {
              return placed(each).mapId == Value(id);
            })));
  RC_ASSERT(venues->getByDestinationWaypointId(id) == first(scan([&](const TernDestination& each) {
              return placed(each).waypointIds == Value::list({id});
            })));
  RC_ASSERT(venues->getByDestinationUnitNumber(text) ==
            first(scan([&](const TernDestination& each) { return each.unitNumber == text; })));
}

}  // namespace
}  // namespace tern::test
