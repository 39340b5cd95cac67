#include "TernCoreKit/model/collections/detail/Queries.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::IsEmpty;

using Ids = std::vector<std::int64_t>;

Value numbers() { return Value::list({1, 2.0, 2.9, "3", nullptr, true, Value::list({4})}); }

TEST(Queries, idsInAListAreItsNumbersAsIntegers) {
  EXPECT_TRUE(detail::containsId(numbers(), 1));
  EXPECT_TRUE(detail::containsId(numbers(), 2));
  for (std::int64_t id : {0, 3, 4}) EXPECT_FALSE(detail::containsId(numbers(), id)) << id;
  EXPECT_FALSE(detail::containsId(1, 1));
}

TEST(Queries, aMissingIdIsInNoList) {
  EXPECT_TRUE(detail::containsId(Value::list({0, 1}), Value(1)));
  EXPECT_FALSE(detail::containsId(Value::list({0, nullptr}), Value()));
  EXPECT_FALSE(detail::containsId(Value::list({0, nullptr}), Value(nullptr)));
}

TEST(Queries, isNumberComparesExactlyAndReadsWhatIsNoneAsZero) {
  EXPECT_TRUE(detail::isNumber(3, 3));
  EXPECT_TRUE(detail::isNumber(3.0, 3));
  EXPECT_TRUE(detail::isNumber(true, 1));
  EXPECT_FALSE(detail::isNumber(3.5, 3));
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_FALSE(detail::isNumber(most, most - 1));
  for (const Value& none : {Value(), Value(nullptr), Value("3"), Value::list({3})}) {
    EXPECT_TRUE(detail::isNumber(none, 0));
    EXPECT_FALSE(detail::isNumber(none, 3));
  }
}

TEST(Queries, countTextCountsEqualTexts) {
  const Value texts = Value::list({"a", "b", "a", 5, "A"});
  EXPECT_EQ(detail::countText(texts, "a"), 2U);
  EXPECT_EQ(detail::countText(texts, 5), 0U);
  EXPECT_EQ(detail::countText("a", "a"), 0U);
}

TEST(Queries, nullLocationsArePassedOver) {
  const detail::Locations locations{nullptr,
                                    made<TernLocation>(R"({"mapId": 5, "waypointIds": [7]})")};
  EXPECT_EQ(detail::countOnMap(locations, 5), 1U);
  EXPECT_EQ(detail::countAtWaypoint(locations, 7), 1U);
  EXPECT_EQ(detail::countAtWaypoint(locations, 7, 5), 1U);
  EXPECT_EQ(detail::countAtWaypoint(locations, 7, 6), 0U);
}

TEST(Queries, theFirstKeyIsThatOfTheLowestTextInAnyCase) {
  RecordMap records;
  EXPECT_EQ(detail::firstByKeyText(records), nullptr);
  for (const char* key : {"9", "b", "10", "B", "-1"}) {
    records.set(RecordMap::keyOf(key), std::make_shared<TernBaseModel>());
  }
  EXPECT_EQ(detail::firstByKeyText(records)->key, Value(-1));
}

TEST(Queries, appendMovesOneListBehindAnother) {
  std::vector<std::string> all{"a"};
  detail::append(all, {"b", "c"});
  EXPECT_EQ(all, (std::vector<std::string>{"a", "b", "c"}));
}

// --- Queries by one field ---
//
// Each collection's query is a row; what rows of one comparison have in common is tested once.

// How often a record is listed for what its field holds.
using Times = std::size_t (*)(const Value& held, const Value& asked);

std::size_t equalText(const Value& held, const Value& asked) {
  return asked.isText() && held.isText() && held.text() == asked.text() ? 1 : 0;
}

std::size_t equalTextInAnyCase(const Value& held, const Value& asked) {
  return held.isText() && asked.isText() &&
                 std::ranges::equal(held.text(), asked.text(),
                                    [](char a, char b) {
                                      return std::tolower(static_cast<unsigned char>(a)) ==
                                             std::tolower(static_cast<unsigned char>(b));
                                    })
             ? 1
             : 0;
}

std::size_t textsInList(const Value& held, const Value& asked) {
  std::size_t count = 0;
  for (const Value& each : held.items()) count += equalText(each, asked);
  return count;
}

std::size_t isTextInList(const Value& held, const Value& asked) {
  return textsInList(held, asked) > 0 ? 1 : 0;
}

std::size_t equalNumber(const Value& held, const Value& asked) {
  return (held.isNumber() ? held.number() : 0) == static_cast<double>(asked.integer()) ? 1 : 0;
}

struct FieldQuery {
  const char* name;
  const char* field;
  Times times;
  // Answers with the first match only.
  bool isFirst;
  std::function<Ids(const Value& items, const Value& asked)> ask;
};

void PrintTo(const FieldQuery& query, std::ostream* out) { *out << query.name; }

template <class Record>
Ids answerOf(const std::vector<std::shared_ptr<Record>>& found) {
  return ids(found);
}

template <class Record>
Ids answerOf(const std::shared_ptr<Record>& found) {
  if (found == nullptr) return {};
  return {found->id.integer()};
}

template <class Collection, class Answer, class Argument>
FieldQuery row(const char* name, const char* field, Times times,
               Answer (Collection::*query)(Argument) const) {
  constexpr bool isFirst = requires { typename Answer::element_type; };
  return {name, field, times, isFirst, [query](const Value& items, const Value& asked) {
            Collection collection;
            collection.createBatch(Value::map({{"items", items}}));
            if constexpr (std::is_same_v<Argument, std::int64_t>) {
              return answerOf((collection.*query)(asked.integer()));
            } else {
              return answerOf((collection.*query)(asked));
            }
          }};
}

std::vector<FieldQuery> fieldQueries() {
  return {
      row("UrisByMimeType", "mimeType", equalText, &TernUriCollection::getByMimeType),
      row("UrisByResourceType", "resourceType", equalText, &TernUriCollection::getByResourceType),
      row("PathsByName", "name", equalText, &TernPathCollection::getByName),
      row("PathTypesByName", "name", equalText, &TernPathTypeCollection::getByName),
      row("DestinationsByUnitNumber", "unitNumber", equalText,
          &TernDestinationCollection::getByUnitNumber),
      row("BuildingByName", "name", equalText, &TernBuildingCollection::getByName),
      row("VenueByName", "name", equalText, &TernVenueCollection::getByName),
      row("AmenitiesByName", "name", equalTextInAnyCase, &TernAmenityCollection::getByName),
      row("LocaleByName", "name", equalTextInAnyCase, &TernLocaleCollection::getByName),
      row("LocaleByLocaleCode", "localeCode", equalTextInAnyCase,
          &TernLocaleCollection::getByLocaleCode),
      row("DestinationsByTag", "tags", isTextInList, &TernDestinationCollection::getByTag),
      row("DestinationsByKeyword", "keywords", isTextInList,
          &TernDestinationCollection::getByKeyword),
      row("AmenitiesByKeyword", "keywords", textsInList, &TernAmenityCollection::getByKeyword),
      row("PathsByDirection", "direction", equalNumber, &TernPathCollection::getByDirection),
      row("PathTypesByDirection", "direction", equalNumber,
          &TernPathTypeCollection::getByDirection)};
}

auto queriesBy(const std::vector<Times>& comparisons) {
  std::vector<FieldQuery> rows;
  for (FieldQuery& query : fieldQueries()) {
    if (std::ranges::count(comparisons, query.times) > 0) rows.push_back(std::move(query));
  }
  return testing::ValuesIn(rows);
}

// Asks records 1, 2, ... whose fields hold these values; absent leaves the field out.
Ids ask(const FieldQuery& query, const std::vector<Value>& held, const Value& asked) {
  Value items = Value::list();
  for (std::size_t i = 0; i < held.size(); ++i) {
    Value item = Value::map({{"id", static_cast<std::int64_t>(i + 1)}});
    if (!held[i].isAbsent()) item.set(query.field, held[i]);
    items.append(std::move(item));
  }
  return query.ask(items, asked);
}

// All of these, or the first of them where the query gives one record.
Ids found(const FieldQuery& query, Ids all) {
  if (query.isFirst && !all.empty()) all.resize(1);
  return all;
}

RC_GTEST_PROP(FieldQueries, answerAsAScanOfTheDocuments, ()) {
  const CapturedLog log;
  const auto anyText = rc::gen::elementOf(
      std::vector<Value>{"a", "A", "b", "", "ab", "aB", 0, 1, 2, 2.0, 2.5, nullptr});
  std::vector<Value> held;
  for (int left = *rc::gen::inRange(0, 8); left > 0; --left) {
    const bool isList = *rc::gen::arbitrary<bool>();
    held.push_back(isList ? Value::list({*anyText, *anyText, *anyText}) : *anyText);
  }
  if (!held.empty() && *rc::gen::arbitrary<bool>()) held.back() = Value();
  const Value asked = *anyText;
  for (const FieldQuery& query : fieldQueries()) {
    RC_LOG() << query.name << '\n';
    Ids expected;
    for (std::size_t i = 0; i < held.size(); ++i) {
      const auto id = static_cast<std::int64_t>(i + 1);
      expected.insert(expected.end(), query.times(held[i], asked), id);
    }
    RC_ASSERT(ask(query, held, asked) == found(query, expected));
  }
}

class AnyFieldQuery : public testing::TestWithParam<FieldQuery> {
 protected:
  Ids ask(const std::vector<Value>& held, const Value& asked) const {
    return test::ask(GetParam(), held, asked);
  }
  Ids found(const Ids& all) const { return test::found(GetParam(), all); }

  CapturedLog log_;
};

TEST_P(AnyFieldQuery, anEmptyCollectionHasNoAnswer) {
  EXPECT_THAT(ask({}, "a"), IsEmpty());
  EXPECT_THAT(ask({}, 0), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, AnyFieldQuery, testing::ValuesIn(fieldQueries()),
                         testing::PrintToStringParamName());

class QueryByText : public AnyFieldQuery {};

TEST_P(QueryByText, findsEqualTexts) {
  const std::vector<Value> held{5, "a", "b", "a", Value(), "A", nullptr};
  EXPECT_EQ(ask(held, "a"), found({2, 4}));
  EXPECT_THAT(ask(held, "c"), IsEmpty());
}

TEST_P(QueryByText, anArgumentThatIsNoTextFindsNothing) {
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(ask({5, Value(), nullptr, "a", Value::list({"a"})}, wrong), IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(Of, QueryByText, queriesBy({equalText}),
                         testing::PrintToStringParamName());

class QueryByTextInAnyCase : public AnyFieldQuery {};

TEST_P(QueryByTextInAnyCase, findsEqualTextsInAnyCase) {
  const std::vector<Value> held{5, "En-GB", "en-gb", Value(), "\u00c9quipe", "en"};
  EXPECT_EQ(ask(held, "EN-gb"), found({2, 3}));
  EXPECT_EQ(ask(held, "\u00e9quipe"), found({5}));
  EXPECT_THAT(ask(held, "fr"), IsEmpty());
}

TEST_P(QueryByTextInAnyCase, anArgumentThatIsNoTextFindsNothing) {
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_THAT(ask({5, Value(), nullptr, "en"}, wrong), IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(Of, QueryByTextInAnyCase, queriesBy({equalTextInAnyCase}),
                         testing::PrintToStringParamName());

class QueryByTextInList : public AnyFieldQuery {};

TEST_P(QueryByTextInList, findsListsThatContainTheText) {
  const std::vector<Value> held{
      Value::list({"x", "a"}), Value::list({"a", "a"}), "a", Value::list({5, nullptr}), Value(),
      Value::list({"A", "ab"})};
  const bool oncePerText = GetParam().times == textsInList;
  EXPECT_EQ(ask(held, "a"), oncePerText ? (Ids{1, 2, 2}) : (Ids{1, 2}));
  EXPECT_THAT(ask(held, "c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_THAT(ask(held, wrong), IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(Of, QueryByTextInList, queriesBy({isTextInList, textsInList}),
                         testing::PrintToStringParamName());

class QueryByNumber : public AnyFieldQuery {};

TEST_P(QueryByNumber, comparesNumbersAndReadsAbsentAsZero) {
  const std::vector<Value> held{2, 2.0, 2.5, Value(), 0};
  EXPECT_EQ(ask(held, 2), (Ids{1, 2}));
  EXPECT_EQ(ask(held, 0), (Ids{4, 5}));
  EXPECT_THAT(ask(held, -1), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, QueryByNumber, queriesBy({equalNumber}),
                         testing::PrintToStringParamName());

// --- Queries by place, against the plainest loops ---

// Ids from 0 to 3 of maps and waypoints, now and then none.
Value anyId() {
  return *rc::gen::elementOf(std::vector<Value>{0, 1, 2, 3, 1, 2, 3, Value(), nullptr});
}

Value anyPlace(std::int64_t id) {
  Value locations = Value::list();
  for (int left = *rc::gen::inRange(0, 4); left > 0; --left) {
    locations.append(
        Value::map({{"mapId", anyId()}, {"waypointIds", Value::list({anyId(), anyId()})}}));
  }
  return Value::map({{"id", id}, {"locations", std::move(locations)}});
}

template <class Collection>
std::shared_ptr<Collection> anyPlaces() {
  Value items = Value::list();
  for (std::int64_t id = *rc::gen::inRange(0, 6); id > 0; --id) items.append(anyPlace(id));
  auto places = std::make_shared<Collection>();
  places->createBatch(Value::map({{"items", std::move(items)}}));
  return places;
}

std::shared_ptr<TernFloor> floorOf(const Value& mapId) {
  return TernFloor::initWithDictionary(
      Value::map({{"id", *rc::gen::inRange(0, 9)}, {"map", Value::map({{"id", mapId}})}}));
}

std::shared_ptr<TernBuilding> anyBuilding() {
  Value floors = Value::list();
  for (std::int64_t id = *rc::gen::inRange(0, 4); id > 0; --id) {
    floors.append(Value::map({{"id", id}, {"map", Value::map({{"id", *rc::gen::inRange(0, 4)}})}}));
  }
  return TernBuilding::initWithDictionary(
      Value::map({{"floors", Value::map({{"items", std::move(floors)}})}}));
}

// The id of each place once for each of its locations that is wanted.
template <class Place, class Wanted>
Ids scan(const std::vector<std::shared_ptr<Place>>& places, Wanted wanted) {
  Ids found;
  for (const auto& place : places) {
    for (const auto& location : place->locations) {
      if (wanted(*location)) found.push_back(place->id.integer());
    }
  }
  return found;
}

Ids sorted(Ids ids) {
  std::ranges::sort(ids);
  return ids;
}

template <class Collection>
void expectMapsAndFloorsAsAScan() {
  const auto places = anyPlaces<Collection>();
  const std::int64_t mapId = *rc::gen::inRange(0, 5);
  const auto isOnIt = [&](const TernLocation& each) { return each.mapId.integer() == mapId; };
  const auto floor = floorOf(mapId);
  const Ids expected = scan(places->getAll(), isOnIt);
  RC_ASSERT(ids(places->getByMap(floor->map.record())) == expected);
  RC_ASSERT(ids(places->getByFloor(floor)) == expected);

  const auto building = anyBuilding();
  Ids onFloors;
  for (const TernFloor& each : building->floors->each()) {
    const std::int64_t id = each.map->id.integer();
    for (const std::int64_t place : scan(places->getAll(), [&](const TernLocation& location) {
           return location.mapId.integer() == id;
         })) {
      onFloors.push_back(place);
    }
  }
  RC_ASSERT(sorted(ids(places->getByBuilding(building))) == sorted(onFloors));
}

RC_GTEST_PROP(PlaceQueries, destinationsOfMapsFloorsAndBuildingsAreThoseOfAScan, ()) {
  expectMapsAndFloorsAsAScan<TernDestinationCollection>();
}

RC_GTEST_PROP(PlaceQueries, amenitiesOfMapsFloorsAndBuildingsAreThoseOfAScan, ()) {
  expectMapsAndFloorsAsAScan<TernAmenityCollection>();
}

bool names(const Value& waypointIds, const Value& id) {
  return std::ranges::any_of(waypointIds.items(),
                             [&](const Value& each) { return each.isNumber() && each == id; });
}

RC_GTEST_PROP(PlaceQueries, destinationsOfAWaypointAreThoseOfAScan, ()) {
  const auto places = anyPlaces<TernDestinationCollection>();
  const auto waypoint = TernWaypoint::initWithDictionary(Value::map({{"id", anyId()}}));
  const Ids expected = scan(places->getAll(), [&](const TernLocation& location) {
    return names(location.waypointIds, waypoint->id);
  });
  RC_ASSERT(ids(places->getByWaypoint(waypoint)) == expected);
}

RC_GTEST_PROP(PlaceQueries, waypointsAndFloorsOfADestinationAreThoseOfAScan, ()) {
  const auto place = TernDestination::initWithDictionary(anyPlace(1));
  TernWaypointCollection waypoints;
  TernFloorCollection floors;
  Ids atWaypoints;
  Ids onFloors;
  for (std::int64_t id = 0; id < 4; ++id) {
    const Value mapId = anyId();
    waypoints.create(Value::map({{"id", id}, {"mapId", mapId}}));
    const std::int64_t shown = *rc::gen::inRange(0, 5);
    floors.create(Value::map({{"id", id}, {"map", Value::map({{"id", shown}})}}));
    for (const auto& location : place->locations) {
      const bool isOnMap = mapId.isNumber() && location->mapId == mapId;
      if (isOnMap && names(location->waypointIds, id)) atWaypoints.push_back(id);
      if (location->mapId.integer() == shown) onFloors.push_back(id);
    }
  }
  RC_ASSERT(ids(waypoints.getByDestination(place)) == atWaypoints);
  RC_ASSERT(ids(floors.getByDestination(place)) == onFloors);
}

RC_GTEST_PROP(PlaceQueries, theBuildingOfAMapIsTheFirstWithAFloorThatShowsIt, ()) {
  TernBuildingCollection buildings;
  const std::int64_t mapId = *rc::gen::inRange(0, 4);
  std::int64_t building = -1;
  std::int64_t floor = -1;
  for (std::int64_t id = 1; id <= 3; ++id) {
    Value floors = Value::list();
    for (std::int64_t each = *rc::gen::inRange(0, 3); each > 0; --each) {
      const std::int64_t shown = *rc::gen::inRange(0, 4);
      floors.append(Value::map({{"id", id * 10 + each}, {"map", Value::map({{"id", shown}})}}));
      if (shown != mapId || building >= 0) continue;
      building = id;
      floor = id * 10 + each;
    }
    buildings.create(
        Value::map({{"id", id}, {"floors", Value::map({{"items", std::move(floors)}})}}));
  }
  const auto map = TernMap::initWithDictionary(Value::map({{"id", mapId}}));
  RC_ASSERT(idOf(buildings.getByMap(map)) == building);
  RC_ASSERT(idOf(buildings.getFloorByMap(map)) == floor);
}

RC_GTEST_PROP(PlaceQueries, waypointsOfAnAssociationAreThoseOfAScan, ()) {
  TernMapCollection maps;
  const auto asked = TernDestination::initWithDictionary(Value::map({{"id", anyId()}}));
  Ids naming;
  Ids withAny;
  for (std::int64_t id = 1; id <= 3; ++id) {
    Value waypoints = Value::list();
    for (std::int64_t each = *rc::gen::inRange(0, 3); each > 0; --each) {
      const std::int64_t waypoint = id * 10 + each;
      const Value ids =
          *rc::gen::arbitrary<bool>() ? Value::list({anyId(), anyId()}) : Value::list();
      waypoints.append(
          Value::map({{"id", waypoint}, {"associations", Value::map({{"destinations", ids}})}}));
      if (ids.size() > 0) withAny.push_back(waypoint);
      if (names(ids, asked->id)) naming.push_back(waypoint);
    }
    maps.create(
        Value::map({{"id", id}, {"waypoints", Value::map({{"items", std::move(waypoints)}})}}));
  }
  RC_ASSERT(ids(maps.getWaypointsByDestination(asked)) == naming);
  RC_ASSERT(ids(maps.getWaypointsWithDestinations()) == withAny);
}

RC_GTEST_PROP(FloorOrder, sortedFloorsAreAllFloorsInOrderEqualOnesAsTheyCame, ()) {
  TernFloorCollection floors;
  for (std::int64_t id = *rc::gen::inRange(0, 8); id > 0; --id) {
    const Value level = *rc::gen::elementOf(std::vector<Value>{-1, 0, 1, 1.5, "x", Value(), 2});
    floors.create(Value::map({{"id", id}, {"level", level}}));
  }
  // Insertion by hand: behind all that are not greater.
  Ids expected;
  const auto levelOf = [&](std::int64_t id) { return floors.getById(id)->level.number(); };
  for (const std::int64_t id : ids(floors.getAll())) {
    auto place = expected.end();
    while (place != expected.begin() && levelOf(*std::prev(place)) > levelOf(id)) --place;
    expected.insert(place, id);
  }
  RC_ASSERT(ids(floors.getAllSortedByLevel()) == expected);
}

}  // namespace
}  // namespace tern::test
