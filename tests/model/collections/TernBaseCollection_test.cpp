#include "TernCoreKit/model/collections/TernBaseCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

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

// --- A law ---

// The plain form: the documents that are kept, each with the text of its key.
struct Kept {
  std::string key;
  Value document;
};

void keep(std::vector<Kept>& all, const std::string& key, const Value& document) {
  const auto same = std::ranges::find(all, key, &Kept::key);
  if (same == all.end()) {
    all.push_back({key, document});
  } else {
    same->document = document;
  }
}

// Few ids and external ids, so that they repeat; "1" and 1.0 are the id 1.
Value anyDocument() {
  const Value id = *rc::gen::elementOf(std::vector<Value>{1, 2, 3, "1", "x", 1.0, 2.5, nullptr});
  Value document = Value::map({{"id", id}});
  document.set("externalId", *rc::gen::elementOf(std::vector<Value>{"a", "b", "", 5, nullptr}));
  document.set("name", *rc::gen::inRange(0, 1000));
  return document;
}

RC_GTEST_PROP(TernBaseCollection, answersAsAScanOfTheDocumentsItKeeps, ()) {
  TernAmenityCollection collection;
  std::vector<Kept> kept;
  const int batch = *rc::gen::inRange(0, 6);
  Value items = Value::list();
  for (int i = 0; i < batch; ++i) {
    const Value document = anyDocument();
    keep(kept, document["id"].printed(), document);
    items.append(document);
  }
  collection.createBatch(Value::map({{"items", items}}));
  for (int left = *rc::gen::inRange(0, 6); left > 0; --left) {
    const Value document = anyDocument();
    keep(kept, document["id"].printed(), document);
    collection.create(document);
  }
  const auto all = collection.getAll();
  RC_ASSERT(all.size() == kept.size() && collection.getCount() == kept.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    RC_ASSERT(all[i]->name == kept[i].document["name"]);
  }
  for (const std::int64_t id : {0, 1, 2, 3}) {
    const auto place = std::ranges::find(kept, std::to_string(id), &Kept::key);
    const auto expected =
        place != kept.end() ? all[static_cast<std::size_t>(place - kept.begin())] : nullptr;
    RC_ASSERT(collection.getById(id) == expected);
    RC_ASSERT(collection.findById(id) == expected.get());
  }
  for (const Value& externalId : {Value("a"), Value(""), Value(5)}) {
    std::vector<std::shared_ptr<TernAmenity>> expected;
    for (std::size_t i = 0; i < all.size(); ++i) {
      const Value& held = kept[i].document["externalId"];
      if (externalId.isText() && held == externalId) expected.push_back(all[i]);
    }
    RC_ASSERT(collection.getByExternalId(externalId) == expected);
  }
}

}  // namespace
}  // namespace tern::test
