#include "TernCoreKit/wayfinding/detail/PackedNumbers.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace tern::detail {
namespace {

void expectKept(const std::vector<std::uint32_t>& numbers) {
  PackedNumbers packed;
  packed.reserve(numbers.size());
  for (const std::uint32_t number : numbers) packed.push_back(number);
  ASSERT_EQ(packed.size(), numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) EXPECT_EQ(packed[i], numbers[i]) << i;
}

TEST(PackedNumbers, keepsNumbersAtTheEdgesOfEachWidth) {
  expectKept({});
  expectKept({0, 255});
  expectKept({0, 255, 256, 65535, 1});
  expectKept({3, 65535, 65536, 7, std::numeric_limits<std::uint32_t>::max(), 8});
  expectKept({1, std::numeric_limits<std::uint32_t>::max()});
}

RC_GTEST_PROP(PackedNumbers, keepsAnyNumbers, (const std::vector<std::uint32_t>& numbers)) {
  expectKept(numbers);
}

}  // namespace
}  // namespace tern::detail
