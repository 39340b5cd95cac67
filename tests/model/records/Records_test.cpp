// What all records promise, over the table of their kinds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "TernCoreKit/model/records/TernMapLabel.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/model/records/TernVenue.hpp"
#include "tests/model/records/RecordKinds.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

std::string textOf(const Value& value) { return encodeJson(value, JsonLayout::compact); }

class Records : public testing::TestWithParam<RecordKind> {
 protected:
  const RecordKind& kind_ = GetParam();
  CapturedLog log_;
};

// Each field takes a value of any kind as it is, and only that field does.
TEST_P(Records, keepEveryFieldAsTheDocumentGivesItAndCopyThoseThatTheyShould) {
  for (const PlainField& field : kind_.plain) {
    for (const Value& value : oddValuesAndMaps()) {
      SCOPED_TRACE(field.name + (": " + textOf(value)));
      const AnyRecord record = kind_.make(Value::map({{field.name, value}}));
      const AnyRecord copy = kind_.copy(record);
      for (const PlainField& other : kind_.plain) {
        const bool isField = &other == &field;
        EXPECT_EQ(other.read(record), isField ? value : Value()) << other.name;
        EXPECT_EQ(other.read(copy), isField && other.isCopied ? value : Value()) << other.name;
      }
    }
  }
}

// A document of all fields, each with its place among them.
Value wholeDocument(const RecordKind& kind, bool isReversed) {
  Value document = Value::map();
  const auto count = static_cast<std::int64_t>(kind.plain.size());
  for (std::int64_t i = 0; i < count; ++i) {
    const std::int64_t place = isReversed ? count - 1 - i : i;
    document.set(kind.plain[static_cast<std::size_t>(place)].name, place);
  }
  return document;
}

TEST_P(Records, takeAllFieldsOfOneDocumentInAnyOrderOfItsKeys) {
  for (const bool isReversed : {false, true}) {
    const AnyRecord record = kind_.make(wholeDocument(kind_, isReversed));
    std::int64_t place = 0;
    for (const PlainField& field : kind_.plain) {
      EXPECT_EQ(field.read(record), Value(place++)) << field.name;
    }
  }
}

TEST_P(Records, aCopyIsAsWholeAsItsOwnCopy) {
  const AnyRecord copy = kind_.copy(kind_.make(wholeDocument(kind_, false)));
  const AnyRecord again = kind_.copy(copy);
  EXPECT_NE(again, copy);
  for (const PlainField& field : kind_.plain) {
    EXPECT_EQ(field.read(again), field.read(copy)) << field.name;
  }
}

TEST_P(Records, aCopyByWayOfTheBaseIsOfTheSameKind) {
  if (!kind_.copyAsBase) return;
  const AnyRecord record = kind_.make(wholeDocument(kind_, false));
  const AnyRecord copy = kind_.copyAsBase(record);
  const AnyRecord direct = kind_.copy(record);
  EXPECT_NE(copy, record);
  for (const PlainField& field : kind_.plain) {
    EXPECT_EQ(field.read(copy), field.read(direct)) << field.name;
  }
}

TEST_P(Records, ofAnEmptyDocumentHaveAllFieldsAbsent) {
  const AnyRecord record = kind_.make(Value::map());
  for (const PlainField& field : kind_.plain) EXPECT_TRUE(field.read(record).isAbsent());
  for (const NestedField& field : kind_.nested) {
    EXPECT_TRUE(field.plain(record).isAbsent());
    EXPECT_EQ(field.object(record), nullptr);
  }
}

TEST_P(Records, stopAtAnUnknownKeyAndLogItUnlessTheyAreToIgnoreIt) {
  const std::string line = "Tern SDK: unknown key \"odd key\" in " + std::string(kind_.name);
  for (const PlainField& field : kind_.plain) {
    SCOPED_TRACE(field.name);
    const AnyRecord before = kind_.make(Value::map({{field.name, 2}, {"odd key", 1}}));
    const AnyRecord behind = kind_.make(Value::map({{"odd key", 1}, {field.name, 2}}));
    EXPECT_EQ(field.read(before), Value(2));
    EXPECT_EQ(field.read(behind), kind_.stopsAtUnknownKeys ? Value() : Value(2));
    const std::vector<std::string> lines(kind_.stopsAtUnknownKeys ? 2 : 0, line);
    EXPECT_EQ(log_.take(), lines);
  }
}

TEST_P(Records, areEmptyWhenTheDocumentIsNoMapWhichIsLogged) {
  for (const Value& value : oddValues()) {
    SCOPED_TRACE(textOf(value));
    const AnyRecord record = kind_.make(value);
    for (const PlainField& field : kind_.plain) EXPECT_EQ(field.read(record), Value());
    for (const NestedField& field : kind_.nested) EXPECT_EQ(field.plain(record), Value());
    EXPECT_THAT(log_.take(), ElementsAre("Tern SDK: the document of " + std::string(kind_.name) +
                                         " is not a map"));
  }
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, Records, testing::ValuesIn(recordKinds()),
                         testing::PrintToStringParamName());

struct FieldOfKind {
  RecordKind kind;
  NestedField field;
};

void PrintTo(const FieldOfKind& row, std::ostream* out) {
  *out << row.kind.name << '_' << row.field.name;
}

std::vector<FieldOfKind> nestedFields(bool collectionsOnly) {
  std::vector<FieldOfKind> rows;
  for (const RecordKind& kind : recordKinds()) {
    for (const NestedField& field : kind.nested) {
      if (!collectionsOnly || field.elements) rows.push_back({kind, field});
    }
  }
  return rows;
}

class NestedFields : public testing::TestWithParam<FieldOfKind> {
 protected:
  AnyRecord recordOf(const Value& value) const {
    return kind_.make(Value::map({{field_.name, value}}));
  }

  const RecordKind& kind_ = GetParam().kind;
  const NestedField& field_ = GetParam().field;
  CapturedLog log_;
};

TEST_P(NestedFields, keepWhatIsNoMapAsItIs) {
  for (const Value& value : oddValues()) {
    SCOPED_TRACE(textOf(value));
    const AnyRecord record = recordOf(value);
    EXPECT_EQ(field_.object(record), nullptr);
    EXPECT_EQ(field_.plain(record), value);
    EXPECT_EQ(field_.plain(kind_.copy(record)), field_.isCopied ? value : Value());
  }
}

TEST_P(NestedFields, holdAnObjectMadeOfAMapOfWhichACopyHasItsOwn) {
  const AnyRecord record = recordOf(Value::map());
  const AnyRecord copy = kind_.copy(record);
  ASSERT_NE(field_.object(record), nullptr);
  EXPECT_TRUE(field_.plain(record).isAbsent());
  EXPECT_EQ(field_.object(copy) != nullptr, field_.isCopied);
  EXPECT_NE(field_.object(copy), field_.object(record));
}

TEST_P(NestedFields, stayAMapInARecordThatAnUnknownKeyStopped) {
  const AnyRecord record = kind_.make(Value::map({{field_.name, Value::map()}, {"odd key", 1}}));
  EXPECT_EQ(field_.plain(record), kind_.stopsAtUnknownKeys ? Value::map() : Value());
  EXPECT_EQ(field_.object(record) == nullptr, kind_.stopsAtUnknownKeys);
  EXPECT_EQ(log_.take().size(), kind_.stopsAtUnknownKeys ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, NestedFields, testing::ValuesIn(nestedFields(false)),
                         testing::PrintToStringParamName());

class NestedCollections : public NestedFields {};

TEST_P(NestedCollections, holdTheRecordsOfTheirItemsAndACopyTheSameOnes) {
  const AnyRecord record = recordOf(parsed(R"({"items": [{"id": 3}, {"id": 4}]})"));
  ASSERT_NE(field_.object(record), nullptr);
  const NestedField::Elements elements = field_.elements(record);
  EXPECT_THAT(ids(elements), ElementsAre(3, 4));
  if (!field_.isCopied) return;
  EXPECT_EQ(field_.elements(kind_.copy(record)), elements);
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, NestedCollections, testing::ValuesIn(nestedFields(true)),
                         testing::PrintToStringParamName());

// --- What is particular to kinds that have nothing else of their own ---

TEST(TernMapLabel, aCopyHasNoId) {
  const auto label = made<TernMapLabel>(R"({"id": 4, "externalId": "e", "name": "Hall"})");
  EXPECT_EQ(label->id, Value(4));
  EXPECT_TRUE(label->copyWithZone()->id.isAbsent());
  EXPECT_EQ(label->copyWithZone()->name, Value("Hall"));
}

TEST(TernVenue, coordinatesAreAPosition) {
  const auto venue =
      made<TernVenue>(R"({"coordinates": {"topLeft": [1, 2], "bottomRight": [3, 4]}})");
  ASSERT_TRUE(venue->coordinates);
  EXPECT_EQ(venue->coordinates->topLeft, Value::list({1, 2}));
  EXPECT_EQ(venue->copyWithZone()->coordinates->bottomRight, Value::list({3, 4}));
}

}  // namespace
}  // namespace tern::test
