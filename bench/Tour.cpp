// Ordering stops: the solver beside the same solver word for word, and whole tours over several
// floors.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"
#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/LiteralTour.hpp"
#include "bench/LoadedVenue.hpp"
#include "tools/generate/GenerateVenue.hpp"

namespace tern::bench {

namespace {

constexpr std::int64_t everything = 100;

TernTSP::Matrix randomLengths(std::size_t places) {
  std::mt19937_64 random(20260303);
  TernTSP::Matrix lengths(places, std::vector<double>(places));
  for (auto& row : lengths) {
    for (double& cell : row) cell = static_cast<double>(random() % 100'000) / 7;
  }
  return lengths;
}

void raceSolvers(std::size_t places, int rounds) {
  const TernTSP::Matrix lengths = randomLengths(places);
  TernTSP::Result ours;
  TernTSP::Result literal;
  const auto seconds = race({{"ours", [&] { ours = TernTSP::solve(lengths); }},
                             {"literal", [&] { literal = LiteralTour::solve(lengths); }}},
                            rounds);
  if (ours.tour != literal.tour || ours.cost != literal.cost) {
    std::fprintf(stderr, "the solvers disagree: %f, %f\n", ours.cost, literal.cost);
    std::exit(1);
  }
  const double cells = static_cast<double>(places) * static_cast<double>(1ULL << places);
  const double ownCells = static_cast<double>(places + 2) * static_cast<double>(1ULL << places) / 4;
  std::printf("%6zu  %10.2f ms  %12.1f  %10.1f MB  %10.3f\n", places, median(seconds[0]) * 1e3,
              ratioOf(seconds[1], seconds[0]), ownCells * 8 / 1e6, ownCells / cells);
  std::fflush(stdout);
}

std::shared_ptr<TernActiveVenue> generatedVenue() {
  generate::GenerateOptions options;
  options.buildings = 1;
  options.floors = 4;
  options.waypoints = 10'000;
  IndoorVenue documents;
  const auto error =
      generate::generateVenue(options, [&](const std::string& path, std::string text) {
        if (path == "venue/1/full.json") documents.venue = decodeJson(std::move(text)).value;
        if (path.find("/building/") != std::string::npos) {
          documents.building = decodeJson(std::move(text)).value;
        }
        return std::optional<std::string>();
      });
  if (error) std::exit(1);
  auto venue = assemble(std::move(documents));
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

struct Request {
  std::shared_ptr<TernWaypoint> start;
  TernPOIOptimization::Destinations destinations;
};

std::vector<Request> randomRequests(const TernActiveVenue& venue, std::size_t count) {
  std::mt19937_64 random(20260304);
  const auto& waypoints = venue.globalASGrid()->waypoints();
  const auto all = venue.destinations->getAll();
  std::vector<Request> requests(count);
  for (auto& [start, destinations] : requests) {
    start = waypoints[random() % waypoints.size()];
    for (int i = 0; i < 10; ++i) destinations.push_back(all[random() % all.size()]);
  }
  return requests;
}

struct Leg {
  std::shared_ptr<TernWaypoint> from;
  std::shared_ptr<TernWaypoint> to;
};

void benchTours() {
  const auto venue = generatedVenue();
  const auto requests = randomRequests(*venue, 100);
  const auto ordering = TernPOIOptimization::initWithActiveVenue(venue, venue->nearestElement());
  std::vector<Leg> legs;
  std::size_t visited = 0;
  for (const auto& [start, destinations] : requests) {
    ordering->wayfindToMultipleDestinations(destinations, start, everything, {});
    const auto& stops = ordering->finalOrderOfWaypoints();
    visited += stops.size() - 1;
    for (std::size_t i = 1; i < stops.size(); ++i) legs.push_back({stops[i - 1], stops[i]});
  }
  const auto tours = [&] {
    for (const auto& [start, destinations] : requests) {
      ordering->wayfindToMultipleDestinations(destinations, start, everything, {});
    }
  };
  const auto searches = [&] {
    for (const auto& [from, to] : legs) keep(venue->wayfind(from, to, everything).empty() ? 0 : 1);
  };
  const auto seconds = race({{"tours", tours}, {"legs", searches}}, 7);
  const double count = static_cast<double>(requests.size());
  std::printf(
      "tours of 10 destinations on 4 floors of %zu waypoints: %.0f a second, %.1f stops each;\n"
      "finding their legs alone takes %.2f of the time\n",
      venue->globalASGrid()->nodeCount(), count / median(seconds[0]),
      static_cast<double>(visited) / count, ratioOf(seconds[1], seconds[0]));
}

}  // namespace

void benchTour() {
  std::printf("%6s  %13s  %12s  %13s  %10s\n", "places", "solver", "literal/ours", "memory",
              "of literal");
  raceSolvers(16, 15);
  raceSolvers(18, 9);
  raceSolvers(20, 7);
  benchTours();
}

}  // namespace tern::bench
