#include "TernCoreKit/model/collections/detail/Queries.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

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

}  // namespace
}  // namespace tern::test
