#include "TernCoreKit/model/detail/FieldTable.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

struct Sample {
  Value id;
  Value aFieldWithAVeryLongName;
  Value left;
  Nested<TernPosition> nested;
  std::vector<std::shared_ptr<TernPosition>> list;
  std::shared_ptr<TernPosition> shared;
  bool finished = false;
};

using Table = detail::FieldTable<Sample>;

std::vector<Table::Field> sampleFields() {
  return {Table::copied<&Sample::id>("id"),
          Table::copied<&Sample::aFieldWithAVeryLongName>("aFieldWithAVeryLongName"),
          Table::uncopied<&Sample::left>("left"),
          Table::copied<&Sample::nested>("nested"),
          Table::copied<&Sample::list>("list"),
          Table::ignored("shared")};
}

Table sampleTable(detail::UnknownKeys unknownKeys = detail::UnknownKeys::stop) {
  return {"Sample", sampleFields(), [](Sample& sample, Value&) { sample.finished = true; },
          unknownKeys};
}

TEST(FieldTable, storesTheValuesOfItsNames) {
  CapturedLog log;
  const auto sample = sampleTable().make(
      Value::map({{"left", 3}, {"aFieldWithAVeryLongName", "long"}, {"id", 1}, {"nested", "n"}}));
  EXPECT_EQ(sample->left, Value(3));
  EXPECT_EQ(sample->aFieldWithAVeryLongName, Value("long"));
  EXPECT_EQ(sample->id, Value(1));
  EXPECT_EQ(sample->nested.plain(), Value("n"));
  EXPECT_TRUE(sample->finished);
}

TEST(FieldTable, leavesValuesThatADocumentCannotGiveToTheFinish) {
  CapturedLog log;
  const Table table("Sample", sampleFields(), [](Sample& sample, Value& dictionary) {
    sample.finished = dictionary["list"] == Value(5) && dictionary["shared"] == Value(6);
  });
  const auto sample = table.make(Value::map({{"list", 5}, {"shared", 6}}));
  EXPECT_TRUE(sample->list.empty());
  EXPECT_TRUE(sample->finished);
}

TEST(FieldTable, stopsAtAnUnknownKeyWithoutFinishing) {
  CapturedLog log;
  const auto sample = sampleTable().make(Value::map({{"id", 1}, {"Id", 2}, {"left", 3}}));
  EXPECT_EQ(sample->id, Value(1));
  EXPECT_TRUE(sample->left.isAbsent());
  EXPECT_FALSE(sample->finished);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: unknown key \"Id\" in Sample"));
}

TEST(FieldTable, passesOverUnknownKeysWhenToldTo) {
  CapturedLog log;
  const auto sample =
      sampleTable(detail::UnknownKeys::ignore).make(Value::map({{"Id", 2}, {"left", 3}}));
  EXPECT_EQ(sample->left, Value(3));
  EXPECT_TRUE(sample->finished);
}

TEST(FieldTable, aDocumentThatIsNoMapGivesAnEmptyRecordWithoutFinishing) {
  CapturedLog log;
  EXPECT_FALSE(sampleTable(detail::UnknownKeys::ignore).make(Value::list())->finished);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: the document of Sample is not a map"));
}

TEST(FieldTable, aTableWithoutFinishIsDoneWithItsKeys) {
  CapturedLog log;
  EXPECT_EQ(Table("Sample", sampleFields()).make(Value::map({{"id", 1}}))->id, Value(1));
}

TEST(FieldTable, aCopyCarriesThoseOfItsFieldsThatItShould) {
  Sample from;
  from.id = 1;
  from.left = 2;
  from.nested = std::make_shared<TernPosition>();
  from.list = {std::make_shared<TernPosition>()};
  const auto copy = sampleTable().copy(from);
  EXPECT_EQ(copy->id, Value(1));
  EXPECT_TRUE(copy->left.isAbsent());
  EXPECT_TRUE(copy->nested);
  EXPECT_NE(copy->nested.get(), from.nested.get());
  EXPECT_EQ(copy->list, from.list);
  EXPECT_FALSE(copy->finished);
}

// Whatever the order of the keys of one document after another, a remembered order changes nothing.
RC_GTEST_PROP(FieldTable, aRememberedKeyOrderChangesNothing, ()) {
  const auto table = sampleTable(detail::UnknownKeys::ignore);
  const std::vector<std::string> names{"id", "aFieldWithAVeryLongName", "left", "unknown",
                                       "another unknown name"};
  detail::KeyOrder order;
  // A key that is drawn again keeps its place in the document.
  const auto documents = *rc::gen::container<std::vector<std::vector<std::string>>>(
      rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(names)));
  for (const auto& keys : documents) {
    Value document = Value::map();
    for (const std::string& key : keys) document.set(key, Value(key + "!"));
    const auto remembered = table.make(document, order);
    const auto fresh = table.make(document);
    RC_ASSERT(remembered->id == document["id"]);
    RC_ASSERT(remembered->left == document["left"]);
    RC_ASSERT(remembered->aFieldWithAVeryLongName == document["aFieldWithAVeryLongName"]);
    RC_ASSERT(fresh->id == document["id"] && fresh->left == document["left"]);
  }
}

}  // namespace
}  // namespace tern::test
