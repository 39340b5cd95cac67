// What the tests of records and collections share.
//
// Threads: any. Fails: by failing the test that calls it.
#pragma once

#include <gmock/gmock.h>
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
#include "TernCoreKit/platform/Nested.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tests/support/CapturedLog.hpp"

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

// A field that holds what the document gave, and whether a copy carries it.
template <class Record>
struct PlainField {
  const char* name;
  Value Record::*member;
  bool copied;
};

// Each field takes a value of any kind as it is, and only that field does; a copy carries the
// fields that it should.
template <class Record>
void expectPlainFields(const std::vector<PlainField<Record>>& fields) {
  CapturedLog log;
  for (const PlainField<Record>& field : fields) {
    for (const Value& value : oddValuesAndMaps()) {
      SCOPED_TRACE(std::string(field.name) + ": " + encodeJson(value, JsonLayout::compact));
      const auto record = Record::initWithDictionary(Value::map({{field.name, value}}));
      const auto copy = record->copyWithZone();
      for (const PlainField<Record>& other : fields) {
        const bool isField = other.member == field.member;
        EXPECT_EQ((*record).*other.member, isField ? value : Value()) << other.name;
        EXPECT_EQ((*copy).*other.member, isField && field.copied ? value : Value()) << other.name;
      }
    }
  }
}

// Whether a copy carries a nested field.
enum class Carried { no, yes };

// A map becomes a record, everything else stays as it is; a copy has a record of its own.
template <class Record, class T>
void expectNestedRecord(const char* name, Nested<T> Record::*member, Carried carried) {
  CapturedLog log;
  for (const Value& value : oddValues()) {
    SCOPED_TRACE(std::string(name) + ": " + encodeJson(value, JsonLayout::compact));
    const auto record = Record::initWithDictionary(Value::map({{name, value}}));
    EXPECT_FALSE((*record).*member);
    EXPECT_EQ(((*record).*member).plain(), value);
    const Value expected = carried == Carried::yes ? value : Value();
    EXPECT_EQ(((*record->copyWithZone()).*member).plain(), expected);
  }
  const auto record = Record::initWithDictionary(Value::map({{name, Value::map()}}));
  const auto copy = record->copyWithZone();
  ASSERT_TRUE((*record).*member);
  EXPECT_TRUE(((*record).*member).plain().isAbsent());
  EXPECT_EQ(static_cast<bool>((*copy).*member), carried == Carried::yes);
  EXPECT_NE(((*copy).*member).get(), ((*record).*member).get());
}

// A map becomes a collection, everything else stays as it is; a copy has a collection of its own
// with the same records.
template <class Record, class Collection>
void expectNestedCollection(const char* name, Nested<Collection> Record::*member, Carried carried) {
  expectNestedRecord(name, member, carried);
  CapturedLog log;
  const auto record =
      made<Record>("{\"" + std::string(name) + "\": {\"items\": [{\"id\": 3}, {\"id\": 4}]}}");
  ASSERT_TRUE((*record).*member);
  const auto& collection = *((*record).*member).get();
  EXPECT_THAT(ids(collection.getAll()), testing::ElementsAre(3, 4));
  if (carried == Carried::no) return;
  const auto copy = record->copyWithZone();
  const auto& copied = *((*copy).*member).get();
  EXPECT_EQ(copied.getAll(), collection.getAll());
}

// A key that is no field is logged and what comes behind it is not read; a document that is no map
// gives an empty record.
template <class Record>
void expectStopAtUnknownKey(const std::string& kind, const char* name, Value Record::*member) {
  CapturedLog log;
  const auto before = Record::initWithDictionary(Value::map({{name, 2}, {"odd key", 1}}));
  EXPECT_EQ((*before).*member, Value(2));
  const auto behind = Record::initWithDictionary(Value::map({{"odd key", 1}, {name, 2}}));
  EXPECT_EQ((*behind).*member, Value());
  const std::string line = "Tern SDK: unknown key \"odd key\" in " + kind;
  EXPECT_THAT(log.take(), testing::ElementsAre(line, line));
  for (const Value& value : oddValues()) {
    EXPECT_EQ((*Record::initWithDictionary(value)).*member, Value());
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: the document of " + kind + " is not a map"));
  }
}

}  // namespace tern::test
