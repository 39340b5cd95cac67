#include "tools/generate/Spread.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <numeric>
#include <vector>

namespace tern::generate {
namespace {

RC_GTEST_PROP(Spread, partsSumToTheWholeAndFollowTheWeights, ()) {
  const int whole = *rc::gen::inRange(0, 100000);
  const auto weights =
      *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 50)));
  const int total = std::accumulate(weights.begin(), weights.end(), 0);
  Spread spread(whole, total);
  int sum = 0;
  for (int weight : weights) {
    const int part = spread.next(weight);
    const double fair = double{1} * whole * weight / total;
    RC_ASSERT(part > fair - 1 && part < fair + 1);
    sum += part;
  }
  RC_ASSERT(sum == whole);
}

TEST(Spread, noWeightAtAllTakesNothing) { EXPECT_EQ(Spread(10, 0).next(0), 0); }

}  // namespace
}  // namespace tern::generate
