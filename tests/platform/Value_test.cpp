#include "TernCoreKit/platform/Value.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tern {
namespace {

using Kind = Value::Kind;
using testing::ElementsAre;

constexpr std::int64_t largestInteger = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallestInteger = std::numeric_limits<std::int64_t>::min();
constexpr double infiniteNumber = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

const std::string ownedText = "longer than what fits into the value itself";

Value sample() {
  return Value::map({{"id", 7},
                     {"name", ownedText},
                     {"coordinates", Value::list({1.5, 2.0})},
                     {"nothing", nullptr}});
}

std::vector<std::string> keys(const Value& map) {
  std::vector<std::string> keys;
  for (const Value::Entry& entry : map.entries()) keys.emplace_back(entry.key.text());
  return keys;
}

TEST(Value, isAbsentUntilItIsGivenSomething) {
  const Value value;
  EXPECT_EQ(value.kind(), Kind::absent);
  EXPECT_TRUE(value.isAbsent());
  EXPECT_FALSE(value.isNull());
}

TEST(Value, takesItsKindFromWhatItIsMadeOf) {
  EXPECT_EQ(Value(nullptr).kind(), Kind::null);
  EXPECT_EQ(Value(false).kind(), Kind::boolean);
  EXPECT_EQ(Value(7).kind(), Kind::integer);
  EXPECT_EQ(Value(std::uint32_t{7}).kind(), Kind::integer);
  EXPECT_EQ(Value(7.0).kind(), Kind::number);
  EXPECT_EQ(Value(7.0F).kind(), Kind::number);
  EXPECT_EQ(Value("").kind(), Kind::text);
  EXPECT_EQ(Value(ownedText).kind(), Kind::text);
  EXPECT_EQ(Value::list().kind(), Kind::list);
  EXPECT_EQ(Value::map().kind(), Kind::map);
}

TEST(Value, answersOneKindOnly) {
  const std::vector<Value> all = {Value(), nullptr, true,          7,
                                  7.5,     "text",  Value::list(), Value::map()};
  for (const Value& value : all) {
    EXPECT_EQ(value.isAbsent(), value.kind() == Kind::absent);
    EXPECT_EQ(value.isNull(), value.kind() == Kind::null);
    EXPECT_EQ(value.isBoolean(), value.kind() == Kind::boolean);
    EXPECT_EQ(value.isInteger(), value.kind() == Kind::integer);
    EXPECT_EQ(value.isNumber(), value.kind() == Kind::integer || value.kind() == Kind::number);
    EXPECT_EQ(value.isText(), value.kind() == Kind::text);
    EXPECT_EQ(value.isList(), value.kind() == Kind::list);
    EXPECT_EQ(value.isMap(), value.kind() == Kind::map);
  }
}

TEST(Value, readsNothingOfAnotherKind) {
  for (const Value& value : {Value(), Value(nullptr), Value("12"), sample(), Value::list({1})}) {
    EXPECT_EQ(value.integer(), 0);
    EXPECT_EQ(value.number(), 0.0);
    EXPECT_FALSE(value.flag());
  }
  for (const Value& value : {Value(), Value(nullptr), Value(true), Value(12), Value(1.5)}) {
    EXPECT_EQ(value.text(), "");
    EXPECT_EQ(value.size(), 0U);
    EXPECT_TRUE(value.items().empty());
    EXPECT_TRUE(value.entries().empty());
    EXPECT_TRUE(value["id"].isAbsent());
    EXPECT_EQ(value.find("id"), nullptr);
  }
  EXPECT_TRUE(sample().items().empty());
  EXPECT_TRUE(Value::list({1}).entries().empty());
}

TEST(Value, holdsEverySixtyFourBitInteger) {
  EXPECT_EQ(Value(largestInteger).integer(), largestInteger);
  EXPECT_EQ(Value(smallestInteger).integer(), smallestInteger);
  EXPECT_EQ(Value(std::uint32_t{4294967295}).integer(), 4294967295);
}

TEST(Value, cutsADoubleTowardsZero) {
  EXPECT_EQ(Value(2.9).integer(), 2);
  EXPECT_EQ(Value(-2.9).integer(), -2);
}

TEST(Value, holdsADoubleWithinSixtyFourBits) {
  EXPECT_EQ(Value(1e300).integer(), largestInteger);
  EXPECT_EQ(Value(infiniteNumber).integer(), largestInteger);
  EXPECT_EQ(Value(9223372036854775808.0).integer(), largestInteger);
  EXPECT_EQ(Value(-1e300).integer(), smallestInteger);
  EXPECT_EQ(Value(-infiniteNumber).integer(), smallestInteger);
  EXPECT_EQ(Value(-9223372036854775808.0).integer(), smallestInteger);
  EXPECT_EQ(Value(nan).integer(), 0);
}

TEST(Value, readsBooleansAsOneAndZero) {
  EXPECT_EQ(Value(true).integer(), 1);
  EXPECT_EQ(Value(true).number(), 1.0);
  EXPECT_EQ(Value(false).integer(), 0);
}

TEST(Value, isTrueForTrueAndForAnyNumberButZero) {
  for (const Value& value :
       {Value(true), Value(-1), Value(0.5), Value(smallestInteger), Value(nan)}) {
    EXPECT_TRUE(value.flag()) << value.printed();
  }
  for (const Value& value : {Value(false), Value(0), Value(0.0), Value(-0.0), Value("true")}) {
    EXPECT_FALSE(value.flag()) << value.printed();
  }
}

TEST(Value, keepsTextsOfEveryLength) {
  for (std::size_t size = 0; size < 70; ++size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text += static_cast<char>('!' + i);
    const Value value(text);
    const Value copy = value;  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(value.text(), text);
    EXPECT_EQ(copy.text(), text);
  }
}

TEST(Value, keepsNulBytesWithinATextApart) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(Value(text).text(), text);
  EXPECT_NE(Value(text), Value("a"));
}

TEST(Value, readsAMissingKeyAsAbsent) {
  const Value value = sample();
  EXPECT_TRUE(value["name "].isAbsent());
  EXPECT_TRUE(value["nothing"].isNull());
  EXPECT_EQ(value.find("missing"), nullptr);
  EXPECT_EQ(value["coordinates"].items()[0].number(), 1.5);
}

TEST(Value, keepsTheOrderOfAMap) {
  Value value = sample();
  EXPECT_THAT(keys(value), ElementsAre("id", "name", "coordinates", "nothing"));
  value.set("added", 1);
  value.set("name", 2);
  EXPECT_THAT(keys(value), ElementsAre("id", "name", "coordinates", "nothing", "added"));
  EXPECT_EQ(value["name"].integer(), 2);
}

TEST(Value, keepsARepeatedKeyOfALiteralOnce) {
  const Value value = Value::map({{"a", 1}, {"b", 2}, {"a", 3}});
  EXPECT_EQ(value, Value::map({{"a", 3}, {"b", 2}}));
}

TEST(Value, changesThroughItsViews) {
  Value value = sample();
  value.find("coordinates")->items()[1] = 9;
  value.entries()[0].value = "changed";
  EXPECT_EQ(value["coordinates"], Value::list({1.5, 9}));
  EXPECT_EQ(value["id"].text(), "changed");
}

TEST(Value, becomesAListWhenSomethingIsAppended) {
  Value value = sample();
  value.append(1);
  EXPECT_EQ(value, Value::list({1}));
}

TEST(Value, becomesAMapWhenAKeyIsSet) {
  Value value = Value::list({1});
  value.set("id", 1);
  EXPECT_EQ(value, Value::map({{"id", 1}}));
}

TEST(Value, growsOneByOne) {
  Value list = Value::list();
  Value map = Value::map();
  for (int i = 0; i < 100; ++i) {
    list.append(ownedText + std::to_string(i));
    map.set(std::to_string(i), i);
  }
  ASSERT_EQ(list.size(), 100U);
  ASSERT_EQ(map.size(), 100U);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(list.items()[static_cast<std::size_t>(i)].text(), ownedText + std::to_string(i));
    EXPECT_EQ(map[std::to_string(i)].integer(), i);
  }
}

TEST(Value, takesAPartOfItselfIn) {
  Value value = sample();
  value.append(value);
  EXPECT_EQ(value, Value::list({sample()}));
  Value map = sample();
  map.set(map["name"].text(), map["name"]);
  EXPECT_EQ(map[ownedText].text(), ownedText);
  map.set("id", map);
  EXPECT_EQ(map["id"]["id"].integer(), 7);
}

TEST(Value, isReplacedByAPartOfItself) {
  Value moved = sample();
  moved = std::move(*moved.find("coordinates"));
  EXPECT_EQ(moved, Value::list({1.5, 2.0}));
  Value copied = sample();
  copied = *copied.find("name");
  EXPECT_EQ(copied.text(), ownedText);
}

TEST(Value, staysTheSameWhenAssignedToItself) {
  Value value = sample();
  Value& same = value;
  value = same;
  EXPECT_EQ(value, sample());
  value = std::move(same);
  EXPECT_EQ(value, sample());
}

TEST(Value, isAbsentAfterItWasMovedFrom) {
  Value value = sample();
  const Value taken = std::move(value);
  EXPECT_TRUE(value.isAbsent());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(taken, sample());
  value = taken;
  EXPECT_EQ(value, sample());
}

TEST(Value, copiesAllThatLiesBelowIt) {
  Value original = sample();
  const Value copy = original;
  original.find("coordinates")->append(3);
  original.set("name", 1);
  EXPECT_EQ(copy, sample());
}

TEST(Value, takesAListOutOfItsPlaces) {
  std::vector<Value> values = {1, ownedText, sample()};
  EXPECT_EQ(Value::listOf(values), Value::list({1, ownedText, sample()}));
  for (const Value& value : values) EXPECT_TRUE(value.isAbsent());
  EXPECT_EQ(Value::listOf({}), Value::list());
}

TEST(Value, takesAMapOutOfItsPlaces) {
  std::vector<Value> values = {"id", 7, ownedText, sample()};
  EXPECT_EQ(Value::mapOf(values), Value::map({{"id", 7}, {ownedText, sample()}}));
  for (const Value& value : values) EXPECT_TRUE(value.isAbsent());
  EXPECT_EQ(Value::mapOf({}), Value::map());
}

TEST(Value, changesAnEmptyListOrMap) {
  Value list = Value::list();
  Value map = Value::map();
  const Value copy = list;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(list.size() + map.size() + copy.size(), 0U);
  list.append(1);
  map.set("a", 1);
  EXPECT_EQ(list, Value::list({1}));
  EXPECT_EQ(map, Value::map({{"a", 1}}));
  EXPECT_EQ(copy, Value::list());
}

TEST(Value, equalsOnlyItsOwnKind) {
  const std::vector<Value> all = {
      Value(),   nullptr,          false,   true, 0, 1.5, "", "0", Value::list(), Value::map(),
      ownedText, Value::list({0}), sample()};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t j = 0; j < all.size(); ++j) EXPECT_EQ(all[i] == all[j], i == j) << i << j;
  }
}

TEST(Value, equalsANumberOfTheOtherKind) {
  EXPECT_EQ(Value(7), Value(7.0));
  EXPECT_EQ(Value(-0.0), Value(0));
  EXPECT_NE(Value(7), Value(7.5));
  EXPECT_NE(Value(nan), Value(nan));
  EXPECT_NE(Value(nan), Value(0));
}

TEST(Value, comparesLargeIntegersAndDoublesExactly) {
  // The nearest double of this integer is one less.
  EXPECT_NE(Value(9007199254740993), Value(9007199254740992.0));
  EXPECT_EQ(Value(9007199254740992), Value(9007199254740992.0));
  EXPECT_NE(Value(largestInteger), Value(9223372036854775808.0));
  EXPECT_EQ(Value(smallestInteger), Value(-9223372036854775808.0));
  EXPECT_NE(Value(largestInteger), Value(infiniteNumber));
}

TEST(Value, equalsAMapInTheSameOrderOnly) {
  EXPECT_NE(Value::map({{"a", 1}, {"b", 2}}), Value::map({{"b", 2}, {"a", 1}}));
  EXPECT_NE(Value::map({{"a", 1}}), Value::map({{"a", 2}}));
  EXPECT_NE(Value::map({{"a", 1}}), Value::map({{"a", 1}, {"b", 2}}));
  EXPECT_NE(Value::list({1, 2}), Value::list({1}));
}

TEST(Value, knowsShortTextsAndNumbersByTheirBytes) {
  EXPECT_TRUE(Value("fifteen letters").sameBytes("fifteen letters"));
  EXPECT_FALSE(Value("fifteen letters").sameBytes("fifteen letterz"));
  EXPECT_TRUE(Value(7).sameBytes(7));
  EXPECT_FALSE(Value(7).sameBytes(7.0));
  EXPECT_TRUE(Value().sameBytes(Value()));
}

TEST(Value, printsWhatATemplateShows) {
  EXPECT_EQ(Value("Café").printed(), "Café");
  EXPECT_EQ(Value(ownedText).printed(), ownedText);
  EXPECT_EQ(Value(smallestInteger).printed(), "-9223372036854775808");
  EXPECT_EQ(Value(0.1).printed(), "0.1");
  EXPECT_EQ(Value(1e5).printed(), "100000");
  EXPECT_EQ(Value(-3.0).printed(), "-3");
  EXPECT_EQ(Value(1e22).printed(), "1e+22");
  EXPECT_EQ(Value(-1.7976931348623157e308).printed(), "-1.7976931348623157e+308");
  EXPECT_EQ(Value(true).printed(), "1");
  EXPECT_EQ(Value(false).printed(), "0");
  EXPECT_EQ(Value(nullptr).printed(), "<null>");
  EXPECT_EQ(Value().printed() + Value::list({1}).printed() + sample().printed(), "");
}

// A plain twin: a vector of pairs that is searched from the front.
RC_GTEST_PROP(Value, setsKeysAsAVectorOfPairsDoes, ()) {
  std::vector<std::pair<std::string, int>> twin;
  Value map = Value::map();
  const auto changes = *rc::gen::container<std::vector<std::pair<std::string, int>>>(rc::gen::pair(
      rc::gen::container<std::string>(rc::gen::inRange('a', 'c')), rc::gen::arbitrary<int>()));
  for (const auto& [key, number] : changes) {
    map.set(key, number);
    const auto found = std::find_if(twin.begin(), twin.end(),
                                    [&key = key](const auto& entry) { return entry.first == key; });
    if (found != twin.end()) {
      found->second = number;
    } else {
      twin.emplace_back(key, number);
    }
  }
  RC_ASSERT(map.size() == twin.size());
  for (std::size_t i = 0; i < twin.size(); ++i) {
    RC_ASSERT(map.entries()[i].key.text() == twin[i].first);
    RC_ASSERT(map.entries()[i].value.integer() == twin[i].second);
  }
}

RC_GTEST_PROP(Value, keepsAnyText, (const std::string& text)) {
  const Value value(text);
  RC_ASSERT(value.text() == text);
  RC_ASSERT(Value(value) == value);
}

}  // namespace
}  // namespace tern
