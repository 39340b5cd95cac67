// Records and collections made of JSON text, and odd values to put into their documents.
//
//   const auto waypoint = made<TernWaypoint>(R"({"id": 7, "mapId": 2})");
//   const auto uris = filled<TernUriCollection>(R"([{"id": 1}, {"id": 2}])");
//   EXPECT_THAT(ids(uris->getAll()), ElementsAre(1, 2));
//
// Threads: any. Fails: text that is no JSON fails the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

// What gtest prints of a value.
inline void PrintTo(const Value& value, std::ostream* out) {
  *out << (value.isAbsent() ? "absent" : encodeJson(value, JsonLayout::compact));
}

}  // namespace tern

namespace tern::test {

inline Value parsed(std::string text) {
  JsonResult result = decodeJson(std::move(text));
  EXPECT_EQ(result.error, std::nullopt);
  return std::move(result.value);
}

// A record of one document.
template <class Record>
std::shared_ptr<Record> made(std::string text) {
  return Record::initWithDictionary(parsed(std::move(text)));
}

// A collection of one batch.
template <class Collection>
std::shared_ptr<Collection> batch(std::string text) {
  auto collection = std::make_shared<Collection>();
  collection->createBatch(parsed(std::move(text)));
  return collection;
}

// A collection of the list of its records' documents.
template <class Collection>
std::shared_ptr<Collection> filled(const std::string& items) {
  return batch<Collection>("{\"items\": " + items + "}");
}

template <class Record>
std::vector<std::int64_t> ids(const std::vector<std::shared_ptr<Record>>& records) {
  std::vector<std::int64_t> result;
  result.reserve(records.size());
  for (const auto& record : records) result.push_back(record->id.integer());
  return result;
}

template <class Record>
std::int64_t idOf(const std::shared_ptr<Record>& record) {
  return record != nullptr ? record->id.integer() : -1;
}

// Values of every kind, absurd ones among them.
inline std::vector<Value> oddValues() {
  return {nullptr,
          true,
          0,
          -7,
          std::numeric_limits<std::int64_t>::max(),
          std::numeric_limits<std::int64_t>::min(),
          1.5,
          -1e308,
          "",
          "plain",
          "a text that is too long to lie inside a value \xE2\x82\xAC",
          Value::list(),
          Value::list({1, "two", nullptr, Value::list({3})})};
}

inline std::vector<Value> oddValuesAndMaps() {
  std::vector<Value> values = oddValues();
  values.push_back(Value::map());
  values.push_back(Value::map({{"id", 1}, {"items", Value::list({Value::map({{"id", 2}})})}}));
  return values;
}

}  // namespace tern::test
