#include "tools/import/ways/WayNet.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <vector>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

using Lengths = std::vector<std::vector<double>>;

Lengths allLengths(std::size_t nodes, const std::vector<StraightWay>& ways) {
  Lengths metres(nodes, std::vector<double>(nodes, std::numeric_limits<double>::infinity()));
  for (std::size_t i = 0; i < nodes; ++i) metres[i][i] = 0;
  for (const StraightWay& way : ways) {
    metres[way.from][way.to] = metres[way.to][way.from] = way.metres;
  }
  for (std::size_t by = 0; by < nodes; ++by) {
    for (std::size_t i = 0; i < nodes; ++i) {
      for (std::size_t k = 0; k < nodes; ++k) {
        metres[i][k] = std::min(metres[i][k], metres[i][by] + metres[by][k]);
      }
    }
  }
  return metres;
}

RC_GTEST_PROP(WayNet, thinnedWaysAreHardlyLongerAndUsedOnesNotAtAll, ()) {
  const MadeArea made = madeArea(*rc::gen::arbitrary<std::uint32_t>(), 2, 8);
  const Sight sight = sightIn({made.area}, made.places);
  const std::vector<StraightWay> thin = thinned(sight, 1.02);
  const Lengths before = allLengths(sight.nodes.size(), sight.ways);
  const Lengths after = allLengths(sight.nodes.size(), thin);
  for (std::size_t i = 0; i < before.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      RC_ASSERT(before[i][k] == after[i][k] || after[i][k] <= before[i][k] * 1.02 + 1e-9);
    }
  }
  const Lengths used =
      allLengths(sight.nodes.size(), usedOf(sight.nodes, thin, made.places.size()));
  for (std::size_t i = 0; i < made.places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) RC_ASSERT(used[i][k] <= after[i][k] + 1e-9);
  }
}

}  // namespace
}  // namespace tern::imports
