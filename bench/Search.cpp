// Searching with route assembly, beside a bare loop, Boost.Graph and LEMON over the same links.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "bench/Bench.hpp"
#include "bench/GraphPeers.hpp"
#include "bench/GridAdjacency.hpp"
#include "bench/LoadedVenue.hpp"
#include "bench/Yardstick.hpp"

namespace tern::bench {

namespace {

constexpr std::int32_t everything = 100;
constexpr std::size_t nearLinks = 20;

struct Scene {
  std::shared_ptr<TernActiveVenue> venue;
  std::vector<std::int64_t> ids;  // in walking order
  Adjacency adjacency;
};

Scene makeScene(std::size_t waypoints, IdOrder order) {
  IndoorVenue documents = makeIndoorVenue(waypoints, order);
  Scene scene;
  scene.ids = documents.waypointIds;
  scene.venue = assemble(std::move(documents));
  scene.venue->loadGridData();
  return scene;
}

std::vector<Query> randomQueries(std::size_t nodes, std::size_t count) {
  std::mt19937_64 random(7);
  std::vector<Query> queries;
  while (queries.size() < count) {
    const Query query{static_cast<std::uint32_t>(random() % nodes),
                      static_cast<std::uint32_t>(random() % nodes)};
    if (query.from != query.to) queries.push_back(query);
  }
  return queries;
}

// Goals that lie twenty links away on the same floor: any of a breadth-first walk's twentieth ring.
std::vector<Query> nearQueries(const Adjacency& adjacency, std::size_t count) {
  std::mt19937_64 random(8);
  std::vector<Query> queries;
  std::vector<std::uint32_t> seenBy(adjacency.nodeCount(), 0);
  for (std::uint32_t walk = 1; queries.size() < count; ++walk) {
    const auto from = static_cast<std::uint32_t>(random() % adjacency.nodeCount());
    std::vector<std::uint32_t> ring = {from};
    seenBy[from] = walk;
    for (std::size_t step = 0; step < nearLinks && !ring.empty(); ++step) {
      std::vector<std::uint32_t> next;
      for (const std::uint32_t node : ring) {
        for (auto i = adjacency.first[node]; i < adjacency.first[node + 1]; ++i) {
          const std::uint32_t target = adjacency.target[i];
          const bool leavesFloor = adjacency.distance[i] == 1.0F;
          if (seenBy[target] == walk || leavesFloor) continue;
          seenBy[target] = walk;
          next.push_back(target);
        }
      }
      ring = std::move(next);
    }
    if (!ring.empty()) queries.push_back({from, ring[random() % ring.size()]});
  }
  return queries;
}

// Costs of all answers, so that contenders can be seen to do the same.
class Sum {
 public:
  template <class Search>
  Contender contender(std::string name, const std::vector<Query>& queries, Search search) {
    return {std::move(name), [this, &queries, search = std::move(search)]() mutable {
              total_ = 0;
              for (const Query& query : queries) total_ += static_cast<double>(search(query));
              keep(total_);
            }};
  }
  double total() const { return total_; }

 private:
  double total_ = 0;
};

void checkSame(const std::vector<Sum>& sums) {
  for (const Sum& sum : sums) {
    if (std::abs(sum.total() - sums[0].total()) <= 1e-4 * std::abs(sums[0].total())) continue;
    std::fprintf(stderr, "contenders disagree: %f, %f\n", sums[0].total(), sum.total());
    std::exit(1);
  }
}

void raceAll(const char* title, const Scene& scene, const std::vector<Query>& queries, int rounds) {
  TernASSearch search;
  search.grid = scene.venue->globalASGrid();
  search.maps = scene.venue->maps;
  Yardstick yardstick(scene.adjacency);
  BoostPeer boost(scene.adjacency);
  LemonPeer lemon(scene.adjacency);
  const auto ours = [&](Query query) {
    const auto route = search.search(scene.ids[query.from], scene.ids[query.to], everything);
    return route ? route->back().cost : -1.0F;
  };
  std::vector<Sum> sums(4);
  const auto seconds = race(
      {sums[0].contender("ours", queries, ours),
       sums[1].contender("bare", queries, [&](Query q) { return yardstick.search(q, everything); }),
       sums[2].contender("Boost", queries, [&](Query q) { return boost.search(q); }),
       sums[3].contender("LEMON", queries, [&](Query q) { return lemon.search(q); })},
      rounds);
  checkSame(sums);
  std::printf("%-14s %9zu  %10.1f us  %9.2f  %9.2f  %9.2f\n", title, scene.ids.size(),
              median(seconds[0]) * 1e6 / static_cast<double>(queries.size()),
              ratioOf(seconds[0], seconds[1]), ratioOf(seconds[2], seconds[0]),
              ratioOf(seconds[3], seconds[0]));
  std::fflush(stdout);
}

void raceOrders(std::size_t waypoints, std::size_t count) {
  const Scene walking = makeScene(waypoints, IdOrder::walking);
  const Scene random = makeScene(waypoints, IdOrder::random);
  const std::vector<Query> queries = randomQueries(walking.ids.size(), count);
  const auto searchIn = [&](const Scene& scene) {
    return [&scene, &queries] {
      TernASSearch search;
      search.grid = scene.venue->globalASGrid();
      search.maps = scene.venue->maps;
      for (const Query& query : queries) {
        keep(search.search(scene.ids[query.from], scene.ids[query.to], everything) ? 1 : 0);
      }
    };
  };
  const auto seconds = race({{"random", searchIn(random)}, {"walking", searchIn(walking)}}, 5);
  std::printf("ids in random order take %.2f times as long as in walking order (%zu waypoints)\n",
              ratioOf(seconds[0], seconds[1]), waypoints);
}

}  // namespace

void benchSearch() {
  std::printf("%-14s %9s  %13s  %9s  %9s  %9s\n", "search", "waypoints", "ours/route", "ours/bare",
              "Boost/ours", "LEMON/ours");
  for (const std::size_t waypoints :
       {std::size_t{1'000}, std::size_t{10'000}, std::size_t{100'000}, std::size_t{1'000'000}}) {
    Scene scene = makeScene(waypoints, IdOrder::walking);
    scene.adjacency = adjacencyOf(*scene.venue->globalASGrid());
    const std::size_t count = std::max<std::size_t>(5, 3'000'000 / waypoints);
    raceAll("random goals", scene, randomQueries(scene.ids.size(), count), 7);
    if (waypoints == 100'000) raceAll("20 links away", scene, nearQueries(scene.adjacency, 300), 7);
  }
  raceOrders(1'000'000, 5);
}

}  // namespace tern::bench
