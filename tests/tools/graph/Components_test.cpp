#include "tools/graph/Components.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <utility>

namespace tern::graph {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Links = std::vector<Link>;

// Whether a leads to b, by steps of any number.
std::vector<std::vector<bool>> closureOf(std::uint32_t count, const Links& links) {
  std::vector<std::vector<bool>> leads(count, std::vector<bool>(count));
  for (std::uint32_t node = 0; node < count; ++node) leads[node][node] = true;
  for (const auto& [from, to] : links) leads[from][to] = true;
  for (std::uint32_t over = 0; over < count; ++over) {
    for (std::uint32_t from = 0; from < count; ++from) {
      for (std::uint32_t to = 0; to < count; ++to) {
        if (leads[from][over] && leads[over][to]) leads[from][to] = true;
      }
    }
  }
  return leads;
}

Links bothWays(Links links) {
  for (std::size_t i = 0, count = links.size(); i < count; ++i) {
    links.emplace_back(links[i].second, links[i].first);
  }
  return links;
}

TEST(Components, graphWithoutNodesHasNoParts) {
  EXPECT_THAT(strongParts({}), IsEmpty());
  EXPECT_THAT(weakParts({}), IsEmpty());
  EXPECT_THAT(sizesOf({}), IsEmpty());
}

TEST(Components, oneWayJoinsAWeakPartOnly) {
  const Digraph graph = digraphOf(4, {{0, 1}, {1, 0}, {1, 2}});
  EXPECT_THAT(weakParts(graph), ElementsAre(0, 0, 0, 1));
  EXPECT_THAT(sizesOf(strongParts(graph)), testing::UnorderedElementsAre(2, 1, 1));
  EXPECT_THAT(reachedFrom(graph, std::vector<std::uint32_t>{1}),
              ElementsAre(true, true, true, false));
  EXPECT_THAT(reachedFrom(reversed(graph), std::vector<std::uint32_t>{2}),
              ElementsAre(true, true, true, false));
}

TEST(Components, longCycleTakesNoStack) {
  constexpr std::uint32_t count = 1'000'000;
  Digraph graph;
  for (std::uint32_t node = 0; node < count; ++node) {
    graph.targets.push_back((node + 1) % count);
    graph.first.push_back(node + 1);
  }
  EXPECT_THAT(sizesOf(strongParts(graph)), ElementsAre(count));
  EXPECT_THAT(sizesOf(weakParts(graph)), ElementsAre(count));
}

RC_GTEST_PROP(Components, partsAgreeWithWhatLeadsWhere, ()) {
  const auto count = *rc::gen::inRange<std::uint32_t>(1, 9);
  const auto node = rc::gen::inRange<std::uint32_t>(0, count);
  const Links links = *rc::gen::container<Links>(rc::gen::pair(node, node));
  const Digraph graph = digraphOf(count, links);
  const auto leads = closureOf(count, links);
  const auto joins = closureOf(count, bothWays(links));
  const PartNumbers strong = strongParts(graph);
  const PartNumbers weak = weakParts(graph);
  for (std::uint32_t a = 0; a < count; ++a) {
    const auto reached = reachedFrom(graph, std::vector{a});
    for (std::uint32_t b = 0; b < count; ++b) {
      RC_ASSERT((strong[a] == strong[b]) == (leads[a][b] && leads[b][a]));
      RC_ASSERT((weak[a] == weak[b]) == joins[a][b]);
      RC_ASSERT(reached[b] == leads[a][b]);
    }
  }
}

}  // namespace
}  // namespace tern::graph
