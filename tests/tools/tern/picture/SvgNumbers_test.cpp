#include "tools/tern/picture/SvgNumbers.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace tern::picture {
namespace {

std::vector<double> numbersIn(std::string_view text) {
  std::vector<double> numbers;
  while (const auto number = takeNumber(text)) numbers.push_back(*number);
  return numbers;
}

TEST(SvgNumbers, listsNeedNothingBetweenTheirNumbers) {
  EXPECT_EQ(numbersIn("10,20-5 .5.25\n1e2"), (std::vector<double>{10, 20, -5, 0.5, 0.25, 100}));
}

TEST(SvgNumbers, absurdOnesEndTheList) {
  EXPECT_EQ(numbersIn("1 1e300 2"), std::vector<double>{1});
  EXPECT_EQ(numbersIn("nan"), std::vector<double>{});
  EXPECT_EQ(numberIn("x"), 0);
}

}  // namespace
}  // namespace tern::picture
