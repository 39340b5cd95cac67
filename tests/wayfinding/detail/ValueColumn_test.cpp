#include "TernCoreKit/wayfinding/detail/ValueColumn.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace tern::detail {
namespace {

constexpr std::int64_t greatestValue = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t leastValue = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t edge = std::int64_t{1} << 49U;

void expectColumn(const std::vector<Value>& values) {
  ValueColumn column;
  for (const Value& value : values) column.append(value);
  ASSERT_EQ(column.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(column[i].kind(), values[i].kind()) << i;
    EXPECT_EQ(column[i], values[i]) << i;
    EXPECT_EQ(column.integer(i), values[i].integer()) << i;
    EXPECT_EQ(column.number(i), values[i].number()) << i;
  }
}

TEST(ValueColumn, keepsWhatIsNoNumber) {
  expectColumn({{}, nullptr, true, false, "7", "a longer text than any", Value::list({1, 2})});
}

TEST(ValueColumn, keepsIntegersOfEverySize) {
  expectColumn({0, 1, -1, edge - 1, edge, -edge, -edge - 1, greatestValue, leastValue});
}

TEST(ValueColumn, keepsIdsWhateverComesBehindThem) {
  constexpr std::int64_t lastId = (std::int64_t{1} << 32U) - 1;
  expectColumn({1, 0, lastId});
  expectColumn({1, lastId, lastId + 1, 2});
  expectColumn({7, 8, 1.5, 9});
  expectColumn({7, "W7", 8});
  expectColumn({1.5, 7, 8});
  expectColumn({7, -1, 8});
}

TEST(ValueColumn, keepsDoublesToTheLastBit) {
  const double endless = std::numeric_limits<double>::infinity();
  for (const double number : {0.0, -0.0, 0.1, 1e308, -1e308, 5e-324, 3.0, endless, -endless,
                              std::nan(""), -std::nan("")}) {
    ValueColumn column;
    column.append(number);
    EXPECT_TRUE(column[0].isNumber() && !column[0].isInteger());
    EXPECT_EQ(std::bit_cast<std::uint64_t>(column.number(0)), std::bit_cast<std::uint64_t>(number));
  }
}

RC_GTEST_PROP(ValueColumn, keepsAnyInteger, (std::int64_t integer)) {
  ValueColumn column;
  column.append(integer);
  RC_ASSERT(column[0].isInteger());
  RC_ASSERT(column.integer(0) == integer);
}

}  // namespace
}  // namespace tern::detail
