#include "tools/tern/RequestFields.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tern::command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RequestFields, readsEachKind) {
  const Value request = Value::map({{"from", 12},
                                    {"to", Value::list({40, 41.0, 40})},
                                    {"at", Value::list({1, -2.5})},
                                    {"blocked", true},
                                    {"op", "route"}});
  RequestFields fields(request);
  EXPECT_EQ(fields.integer("from"), 12);
  EXPECT_THAT(fields.integers("to"), ElementsAre(40, 41, 40));
  EXPECT_EQ(fields.point("at"), (TernCoordinate{1, -2.5}));
  EXPECT_TRUE(fields.flag("blocked"));
  EXPECT_EQ(fields.text("op"), "route");
  EXPECT_EQ(fields.integerOr("from", 7), 12);
  EXPECT_EQ(fields.integerOr("accessibility", 7), 7);
  EXPECT_FALSE(fields.error());
}

TEST(RequestFields, firstComplaintStays) {
  const Value request = Value::map({{"a", "x"}});
  RequestFields fields(request);
  EXPECT_EQ(fields.integer("a"), 0);
  EXPECT_EQ(fields.integer("b"), 0);
  EXPECT_EQ(fields.error(), "\"a\" must be a whole number");
}

TEST(RequestFields, missingFieldIsNamed) {
  const Value request = Value::map();
  const auto errorOf = [&](auto read) {
    RequestFields fields(request);
    read(fields);
    return fields.error();
  };
  EXPECT_EQ(errorOf([](auto& fields) { fields.integer("a"); }), "\"a\" is missing");
  EXPECT_EQ(errorOf([](auto& fields) { fields.integers("b"); }), "\"b\" is missing");
  EXPECT_EQ(errorOf([](auto& fields) { fields.point("c"); }), "\"c\" is missing");
  EXPECT_EQ(errorOf([](auto& fields) { fields.flag("d"); }), "\"d\" is missing");
  EXPECT_EQ(errorOf([](auto& fields) { fields.text("e"); }), "\"e\" is missing");
}

TEST(RequestFields, integralNumberWithinRangeIsAnInteger) {
  const auto read = [](Value value) {
    const Value request = Value::map({{"n", std::move(value)}});
    RequestFields fields(request);
    const std::int64_t number = fields.integer("n");
    return fields.error() ? std::optional<std::int64_t>() : number;
  };
  EXPECT_EQ(read(12), 12);
  EXPECT_EQ(read(12.0), 12);
  EXPECT_EQ(read(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
  EXPECT_FALSE(read(9223372036854775808.0));
  EXPECT_FALSE(read(12.5));
  EXPECT_FALSE(read(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(read(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(read("12"));
  EXPECT_FALSE(read(true));
  EXPECT_FALSE(read(nullptr));
  EXPECT_FALSE(read(Value::list({12})));
}

TEST(RequestFields, listsAreReadAsAWhole) {
  const auto refuses = [](Value value) {
    const Value request = Value::map({{"to", std::move(value)}});
    RequestFields fields(request);
    fields.integers("to");
    return fields.error() == "\"to\" must be a list of whole numbers";
  };
  EXPECT_TRUE(refuses(1));
  EXPECT_TRUE(refuses(Value::map()));
  EXPECT_TRUE(refuses(Value::list({1, "2"})));
  EXPECT_TRUE(refuses(Value::list({1.5})));
  EXPECT_FALSE(refuses(Value::list()));
}

TEST(RequestFields, pointIsAListOfTwoNumbers) {
  const auto refuses = [](Value value) {
    const Value request = Value::map({{"at", std::move(value)}});
    RequestFields fields(request);
    fields.point("at");
    return fields.error() == "\"at\" must be a list of two numbers";
  };
  EXPECT_TRUE(refuses(Value::list({1})));
  EXPECT_TRUE(refuses(Value::list({1, 2, 3})));
  EXPECT_TRUE(refuses(Value::list({1, "2"})));
  EXPECT_TRUE(refuses(Value::map({{"x", 1}, {"y", 2}})));
  EXPECT_TRUE(refuses("1,2"));
  EXPECT_TRUE(refuses(nullptr));
  EXPECT_FALSE(refuses(Value::list({1, 2.5})));
}

TEST(RequestFields, flagIsNeverANumber) {
  const Value request = Value::map({{"blocked", 1}});
  RequestFields fields(request);
  fields.flag("blocked");
  EXPECT_EQ(fields.error(), "\"blocked\" must be true or false");
}

}  // namespace
}  // namespace tern::command
