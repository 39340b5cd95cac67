// Building the graph: nanoseconds a waypoint by size, and its share of a load.
#include <cstdio>
#include <string>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

// Nanoseconds a waypoint, the median of several builds. The lists are made, and the last graph is
// given up, outside of what is timed.
double buildTime(std::size_t waypoints) {
  const auto venue = assemble(makeIndoorVenue(waypoints, IdOrder::walking));
  venue->loadGridData();
  std::shared_ptr<TernASGrid> grid = venue->globalASGrid();
  std::vector<double> seconds;
  const int rounds = waypoints < 100'000 ? 25 : 5;
  for (int round = 0; round < rounds; ++round) {
    auto points = grid->waypoints();
    auto paths = grid->paths();
    std::shared_ptr<TernASGrid> built;
    seconds.push_back(secondsOf([&] {
      built = TernASGrid::initASGrid(std::move(points), std::move(paths), grid->pathTypes(),
                                     grid->mapFulls(), grid->buildings(), false);
    }));
  }
  return median(seconds) * 1e9 / static_cast<double>(grid->nodeCount());
}

// From decoded documents to the ready graph, by the time that decoding them took.
void measureLoad(std::size_t waypoints) {
  IndoorVenue documents = makeIndoorVenue(waypoints, IdOrder::walking);
  const std::string venueText = encodeJson(documents.venue, JsonLayout::compact);
  const std::string buildingText = encodeJson(documents.building, JsonLayout::compact);
  documents = {};
  std::vector<double> decoding;
  std::vector<double> loading;
  for (int round = 0; round < 7; ++round) {
    IndoorVenue decoded;
    decoding.push_back(secondsOf([&] {
      decoded.venue = decodeJson(venueText).value;
      decoded.building = decodeJson(buildingText).value;
    }));
    std::shared_ptr<TernActiveVenue> venue;
    loading.push_back(secondsOf([&] {
      venue = assemble(std::move(decoded));
      venue->loadGridData();
    }));
  }
  std::printf("from documents to the graph takes %.2f times as long as decoding (%zu waypoints)\n",
              ratioOf(loading, decoding), waypoints);
}

}  // namespace

void benchGraph() {
  const double small = buildTime(10'000);
  const double large = buildTime(1'000'000);
  std::printf("building the graph: %.0f ns a waypoint at 10 000, %.0f at 1 000 000: %.2f times\n",
              small, large, large / small);
  for (const std::size_t waypoints : {std::size_t{10'000}, std::size_t{100'000}})
    measureLoad(waypoints);
}

}  // namespace tern::bench
