#include "TernCoreKit/platform/detail/ValueStack.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern {
namespace {

const std::string longText = "longer than what fits into the value itself";

TEST(ValueStack, replacesValuesByTheirList) {
  ValueStack stack;
  stack.push("below");
  stack.push(longText);
  stack.push(2);
  stack.makeList(1);
  ASSERT_EQ(stack.size(), 2U);
  EXPECT_EQ(stack.from(0)[0], Value("below"));
  EXPECT_EQ(stack.from(0)[1], Value::list({longText, 2}));
}

TEST(ValueStack, replacesKeysAndValuesByTheirMap) {
  ValueStack stack;
  stack.push("id");
  stack.push(7);
  stack.push(longText);
  stack.push(Value::list({1}));
  stack.makeMap(0, 4);
  ASSERT_EQ(stack.size(), 1U);
  EXPECT_EQ(stack.from(0)[0], Value::map({{"id", 7}, {longText, Value::list({1})}}));
}

TEST(ValueStack, makesAMapOfFewerValues) {
  ValueStack stack;
  stack.push("id");
  stack.push(7);
  stack.push();
  stack.push();
  stack.makeMap(0, 2);
  ASSERT_EQ(stack.size(), 1U);
  EXPECT_EQ(stack.from(0)[0], Value::map({{"id", 7}}));
}

TEST(ValueStack, makesEmptyContainersHoweverFullItIs) {
  for (std::size_t below = 0; below < 200; ++below) {
    ValueStack stack;
    for (std::size_t i = 0; i < below; ++i) stack.push(longText);
    stack.makeList(below);
    stack.makeMap(below + 1, 0);
    ASSERT_EQ(stack.size(), below + 2);
    EXPECT_EQ(stack.from(below)[0], Value::list());
    EXPECT_EQ(stack.from(below)[1], Value::map());
  }
}

TEST(ValueStack, keepsValuesWhileItGrows) {
  ValueStack stack;
  for (int i = 0; i < 1000; ++i) stack.push(longText + std::to_string(i));
  stack.makeList(0);
  const Value& list = stack.from(0)[0];
  ASSERT_EQ(list.size(), 1000U);
  EXPECT_EQ(list.items()[0].text(), longText + "0");
  EXPECT_EQ(list.items()[999].text(), longText + "999");
}

}  // namespace
}  // namespace tern
