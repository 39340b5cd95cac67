// A route with its alternative: requests a second, searches a request, and how much of a request is
// not searching.
#include <algorithm>
#include <cstdio>
#include <random>
#include <span>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASAlternativePath.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

constexpr std::int64_t everything = 100;

struct Request {
  std::shared_ptr<TernWaypoint> from;
  std::shared_ptr<TernWaypoint> to;
};

std::vector<Request> randomRequests(const TernASGrid& grid, std::size_t count) {
  std::mt19937_64 random(9);
  const auto& waypoints = grid.waypoints();
  std::vector<Request> requests;
  while (requests.size() < count) {
    const Request request{waypoints[random() % waypoints.size()],
                          waypoints[random() % waypoints.size()]};
    if (request.from != request.to) requests.push_back(request);
  }
  return requests;
}

TernASAlternativePath finderFor(const TernActiveVenue& venue, const Request& request) {
  TernASAlternativePath finder;
  finder.grid = venue.globalASGrid();
  finder.maps = venue.maps;
  finder.waypointStart = request.from;
  finder.waypointEnd = request.to;
  finder.accessible = everything;
  return finder;
}

// The searches that requests make, and the time that they take with nothing else.
struct Searching {
  std::size_t searches = 0;
  std::size_t decisions = 0;
  double seconds = 0;
};

void timeSearch(const TernASAlternativePath& finder, Searching& searching) {
  searching.seconds += secondsOf([&] { keep(finder.getShortestPath() ? 1 : 0); });
  ++searching.searches;
}

// Closes the stretches that a request closes, outside of what is timed.
void searchOnly(const TernActiveVenue& venue, const Request& request, Searching& searching) {
  TernASAlternativePath finder = finderFor(venue, request);
  timeSearch(finder, searching);
  const auto route = finder.getShortestPath();
  std::vector<TernASNode> points;
  for (const TernPathPerFloor& segment : route.value_or(TernRoute())) {
    points.insert(points.end(), segment.points.begin(), segment.points.end());
  }
  if (points.size() < 3) return;
  const std::size_t stretch = (points.size() - 2) * 4 / 10;
  for (const std::size_t decision : finder.getDecisionNodes(points)) {
    ++searching.decisions;
    if (decision + stretch >= points.size()) continue;
    const auto closed = std::span(points).subspan(decision + 1, stretch);
    for (const TernASNode& node : closed) finder.grid->shouldBlockEntryToNode(node, true);
    timeSearch(finder, searching);
    for (const TernASNode& node : closed) finder.grid->shouldBlockEntryToNode(node, false);
  }
}

void measure(std::size_t waypoints) {
  const auto venue = assemble(makeIndoorVenue(waypoints, IdOrder::walking));
  venue->loadGridData();
  const auto requests = randomRequests(*venue->globalASGrid(), 100);
  std::vector<double> shares;
  std::vector<double> rates;
  std::size_t found = 0;
  Searching searching;
  for (int round = 0; round < 7; ++round) {
    searching = {};
    found = 0;
    for (const Request& request : requests) searchOnly(*venue, request, searching);
    const double whole = secondsOf([&] {
      for (const Request& request : requests) {
        TernASAlternativePath finder = finderFor(*venue, request);
        finder.wayfind(request.from, request.to, {}, everything,
                       [&](const auto&, const auto& other) { found += other ? 1U : 0U; });
      }
    });
    shares.push_back((whole - searching.seconds) / whole * 100);
    rates.push_back(static_cast<double>(requests.size()) / whole);
  }
  const auto each = [&](std::size_t sum) {
    return static_cast<double>(sum) / static_cast<double>(requests.size());
  };
  std::printf("%-14s %9zu  %10.0f  %10.1f  %10.1f  %8.1f %%  %9zu\n", "alternatives", waypoints,
              median(rates), each(searching.decisions), each(searching.searches), median(shares),
              found);
}

}  // namespace

void benchAlternatives() {
  std::printf("%-14s %9s  %10s  %10s  %10s  %10s  %9s\n", "", "waypoints", "requests/s",
              "decisions", "searches", "not search", "found/100");
  for (const std::size_t waypoints : {std::size_t{1'000}, std::size_t{10'000}}) measure(waypoints);
}

}  // namespace tern::bench
