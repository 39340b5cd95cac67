// What all collections of records promise, over the table of their kinds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"
#include "tests/support/Mutations.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Record = std::shared_ptr<TernBaseModel>;
using AllRecords = std::vector<Record>;
using AnyCollection = std::shared_ptr<TernBaseCollection>;

// A kind of collection, used without telling its type.
struct CollectionKind {
  const char* name;
  const char* recordName;
  AnyCollection (*make)();
  AnyCollection (*copy)(const AnyCollection&);
  AllRecords (*getAll)(const AnyCollection&);
  Record (*getById)(const AnyCollection&, std::int64_t);
  AllRecords (*getByExternalId)(const AnyCollection&, const Value&);
};

void PrintTo(const CollectionKind& kind, std::ostream* out) { *out << kind.name; }

template <class C>
const C& as(const AnyCollection& collection) {
  return static_cast<const C&>(*collection);
}

template <class C>
CollectionKind kind(const char* name, const char* recordName) {
  return {name,
          recordName,
          []() -> AnyCollection { return std::make_shared<C>(); },
          [](const AnyCollection& from) -> AnyCollection {
            const std::shared_ptr<C> ofTheSameKind = as<C>(from).copyWithZone();
            return ofTheSameKind;
          },
          [](const AnyCollection& collection) {
            const auto all = as<C>(collection).getAll();
            return AllRecords(all.begin(), all.end());
          },
          [](const AnyCollection& collection, std::int64_t id) -> Record {
            return as<C>(collection).getById(id);
          },
          [](const AnyCollection& collection, const Value& externalId) {
            const auto found = as<C>(collection).getByExternalId(externalId);
            return AllRecords(found.begin(), found.end());
          }};
}

class Collections : public testing::TestWithParam<CollectionKind> {
 protected:
  // Filled by a batch of these items.
  AnyCollection filledWith(const std::string& items) const {
    AnyCollection collection = kind_.make();
    collection->createBatch(parsed("{\"items\": " + items + "}"));
    return collection;
  }
  std::vector<std::int64_t> idsIn(const AnyCollection& collection) const {
    return ids(kind_.getAll(collection));
  }
  // The line about the items of a batch.
  std::string itemsAre(const std::string& problem) const {
    return "Tern SDK: \"items\" of " + std::string(kind_.recordName) + " is not " + problem;
  }

  const CollectionKind& kind_ = GetParam();
  CapturedLog log_;
};

TEST_P(Collections, areEmptyAtFirst) {
  const AnyCollection collection = kind_.make();
  EXPECT_EQ(collection->getCount(), 0U);
  EXPECT_THAT(kind_.getAll(collection), IsEmpty());
  EXPECT_EQ(kind_.getById(collection, 0), nullptr);
  EXPECT_THAT(kind_.getByExternalId(collection, ""), IsEmpty());
  EXPECT_TRUE(collection->plainItems().isAbsent());
}

TEST_P(Collections, holdAnEmptyRecordOfTheirKind) {
  const AnyCollection collection = kind_.make();
  ASSERT_NE(collection->collectionModelClass(), nullptr);
  EXPECT_TRUE(collection->collectionModelClass()->id.isAbsent());
  EXPECT_EQ(kind_.make()->collectionModelClass(), collection->collectionModelClass());
}

TEST_P(Collections, makeTheRecordsOfABatchInTheirOrder) {
  const AnyCollection collection = kind_.make();
  const RecordMap items = collection->createBatch(
      parsed(R"({"items": [{"id": 9}, {"externalId": "x", "id": 2}, {"id": 5}]})"));
  EXPECT_THAT(idsIn(collection), ElementsAre(9, 2, 5));
  EXPECT_EQ(items.size(), 3U);
  EXPECT_EQ(collection->getCount(), 3U);
  EXPECT_EQ(kind_.getById(collection, 2)->externalId, Value("x"));
  EXPECT_EQ(kind_.getById(collection, 3), nullptr);
}

TEST_P(Collections, ofTwoRecordsOfOneIdKeepTheSecond) {
  const AnyCollection collection =
      filledWith(R"([{"id": 3, "externalId": "first"}, {"id": 3, "externalId": "second"}])");
  ASSERT_EQ(collection->getCount(), 1U);
  EXPECT_EQ(kind_.getById(collection, 3)->externalId, Value("second"));
}

TEST_P(Collections, keepALaterRecordOfAnIdInThePlaceOfTheEarlierAlsoWhenTheIdIsATextThen) {
  const AnyCollection collection = filledWith(
      R"([{"id": 3, "externalId": "a"}, {"id": 4}, {"id": 3}, {"id": "3", "externalId": "c"}])");
  EXPECT_EQ(collection->getCount(), 2U);
  EXPECT_EQ(kind_.getAll(collection)[0]->externalId, Value("c"));
  EXPECT_EQ(kind_.getAll(collection)[0], kind_.getById(collection, 3));
}

TEST_P(Collections, keepARecordWithoutIdUnderTheValueOfItsFirstKey) {
  const AnyCollection collection = filledWith(R"([{"externalId": "west"}, {"externalId": "12"}])");
  EXPECT_EQ(kind_.getById(collection, 12)->externalId, Value("12"));
  const auto* west = collection->items().find(Value("west"));
  ASSERT_NE(west, nullptr);
  EXPECT_EQ(west->record->externalId, Value("west"));
}

TEST_P(Collections, keepIdsOfAnyKindUnderTheirPrintedText) {
  const AnyCollection collection = filledWith(
      R"([{"id": null}, {"id": true}, {"id": 2.0}, {"id": 2.5}, {"id": -9223372036854775808},
          {"id": [3]}])");
  EXPECT_EQ(collection->getCount(), 6U);
  for (const Value& key : {Value("<null>"), Value(1), Value(2), Value("2.5"),
                           Value(std::numeric_limits<std::int64_t>::min()), Value("[3]")}) {
    EXPECT_NE(collection->items().find(key), nullptr) << key.printed();
  }
}

TEST_P(Collections, dropTheirOldRecordsForThoseOfANewBatch) {
  const AnyCollection collection = filledWith(R"([{"id": 1}, {"id": 2}])");
  collection->createBatch(parsed(R"({"items": [{"id": 3}]})"));
  EXPECT_THAT(idsIn(collection), ElementsAre(3));
  collection->createBatch(parsed(R"({"items": []})"));
  EXPECT_THAT(idsIn(collection), IsEmpty());
}

TEST_P(Collections, stayEmptyWithoutALineWhenTheFirstBatchHasNoItems) {
  const AnyCollection collection = kind_.make();
  collection->createBatch(parsed(R"({"defaultId": 3})"));
  EXPECT_EQ(collection->getCount(), 0U);
}

TEST_P(Collections, keepTheirRecordsWhenABatchHasNoItemsWhichIsLogged) {
  const AnyCollection collection = filledWith(R"([{"id": 1}])");
  collection->createBatch(parsed(R"({"defaultId": 3})"));
  EXPECT_THAT(idsIn(collection), ElementsAre(1));
  EXPECT_THAT(log_.take(), ElementsAre(itemsAre("in the batch")));
}

TEST_P(Collections, keepTheirRecordsWhenABatchIsNoMapWhichIsLogged) {
  const AnyCollection collection = filledWith(R"([{"id": 1}])");
  for (const Value& wrong : oddValues()) {
    collection->createBatch(wrong);
    EXPECT_THAT(idsIn(collection), ElementsAre(1));
    EXPECT_THAT(log_.take(), ElementsAre(itemsAre("in the batch")));
  }
}

TEST_P(Collections, keepItemsThatCannotBeReadAsAPlainValueWhichIsLogged) {
  for (const char* items : {"5", "null", "\"text\"", R"([{"id": 1}, 7])", "[[]]", "[null]",
                            R"([{"id": 1}, {}])", R"({"a": 1, "b": 2})"}) {
    SCOPED_TRACE(items);
    const AnyCollection collection = filledWith(R"([{"id": 1}])");
    const Value plain = parsed(items);
    collection->createBatch(Value::map({{"items", plain}}));
    EXPECT_EQ(collection->plainItems(), plain);
    EXPECT_THAT(idsIn(collection), IsEmpty());
    EXPECT_EQ(kind_.getById(collection, 1), nullptr);
    EXPECT_EQ(collection->getCount(), plain.isMap() ? 2U : 0U);
    EXPECT_EQ(kind_.copy(collection)->plainItems(), plain);
    EXPECT_THAT(log_.take(), ElementsAre(itemsAre("a list of objects")));
  }
}

TEST_P(Collections, readAnEmptyMapOfItemsAsNone) {
  const AnyCollection collection = filledWith("{}");
  EXPECT_EQ(collection->getCount(), 0U);
  EXPECT_TRUE(collection->plainItems().isAbsent());
}

TEST_P(Collections, keepRecordsWithoutAnIdApartWhateverTheirFirstKeyHolds) {
  const AnyCollection collection = kind_.make();
  collection->createBatch(parsed(R"({"items": [{"externalId": [1, 2]}, {"externalId": {"a": 1}},
      {"externalId": [1, 3]}, {"externalId": {"a": 1}}, {"externalId": ""}]})"));
  EXPECT_EQ(collection->getCount(), 4U);
}

TEST_P(Collections, findAWholeNumberWithAnExponentOrAFractionAsThatInteger) {
  const AnyCollection collection = filledWith(R"([{"id": 1e5}, {"id": 2.0}, {"id": 2.5}])");
  EXPECT_NE(kind_.getById(collection, 100000), nullptr);
  EXPECT_NE(kind_.getById(collection, 2), nullptr);
  collection->create(parsed(R"({"id": 100000, "externalId": "new"})"));
  EXPECT_EQ(collection->getCount(), 3U);
  EXPECT_EQ(kind_.getById(collection, 100000)->externalId, Value("new"));
}

TEST_P(Collections, aBatchGivesACopyOfItsRecordsThatTheNextLeavesAlone) {
  const AnyCollection collection = kind_.make();
  const auto& items = collection->createBatch(parsed(R"({"items": [{"id": 1}]})"));
  collection->createBatch(parsed(R"({"items": [{"id": 2}, {"id": 3}]})"));
  EXPECT_EQ(items.size(), 1U);
  EXPECT_NE(items.find(1), nullptr);
}

TEST_P(Collections, forgetPlainItemsWhenARecordComes) {
  const AnyCollection collection = filledWith("5");
  collection->createBatch(parsed("{}"));
  EXPECT_THAT(log_.take(), ElementsAre(itemsAre("a list of objects"), itemsAre("in the batch")));
  collection->create(parsed(R"({"id": 4})"));
  EXPECT_TRUE(collection->plainItems().isAbsent());
  EXPECT_THAT(idsIn(collection), ElementsAre(4));
}

TEST_P(Collections, forgetPlainItemsWhenABatchCanBeRead) {
  const AnyCollection collection = filledWith(R"({"a": 1, "b": 2})");
  EXPECT_THAT(log_.take(), ElementsAre(itemsAre("a list of objects")));
  collection->createBatch(parsed(R"({"items": [{"id": 4}]})"));
  EXPECT_TRUE(collection->plainItems().isAbsent());
  EXPECT_EQ(collection->getCount(), 1U);
}

TEST_P(Collections, createAddsARecordOrPutsItInPlaceOfTheOneOfItsId) {
  const AnyCollection collection = filledWith(R"([{"id": 1}, {"id": 2}])");
  collection->create(parsed(R"({"id": 3})"));
  collection->create(parsed(R"({"externalId": "new", "id": 1})"));
  EXPECT_THAT(idsIn(collection), ElementsAre(1, 2, 3));
  EXPECT_EQ(kind_.getById(collection, 1)->externalId, Value("new"));
}

TEST_P(Collections, createWithoutIdAddsNothingWhichIsLogged) {
  const AnyCollection collection = kind_.make();
  for (const Value& object : {Value(), Value(5), Value::map(), Value::map({{"externalId", 5}})}) {
    collection->create(object);
    EXPECT_EQ(collection->getCount(), 0U);
    EXPECT_THAT(log_.take(), ElementsAre("Error in parsing data"));
  }
}

TEST_P(Collections, getByExternalIdFindsEveryEqualText) {
  const AnyCollection collection = filledWith(
      R"([{"id": 1, "externalId": "a"}, {"id": 2, "externalId": 5}, {"id": 3, "externalId": "a"},
          {"id": 4}, {"id": 5, "externalId": "A"}])");
  EXPECT_THAT(ids(kind_.getByExternalId(collection, "a")), ElementsAre(1, 3));
  for (const Value& wrong : {Value("b"), Value(5), Value(), Value(nullptr)}) {
    EXPECT_THAT(kind_.getByExternalId(collection, wrong), IsEmpty());
  }
}

TEST_P(Collections, aCopyIsOfTheSameKindWithTheSameRecordsAndGoesItsOwnWay) {
  const AnyCollection collection = filledWith(R"([{"id": 2}, {"id": 1}])");
  const AnyCollection copy = kind_.copy(collection);
  EXPECT_EQ(copy->collectionModelClass(), collection->collectionModelClass());
  EXPECT_EQ(kind_.getAll(copy), kind_.getAll(collection));
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(idsIn(copy), ElementsAre(2, 1, 3));
  EXPECT_THAT(idsIn(collection), ElementsAre(2, 1));
}

// Whatever a service sends, the records that are there are those that can be found.
TEST_P(Collections, agreeWithThemselvesAboutDamagedBatches) {
  const Value batch = parsed(R"({"defaultId": 2, "items": [{"id": 1, "externalId": "a"},
      {"id": 2, "externalId": "b"}, {"id": 3}, {"externalId": "c"}, {"id": "2"}]})");
  for (std::uint64_t seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    Mutations mutations(seed);
    Value damaged = batch;
    mutations.damage(damaged, static_cast<int>(seed % 5));
    const AnyCollection collection = kind_.make();
    const RecordMap items = collection->createBatch(damaged);
    const AllRecords all = kind_.getAll(collection);
    EXPECT_EQ(items.size(), all.size());
    EXPECT_TRUE(collection->plainItems().isMap() || collection->getCount() == all.size());
    EXPECT_TRUE(collection->plainItems().isAbsent() || all.empty());
    for (const RecordMap::Entry& entry : collection->items().entries()) {
      EXPECT_EQ(collection->items().find(entry.key.value()), &entry);
      if (entry.key.isInteger()) {
        EXPECT_EQ(kind_.getById(collection, entry.key.integer()), entry.record);
      }
    }
    EXPECT_EQ(kind_.getAll(kind_.copy(collection)), all);
    log_.take();
  }
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, Collections,
    testing::Values(kind<TernAmenityCollection>("TernAmenityCollection", "TernAmenity"),
                    kind<TernBuildingCollection>("TernBuildingCollection", "TernBuilding"),
                    kind<TernDestinationCollection>("TernDestinationCollection", "TernDestination"),
                    kind<TernFloorCollection>("TernFloorCollection", "TernFloor"),
                    kind<TernLocaleCollection>("TernLocaleCollection", "TernLocale"),
                    kind<TernMapCollection>("TernMapCollection", "TernMap"),
                    kind<TernMapLabelCollection>("TernMapLabelCollection", "TernMapLabel"),
                    kind<TernMapLabelInstances>("TernMapLabelInstances", "TernMapLabelInstance"),
                    kind<TernPathCollection>("TernPathCollection", "TernPath"),
                    kind<TernPathTypeCollection>("TernPathTypeCollection", "TernPathType"),
                    kind<TernUriCollection>("TernUriCollection", "TernUri"),
                    kind<TernVenueCollection>("TernVenueCollection", "TernVenue"),
                    kind<TernWaypointCollection>("TernWaypointCollection", "TernWaypoint")),
    testing::PrintToStringParamName());

}  // namespace
}  // namespace tern::test
