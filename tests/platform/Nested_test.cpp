#include "TernCoreKit/platform/Nested.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {
namespace {

struct Part {
  int number = 0;
};

static_assert(sizeof(Nested<Part>) <= 24);

TEST(Nested, holdsNothingAtFirst) {
  const Nested<Part> field;
  EXPECT_FALSE(field);
  EXPECT_EQ(field.get(), nullptr);
  EXPECT_EQ(field.record(), nullptr);
  EXPECT_TRUE(field.plain().isAbsent());
}

TEST(Nested, aPlainValueTakesThePlaceOfARecordAndBack) {
  Nested<Part> field = std::make_shared<Part>(Part{7});
  EXPECT_EQ(field->number, 7);
  EXPECT_TRUE(field.plain().isAbsent());
  field = Value("plain");
  EXPECT_FALSE(field);
  EXPECT_EQ(field.plain(), Value("plain"));
  field = std::make_shared<Part>(Part{8});
  EXPECT_TRUE(field);
  EXPECT_EQ(field.get()->number, 8);
}

TEST(Nested, aCopySharesTheRecord) {
  const Nested<Part> field = std::make_shared<Part>();
  Nested<Part> copy = field;
  EXPECT_EQ(copy.record(), field.record());
  EXPECT_EQ(field.record().use_count(), 2);
  copy = Value(1);
  EXPECT_EQ(field.record().use_count(), 1);
}

TEST(Nested, aNullRecordReadsAsNothing) {
  Nested<Part> field = Value(3);
  field = std::shared_ptr<Part>();
  EXPECT_FALSE(field);
  EXPECT_TRUE(field.plain().isAbsent());
}

TEST(Nested, takingThePlainValueLeavesItAbsent) {
  Nested<Part> field = Value("plain");
  EXPECT_EQ(field.takePlain(), Value("plain"));
  EXPECT_TRUE(field.plain().isAbsent());
}

TEST(Nested, takingThePlainValueOfARecordGivesNoneAndKeepsTheRecord) {
  Nested<Part> field = std::make_shared<Part>();
  EXPECT_TRUE(field.takePlain().isAbsent());
  EXPECT_TRUE(field);
}

}  // namespace
}  // namespace tern::test
