#include "TernCoreKit/platform/detail/KeyMemory.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tern {
namespace {

std::vector<Value> entries(const std::vector<std::string>& keys) {
  std::vector<Value> values;
  for (const std::string& key : keys) {
    values.emplace_back(key);
    values.emplace_back(1);
  }
  return values;
}

// Whether the text, which begins behind a quotation mark, starts with the key.
bool starts(const KeyMemory::Key& key, const std::string& text) {
  std::string window = '"' + text;
  window.resize(KeyMemory::window, '"');
  return key.startsText(window.data());
}

TEST(KeyMemory, knowsNothingAtFirst) { EXPECT_TRUE(KeyMemory().keys().empty()); }

TEST(KeyMemory, learnsTheKeysOfAMapInPlaceOfTheOldOnes) {
  KeyMemory memory;
  memory.learn(entries({"a", "b"}));
  memory.learn(entries({"id", "", "name"}));
  ASSERT_EQ(memory.keys().size(), 3U);
  EXPECT_EQ(memory.keys()[0].value().text(), "id");
  EXPECT_EQ(memory.keys()[0].quotedSize(), 4U);
  EXPECT_EQ(memory.keys()[1].quotedSize(), 2U);
  EXPECT_EQ(memory.keys()[2].value().text(), "name");
}

TEST(KeyMemory, learnsNoLongKeyAndNothingBehindIt) {
  KeyMemory memory;
  memory.learn(entries({"a", "sixteen letters!", "b"}));
  ASSERT_EQ(memory.keys().size(), 1U);
  memory.learn(entries({"fifteen letters", "b"}));
  EXPECT_EQ(memory.keys().size(), 2U);
}

TEST(KeyMemory, learnsABoundedNumberOfKeys) {
  KeyMemory memory;
  memory.learn(entries(std::vector<std::string>(1000, "a")));
  EXPECT_EQ(memory.keys().size(), 64U);
}

TEST(KeyMemory, recognisesAKeyToItsClosingQuotationMark) {
  for (const std::string& key : {std::string(), std::string("n"), std::string("eightlet"),
                                 std::string("name"), std::string("fifteen letters")}) {
    KeyMemory memory;
    memory.learn(entries({key}));
    const KeyMemory::Key& known = memory.keys().front();
    EXPECT_TRUE(starts(known, key + "\":1"));
    EXPECT_FALSE(starts(known, key + "x\":1"));
    for (std::size_t i = 0; i < key.size(); ++i) {
      std::string other = key + "\":1";
      other[i] = '!';
      EXPECT_FALSE(starts(known, other)) << other;
    }
  }
}

}  // namespace
}  // namespace tern
