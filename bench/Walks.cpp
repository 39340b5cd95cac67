// A matrix of walks between many waypoints, beside bare searches of the whole graph, one for each
// row: what a matrix may cost beyond them is the reading of its cells.
#include <cstdio>
#include <cstdlib>
#include <random>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/platform/detail/common/Processors.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernWalks.hpp"
#include "bench/Bench.hpp"
#include "bench/GridAdjacency.hpp"
#include "bench/LoadedVenue.hpp"
#include "bench/Yardstick.hpp"

namespace tern::bench {

namespace {

constexpr std::int32_t everything = 100;
constexpr std::size_t side = 1'000;
constexpr int rounds = 7;

std::vector<std::uint32_t> randomNodes(std::mt19937_64& random, std::size_t nodes) {
  std::vector<std::uint32_t> chosen;
  while (chosen.size() < side) chosen.push_back(static_cast<std::uint32_t>(random() % nodes));
  return chosen;
}

void measure(std::size_t waypoints) {
  IndoorVenue documents = makeIndoorVenue(waypoints, IdOrder::walking);
  const std::vector<std::int64_t> ids = documents.waypointIds;
  const auto venue = assemble(std::move(documents));
  venue->loadGridData();
  TernWalks walks;
  walks.grid = venue->globalASGrid();
  walks.maps = venue->maps;
  Adjacency adjacency = adjacencyOf(*walks.grid);
  // A goal that no link leads to, so that a search settles all.
  const auto nowhere = static_cast<std::uint32_t>(adjacency.nodeCount());
  adjacency.first.push_back(adjacency.first.back());
  Yardstick yardstick(adjacency);
  std::mt19937_64 random(11);
  const std::vector<std::uint32_t> starts = randomNodes(random, ids.size());
  std::vector<std::int64_t> from;
  std::vector<std::int64_t> to;
  for (const std::uint32_t start : starts) from.push_back(ids[start]);
  for (const std::uint32_t end : randomNodes(random, ids.size())) to.push_back(ids[end]);
  const auto seconds = race({{"ours",
                              [&] {
                                const auto rows = walks.between(from, to, everything);
                                if (!rows) std::exit(1);
                                keep((*rows)[0][0] ? (*rows)[0][0]->cost : 0);
                              }},
                             {"bare",
                              [&] {
                                for (const std::uint32_t start : starts) {
                                  keep(yardstick.search({start, nowhere}, everything));
                                }
                              }}},
                            rounds);
  std::printf(
      "%zu x %zu walks at %zu waypoints on %u threads: %.0f ms, %.2f of bare searches on one\n",
      side, side, ids.size(), tern::detail::usableProcessors(), median(seconds[0]) * 1e3,
      ratioOf(seconds[0], seconds[1]));
  std::fflush(stdout);
}

}  // namespace

void benchWalks() { measure(10'000); }

}  // namespace tern::bench
