#include "TernCoreKit/model/collections/RecordMap.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

std::shared_ptr<TernBaseModel> record() { return std::make_shared<TernBaseModel>(); }

TEST(RecordMap, aNumberAndItsTextAreOneKey) {
  EXPECT_EQ(RecordMap::keyOf("7"), Value(7));
  EXPECT_EQ(RecordMap::keyOf(7.0), Value(7));
  EXPECT_EQ(RecordMap::keyOf("-12"), Value(-12));
  EXPECT_EQ(RecordMap::keyOf("0"), Value(0));
  EXPECT_EQ(RecordMap::keyOf(true), Value(1));
  EXPECT_TRUE(RecordMap::keyOf("9223372036854775807").isInteger());
  EXPECT_TRUE(RecordMap::keyOf("-9223372036854775808").isInteger());
}

TEST(RecordMap, whatPrintsAsNoPlainIntegerIsAText) {
  for (const char* text :
       {"", "-", "-0", "07", "-07", "+7", "7 ", " 7", "7a", "0x7", "1e3", "9223372036854775808",
        "-9223372036854775809", "9999999999999999999999"}) {
    EXPECT_EQ(RecordMap::keyOf(text), Value(text));
  }
  EXPECT_EQ(RecordMap::keyOf(nullptr), Value("<null>"));
  EXPECT_EQ(RecordMap::keyOf(2.5), Value("2.5"));
  EXPECT_EQ(RecordMap::keyOf(Value()), Value(""));
  EXPECT_EQ(RecordMap::keyOf(Value::list({7})), Value("[7]"));
}

TEST(RecordMap, anEmptyOneFindsNothing) {
  const RecordMap map;
  EXPECT_EQ(map.find(0), nullptr);
  EXPECT_EQ(map.find(Value("x")), nullptr);
  EXPECT_EQ(RecordMap(std::vector<RecordMap::Entry>()).find(0), nullptr);
}

TEST(RecordMap, aRepeatedKeyKeepsItsPlaceAndTakesTheNewRecord) {
  RecordMap map;
  const auto last = record();
  map.set(5, record());
  map.set("x", record());
  map.set(5, last);
  ASSERT_EQ(map.size(), 2U);
  EXPECT_EQ(map.entries()[0].key, Value(5));
  EXPECT_EQ(map.entries()[0].record, last);
}

TEST(RecordMap, aCopyDoesNotFollowTheOriginal) {
  RecordMap map;
  map.set(5, record());
  const RecordMap copy = map;
  map.set(6, record());
  EXPECT_EQ(copy.size(), 1U);
  EXPECT_EQ(copy.find(6), nullptr);
  EXPECT_EQ(copy.find(5)->record, map.find(5)->record);
}

TEST(RecordMap, longTextsAreKeys) {
  const std::string common(40, 'k');
  RecordMap map;
  for (int i = 0; i < 100; ++i) map.set(common + std::to_string(i), record());
  EXPECT_EQ(map.size(), 100U);
  EXPECT_EQ(map.find(Value(common + "42")), &map.entries()[42]);
  EXPECT_EQ(map.find(Value(common)), nullptr);
}

// A map of the keys in both ways of making it finds each of them.
void expectFindsAll(const std::vector<Value>& keys) {
  std::vector<RecordMap::Entry> entries;
  RecordMap grown;
  for (const Value& key : keys) {
    entries.push_back({record(), key});
    grown.set(key, entries.back().record);
  }
  const RecordMap built(std::move(entries));
  ASSERT_EQ(built.size(), keys.size());
  ASSERT_EQ(grown.size(), keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    ASSERT_EQ(built.find(keys[i]), &built.entries()[i]);
    ASSERT_EQ(grown.find(keys[i]), &grown.entries()[i]);
    ASSERT_EQ(grown.entries()[i].record, built.entries()[i].record);
  }
}

TEST(RecordMap, idsThatFallTogetherAreFoundInTime) {
  for (const unsigned shift : {16U, 24U, 32U, 40U}) {
    std::vector<Value> keys;
    for (std::int64_t i = 0; i < 300000; ++i) keys.emplace_back(i << shift);
    expectFindsAll(keys);
  }
}

TEST(RecordMap, manyTextsAreFoundInTime) {
  std::vector<Value> keys;
  for (int i = 0; i < 200000; ++i) keys.emplace_back("waypoint number " + std::to_string(i));
  expectFindsAll(keys);
}

TEST(RecordMap, neighbouringAndNegativeIdsAreFound) {
  std::vector<Value> keys;
  for (std::int64_t i = -50000; i < 50000; ++i) keys.emplace_back(i);
  keys.emplace_back(std::numeric_limits<std::int64_t>::min());
  keys.emplace_back(std::numeric_limits<std::int64_t>::max());
  expectFindsAll(keys);
}

// A few keys that repeat often, of every kind.
rc::Gen<Value> anyKey() {
  return rc::gen::map(rc::gen::pair(rc::gen::inRange(0, 5), rc::gen::inRange(0, 40)),
                      [](std::pair<int, int> draw) {
                        const auto [kind, number] = draw;
                        const std::int64_t wide = number;
                        if (kind == 0) return RecordMap::keyOf(wide << 40U);
                        if (kind == 1) return RecordMap::keyOf(std::to_string(number));
                        if (kind == 2) return RecordMap::keyOf(-wide);
                        if (kind == 3) return RecordMap::keyOf("floor " + std::to_string(number));
                        return RecordMap::keyOf(std::string(30, 'w') + std::to_string(number));
                      });
}

// The plain form: a list in insertion order and a map from key text to place.
struct Twin {
  std::vector<std::pair<std::string, std::shared_ptr<TernBaseModel>>> order;
  std::map<std::string, std::size_t> places;

  void set(const Value& key, const std::shared_ptr<TernBaseModel>& made) {
    const auto [place, isNew] = places.emplace(key.printed(), order.size());
    if (isNew) {
      order.emplace_back(key.printed(), made);
    } else {
      order[place->second].second = made;
    }
  }
};

void assertSame(const RecordMap& map, const Twin& twin, const std::vector<Value>& probes) {
  RC_ASSERT(map.size() == twin.order.size());
  for (std::size_t i = 0; i < twin.order.size(); ++i) {
    RC_ASSERT(map.entries()[i].key.printed() == twin.order[i].first);
    RC_ASSERT(map.entries()[i].record == twin.order[i].second);
  }
  for (const Value& key : probes) {
    const auto place = twin.places.find(key.printed());
    const auto* expected = place != twin.places.end() ? &map.entries()[place->second] : nullptr;
    RC_ASSERT(map.find(key) == expected);
  }
}

RC_GTEST_PROP(RecordMap, answersAsAPlainMapWhenGrown, ()) {
  const auto keys = *rc::gen::container<std::vector<Value>>(anyKey());
  const auto probes = *rc::gen::container<std::vector<Value>>(20, anyKey());
  RecordMap map;
  Twin twin;
  for (const Value& key : keys) {
    const auto made = record();
    map.set(key, made);
    twin.set(key, made);
  }
  assertSame(map, twin, probes);
  assertSame(RecordMap(map), twin, keys);
}

RC_GTEST_PROP(RecordMap, answersAsAPlainMapWhenBuiltAtOnceAndGrown, ()) {
  const auto keys = *rc::gen::container<std::vector<Value>>(anyKey());
  const auto later = *rc::gen::container<std::vector<Value>>(anyKey());
  std::vector<RecordMap::Entry> entries;
  Twin twin;
  for (const Value& key : keys) {
    entries.push_back({record(), key});
    twin.set(key, entries.back().record);
  }
  RecordMap map(std::move(entries));
  assertSame(map, twin, keys);
  for (const Value& key : later) {
    const auto made = record();
    map.set(key, made);
    twin.set(key, made);
  }
  assertSame(map, twin, later);
}

}  // namespace
}  // namespace tern::test
