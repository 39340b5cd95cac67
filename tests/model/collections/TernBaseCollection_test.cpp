#include "TernCoreKit/model/collections/TernBaseCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernBaseCollection, isEmptyAtFirst) {
  const TernWaypointCollection collection;
  EXPECT_EQ(collection.getCount(), 0U);
  EXPECT_THAT(collection.getAll(), IsEmpty());
  EXPECT_EQ(collection.getById(0), nullptr);
  EXPECT_TRUE(collection.plainItems().isAbsent());
}

TEST(TernBaseCollection, holdsAnEmptyRecordOfItsKind) {
  const TernWaypointCollection collection;
  ASSERT_NE(collection.collectionModelClass(), nullptr);
  EXPECT_TRUE(collection.collectionModelClass()->id.isAbsent());
  EXPECT_EQ(TernWaypointCollection().collectionModelClass(), collection.collectionModelClass());
}

TEST(TernBaseCollection, aBatchMakesItsRecordsInTheirOrder) {
  CapturedLog log;
  TernWaypointCollection collection;
  const RecordMap items =
      collection.createBatch(parsed(R"({"items": [{"id": 9}, {"mapId": 4, "id": 2}, {"id": 5}]})"));
  EXPECT_THAT(ids(collection.getAll()), ElementsAre(9, 2, 5));
  EXPECT_EQ(items.size(), 3U);
  EXPECT_EQ(collection.getCount(), 3U);
  EXPECT_EQ(collection.getById(2)->mapId, Value(4));
  EXPECT_EQ(collection.getById(3), nullptr);
}

TEST(TernBaseCollection, aLaterRecordOfTheSameIdReplacesTheEarlierInItsPlace) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(
      R"([{"id": 3, "mapId": 1}, {"id": 4}, {"id": 3, "mapId": 2}, {"id": "3", "zoneId": 6}])");
  EXPECT_EQ(collection->getCount(), 2U);
  EXPECT_TRUE(collection->getAll()[0]->mapId.isAbsent());
  EXPECT_EQ(collection->getAll()[0]->zoneId, Value(6));
  EXPECT_THAT(
      ids(filled<TernWaypointCollection>(R"([{"id": 3, "mapId": 1}, {"id": 3, "mapId": 2}])")
              ->getAll()),
      ElementsAre(3));
}

TEST(TernBaseCollection, twoRecordsOfOneIdGiveTheSecond) {
  const auto collection =
      filled<TernWaypointCollection>(R"([{"id": 3, "mapId": 1}, {"id": 3, "mapId": 2}])");
  ASSERT_EQ(collection->getCount(), 1U);
  EXPECT_EQ(collection->getById(3)->mapId, Value(2));
}

TEST(TernBaseCollection, aRecordWithoutIdIsKeptUnderTheValueOfItsFirstKey) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(
      R"([{"mapId": 8, "zoneId": 9}, {"externalId": "west", "mapId": 8}, {"unitNumber": "12"}])");
  EXPECT_EQ(collection->getById(8)->zoneId, Value(9));
  EXPECT_EQ(collection->getById(12)->unitNumber, Value("12"));
  const auto* west = collection->items().find(Value("west"));
  ASSERT_NE(west, nullptr);
  EXPECT_EQ(west->record->externalId, Value("west"));
}

TEST(TernBaseCollection, aRecordOfAnEmptyObjectIsKeptUnderTheEmptyKey) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}, {}])");
  EXPECT_EQ(collection->getCount(), 2U);
  EXPECT_NE(collection->items().find(Value("")), nullptr);
}

TEST(TernBaseCollection, idsOfAnyKindHaveTheirPrintedKey) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(
      R"([{"id": null}, {"id": true}, {"id": 2.0}, {"id": 2.5}, {"id": -9223372036854775808}, {"id": [3]}])");
  EXPECT_EQ(collection->getCount(), 6U);
  for (const Value& key : {Value("<null>"), Value(1), Value(2), Value("2.5"),
                           Value(std::numeric_limits<std::int64_t>::min()), Value("")}) {
    EXPECT_NE(collection->items().find(key), nullptr) << key.printed();
  }
}

TEST(TernBaseCollection, aNewBatchDropsTheOldRecords) {
  const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}, {"id": 2}])");
  collection->createBatch(parsed(R"({"items": [{"id": 3}]})"));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(3));
  collection->createBatch(parsed(R"({"items": []})"));
  EXPECT_THAT(collection->getAll(), IsEmpty());
}

TEST(TernBaseCollection, aBatchWithoutItemsOnAFreshCollectionIsEmpty) {
  CapturedLog log;
  const auto collection = batch<TernWaypointCollection>(R"({"defaultId": 3})");
  EXPECT_EQ(collection->getCount(), 0U);
}

TEST(TernBaseCollection, aBatchWithoutItemsLeavesTheRecordsAndIsLogged) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}])");
  collection->createBatch(parsed(R"({"defaultId": 3})"));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(1));
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: \"items\" of TernWaypoint is not in the batch"));
}

TEST(TernBaseCollection, aBatchThatIsNoMapLeavesTheRecordsAndIsLogged) {
  for (const Value& wrong : oddValues()) {
    CapturedLog log;
    const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}])");
    collection->createBatch(wrong);
    EXPECT_THAT(ids(collection->getAll()), ElementsAre(1));
    EXPECT_THAT(log.take(), ElementsAre("Tern SDK: \"items\" of TernWaypoint is not in the batch"));
  }
}

TEST(TernBaseCollection, itemsThatCannotBeReadAreKeptPlainAndLogged) {
  for (const char* items : {"5", "null", "\"text\"", R"([{"id": 1}, 7])", R"([[]])", R"([null])",
                            R"({"a": 1, "b": 2})"}) {
    CapturedLog log;
    const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}])");
    log.take();
    collection->createBatch(parsed("{\"items\": " + std::string(items) + "}"));
    EXPECT_EQ(collection->plainItems(), parsed(items));
    EXPECT_THAT(collection->getAll(), IsEmpty());
    EXPECT_EQ(collection->getById(1), nullptr);
    EXPECT_EQ(collection->getCount(), parsed(items).isMap() ? 2U : 0U);
    EXPECT_EQ(collection->copyWithZone()->plainItems(), parsed(items));
    EXPECT_THAT(log.take(),
                ElementsAre("Tern SDK: \"items\" of TernWaypoint is not a list of maps"));
  }
}

TEST(TernBaseCollection, anEmptyMapOfItemsIsNoFailure) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>("{}");
  EXPECT_EQ(collection->getCount(), 0U);
  EXPECT_TRUE(collection->plainItems().isAbsent());
}

TEST(TernBaseCollection, plainItemsGoWhenRecordsCome) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>("5");
  collection->createBatch(parsed("{}"));
  EXPECT_EQ(log.take().size(), 2U);
  collection->create(parsed(R"({"id": 4})"));
  EXPECT_TRUE(collection->plainItems().isAbsent());
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(4));
}

TEST(TernBaseCollection, plainItemsGoWhenABatchCanBeRead) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"({"a": 1, "b": 2})");
  EXPECT_EQ(log.take().size(), 1U);
  collection->createBatch(parsed(R"({"items": [{"id": 4}]})"));
  EXPECT_TRUE(collection->plainItems().isAbsent());
  EXPECT_EQ(collection->getCount(), 1U);
}

TEST(TernBaseCollection, keysInAnotherOrderFromElementToElementAreAllRead) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(
      R"([{"id": 1, "mapId": 2, "status": 3, "zoneId": 4}, {"zoneId": 4, "status": 3, "mapId": 2, "id": 2},
          {"status": 3, "id": 3}, {"mapId": 2, "zoneId": 4, "id": 4, "status": 3}])");
  for (const TernWaypoint& waypoint : collection->each()) EXPECT_EQ(waypoint.status, Value(3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(collection->getById(4)->zoneId, Value(4));
  EXPECT_TRUE(collection->getById(3)->zoneId.isAbsent());
}

TEST(TernBaseCollection, recordsWithMoreKeysThanItRemembersAreAllRead) {
  CapturedLog log;
  std::string document = "{\"id\": 1, \"unknown\": 0}";
  for (int i = 0; i < 40; ++i) document.insert(1, "\"k" + std::to_string(i) + "\": 0, ");
  const auto collection = filled<TernWaypointCollection>("[" + document + "]");
  EXPECT_EQ(collection->getCount(), 1U);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: unknown key \"k39\" in TernWaypoint"));
}

TEST(TernBaseCollection, aRecordThatStoppedIsKeptUnderItsId) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"([{"colour": 1, "id": 3}])");
  ASSERT_NE(collection->getById(3), nullptr);
  EXPECT_TRUE(collection->getById(3)->id.isAbsent());
  EXPECT_EQ(log.take().size(), 1U);
}

TEST(TernBaseCollection, createAddsOrReplacesOneRecord) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"([{"id": 1}, {"id": 2}])");
  collection->create(parsed(R"({"id": 3, "mapId": 5})"));
  collection->create(parsed(R"({"mapId": 6, "id": 1})"));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(1, 2, 3));
  EXPECT_EQ(collection->getById(1)->mapId, Value(6));
}

TEST(TernBaseCollection, createWithoutIdIsLoggedAndAddsNothing) {
  TernWaypointCollection collection;
  for (const Value& object : {Value(), Value(5), Value::map(), Value::map({{"mapId", 5}})}) {
    CapturedLog log;
    collection.create(object);
    EXPECT_EQ(collection.getCount(), 0U);
    EXPECT_THAT(log.take(), ElementsAre("Error in parsing data"));
  }
}

TEST(TernBaseCollection, getByExternalIdFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernAmenityCollection>(
      R"([{"id": 1, "externalId": "a"}, {"id": 2, "externalId": 5}, {"id": 3, "externalId": "a"}, {"id": 4}])");
  EXPECT_THAT(ids(collection->getByExternalId("a")), ElementsAre(1, 3));
  for (const Value& wrong : {Value("b"), Value(5), Value(), Value(nullptr)}) {
    EXPECT_THAT(collection->getByExternalId(wrong), IsEmpty());
  }
}

TEST(TernBaseCollection, eachAndFindByIdGiveTheRecordsThemselves) {
  const auto collection = filled<TernAmenityCollection>(R"([{"id": 7}, {"id": 8}])");
  EXPECT_EQ(collection->each().size(), 2U);
  EXPECT_EQ(&*collection->each().begin(), collection->findById(7));
  EXPECT_EQ(collection->findById(8), collection->getById(8).get());
  EXPECT_EQ(collection->findById(9), nullptr);
}

TEST(TernBaseCollection, aBatchTakesItsDocumentsOverWithoutCopyingThem) {
  Value document = parsed(R"({"items": [{"id": 1, "name": "a name that lies on the heap"}]})");
  const char* text = document["items"].items()[0]["name"].text().data();
  TernAmenityCollection collection;
  collection.createBatch(std::move(document));
  EXPECT_EQ(collection.findById(1)->name.text().data(), text);
}

}  // namespace
}  // namespace tern::test
