#include "TernCoreKit/platform/detail/RepeatedKeys.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tern {
namespace {

using testing::ElementsAre;

using Entries = std::vector<std::pair<std::string, int>>;

// What is left of the entries; what lies behind must be absent.
Entries distinct(const Entries& entries) {
  std::vector<Value> values;
  for (const auto& [key, number] : entries) {
    values.emplace_back(key);
    values.emplace_back(number);
  }
  const std::size_t count = removeRepeatedKeys(values);
  Entries left;
  for (std::size_t i = 0; i < values.size(); i += 2) {
    if (i < count) {
      left.emplace_back(values[i].text(), static_cast<int>(values[i + 1].integer()));
    } else {
      EXPECT_TRUE(values[i].isAbsent() && values[i + 1].isAbsent());
    }
  }
  return left;
}

// The plain way: a scan for each entry.
Entries distinctByScan(const Entries& entries) {
  Entries left;
  for (const auto& [key, number] : entries) {
    const auto found = std::ranges::find(left, key, &Entries::value_type::first);
    if (found != left.end()) {
      found->second = number;
    } else {
      left.emplace_back(key, number);
    }
  }
  return left;
}

TEST(RepeatedKeys, leavesKeysThatDifferAlone) {
  EXPECT_EQ(distinct({}), Entries());
  EXPECT_THAT(distinct({{"b", 1}, {"a", 2}, {"", 3}}),
              ElementsAre(std::pair("b", 1), std::pair("a", 2), std::pair("", 3)));
}

TEST(RepeatedKeys, keepsTheFirstPlaceAndTheLastValue) {
  EXPECT_THAT(
      distinct({{"a", 1}, {"b", 2}, {"a", 3}, {"c", 4}, {"a", 5}, {"", 6}, {"", 7}}),
      ElementsAre(std::pair("a", 5), std::pair("b", 2), std::pair("c", 4), std::pair("", 7)));
}

TEST(RepeatedKeys, tellsKeysApartByAllTheirBytes) {
  const std::string shared = "a beginning that is long and the same ";
  const Entries entries = {{shared, 1},
                           {shared + "a", 2},
                           {shared + "b", 3},
                           {std::string("a\0", 2), 4},
                           {"a", 5},
                           {std::string(1, '\0'), 6},
                           {"", 7}};
  EXPECT_EQ(distinct(entries), entries);
}

RC_GTEST_PROP(RepeatedKeys, doesWhatAScanDoes, ()) {
  const auto key = rc::gen::container<std::string>(rc::gen::inRange('a', 'd'));
  const auto entries = *rc::gen::container<Entries>(
      rc::gen::pair(rc::gen::scale(0.05, key), rc::gen::arbitrary<int>()));
  RC_ASSERT(distinct(entries) == distinctByScan(entries));
}

// A map of many keys is not compared key by key with every other.
TEST(RepeatedKeys, takesAMillionKeys) {
  constexpr int count = 500'000;
  Entries entries;
  for (int i = 0; i < count; ++i) entries.emplace_back(std::to_string(i), i);
  for (int i = 0; i < count; ++i) entries.emplace_back(std::to_string(i), -i);
  const Entries left = distinct(entries);
  ASSERT_EQ(left.size(), std::size_t{count});
  EXPECT_EQ(left[7], std::pair(std::string("7"), -7));
  EXPECT_EQ(left[count - 1], std::pair(std::to_string(count - 1), 1 - count));
}

// Pairs of words that the hash mixes into the same state, strung together: all keys collide.
TEST(RepeatedKeys, survivesKeysMadeToCollide) {
  constexpr int pairs = 16;
  const auto word = [](std::uint64_t high) {
    std::string text = "aaaaaaaa";
    text[7] = static_cast<char>(text[7] ^ static_cast<char>(high));
    return text;
  };
  Entries entries;
  for (unsigned choice = 0; choice < 1U << pairs; ++choice) {
    std::string key;
    for (int i = 0; i < pairs; ++i) {
      const bool flipped = (choice >> i & 1U) != 0;
      // A flipped top bit of one word is carried to two bits of the next, which undoes it.
      std::string second = word(flipped ? 0x80 : 0);
      if (flipped) second[3] = static_cast<char>(second[3] ^ '\x80');
      key += word(flipped ? 0x80 : 0) + second;
    }
    entries.emplace_back(std::move(key), static_cast<int>(choice));
  }
  EXPECT_EQ(distinct(entries), entries);
}

}  // namespace
}  // namespace tern
