#include "TernCoreKit/model/collections/RecordKey.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>

namespace tern::test {
namespace {

TEST(RecordKey, everyIntegerIsOne) {
  using Limits = std::numeric_limits<std::int64_t>;
  for (const std::int64_t integer : {std::int64_t{0}, std::int64_t{7}, std::int64_t{-7},
                                     Limits::max() / 2, Limits::max() / 2 + 1, Limits::min() / 2,
                                     Limits::min() / 2 - 1, Limits::max(), Limits::min()}) {
    const RecordKey key(integer);
    EXPECT_TRUE(key.isInteger());
    EXPECT_FALSE(key.isText());
    EXPECT_EQ(key.integer(), integer);
    EXPECT_EQ(key.text(), "");
    EXPECT_EQ(key, Value(integer));
    EXPECT_EQ(key.value(), Value(integer));
  }
}

TEST(RecordKey, aTextIsOne) {
  const RecordKey key("west");
  EXPECT_TRUE(key.isText());
  EXPECT_FALSE(key.isInteger());
  EXPECT_EQ(key.text(), "west");
  EXPECT_EQ(key.integer(), 0);
  EXPECT_EQ(key.printed(), "west");
  EXPECT_EQ(key, Value("west"));
}

TEST(RecordKey, differsFromEveryOtherKey) {
  EXPECT_FALSE(RecordKey(7) == Value(8));
  EXPECT_FALSE(RecordKey(7) == Value("7"));
  EXPECT_FALSE(RecordKey(7) == Value(7.0));
  EXPECT_FALSE(RecordKey("7") == Value(7));
  EXPECT_FALSE(RecordKey("") == Value(0));
  EXPECT_FALSE(RecordKey(0) == Value(""));
}

TEST(RecordKey, isCopiedAndMoved) {
  for (const Value& value : {Value(7), Value("a text that is too long to lie within")}) {
    RecordKey key(value);
    RecordKey copy(key);
    EXPECT_EQ(copy, value);
    EXPECT_EQ(key, value);
    const RecordKey moved(std::move(key));
    EXPECT_EQ(moved, value);
    copy = RecordKey(9);
    EXPECT_EQ(copy, Value(9));
    copy = moved;
    EXPECT_EQ(copy, value);
  }
}

}  // namespace
}  // namespace tern::test
