#include "TernCoreKit/service/TernCoreUtils.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern {
namespace {

using Parsed = std::pair<std::optional<std::string>, Value>;
using Created = std::pair<std::optional<std::string>, std::optional<std::string>>;

Parsed parse(std::string data) {
  Parsed parsed;
  TernCoreUtils::parseJSONWithData(std::move(data), [&](auto error, Value object) {
    parsed = {std::move(error), std::move(object)};
  });
  return parsed;
}

Created create(const Value& object) {
  Created created;
  TernCoreUtils::createJSONWithData(object, [&](auto error, auto data) {
    created = {std::move(error), std::move(data)};
  });
  return created;
}

Value nested(int depth) {
  Value value = Value::list();
  for (int i = 1; i < depth; ++i) value = Value::list({std::exchange(value, {})});
  return value;
}

TEST(TernCoreUtils, bytesBecomeAnObject) {
  EXPECT_EQ(parse(R"({"a":[1,null]})"),
            Parsed(std::nullopt, Value::map({{"a", Value::list({1, nullptr})}})));
}

TEST(TernCoreUtils, bytesThatAreNoJsonGiveAnErrorAndNoObject) {
  for (const std::string& bytes : {std::string("<html>"), std::string(), std::string("{\"a\":"),
                                   std::string("\"\xFF\""), std::string(100'000, '[')}) {
    const auto [error, object] = parse(bytes);
    EXPECT_TRUE(error.value_or("").starts_with("Error parsing JSON: ")) << bytes.substr(0, 10);
    EXPECT_GT(error.value_or("").size(), 20U);
    EXPECT_TRUE(object.isAbsent());
  }
}

TEST(TernCoreUtils, anObjectIsWrittenOnIndentedLines) {
  EXPECT_EQ(create(Value::map({{"a", 1}})), Created(std::nullopt, "{\n \"a\": 1\n}"));
}

TEST(TernCoreUtils, whatCouldNotBeReadBackIsNotWritten) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(create(Value()),
            Created("Error parsing JSON: There is nothing to write.", std::nullopt));
  EXPECT_EQ(create(Value::map({{"a", Value::list({1, -infinity})}})),
            Created("Error parsing JSON: A number is not finite.", std::nullopt));
  EXPECT_EQ(create(nested(maximumJsonDepth + 1)),
            Created("Error parsing JSON: Lists and maps nest too deeply.", std::nullopt));

  const auto [error, data] = create(nested(maximumJsonDepth));
  ASSERT_TRUE(data.has_value());
  EXPECT_EQ(parse(*data), Parsed(std::nullopt, nested(maximumJsonDepth)));
}

}  // namespace
}  // namespace tern
