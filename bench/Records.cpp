// From text to records: decoding and making records, beside simdjson's DOM parse of the same bytes.
#include <malloc.h>
#include <simdjson.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/IndoorVenue.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

double recordsSeconds(const std::string& document) {
  std::string text = document;
  malloc_trim(0);
  std::shared_ptr<TernBuilding> building;
  return secondsOf(
      [&] { building = TernBuilding::initWithDictionary(decodeJson(std::move(text)).value); });
}

double peerSeconds(const std::string& document) {
  const simdjson::padded_string text(document);
  malloc_trim(0);
  simdjson::dom::parser parser;
  return secondsOf([&] {
    if (parser.parse(text).error() != simdjson::SUCCESS) std::abort();
  });
}

// From cold, as a load is: the system has taken back what the last round freed.
void raceRecords(std::size_t waypoints) {
  const std::string text =
      encodeJson(makeIndoorVenue(waypoints, IdOrder::walking).building, JsonLayout::compact);
  std::vector<double> ours;
  std::vector<double> peer;
  for (int round = 0; round < 15; ++round) {
    ours.push_back(recordsSeconds(text));
    peer.push_back(peerSeconds(text));
  }
  std::printf("%-28s %9zu  %8.1f ms  %8.2f\n", "text to records, by simdjson", waypoints,
              median(ours) * 1e3, ratioOf(ours, peer));
}

void measureMemory(std::size_t waypoints) {
  const std::size_t before = heapInUse();
  std::shared_ptr<TernActiveVenue> venue;
  std::size_t count = 0;
  {
    IndoorVenue documents = makeIndoorVenue(waypoints, IdOrder::walking);
    count = documents.waypointIds.size();
    venue = assemble(std::move(documents));
  }
  const std::size_t withRecords = heapInUse();
  venue->loadGridData();
  const std::size_t withGraph = heapInUse();
  const auto& points = venue->globalASGrid()->waypoints();
  venue->wayfind(points.front(), points.back(), 0);
  const std::size_t withState = heapInUse();
  const auto each = [&](std::size_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(count);
  };
  std::printf(
      "%-28s %9zu  records %.0f, graph %.0f, together %.0f bytes a waypoint; a search's state "
      "%.0f\n",
      "memory", count, each(withRecords - before), each(withGraph - withRecords),
      each(withGraph - before), each(withState - withGraph));
}

}  // namespace

void benchRecords() {
  for (const std::size_t waypoints : {std::size_t{10'000}, std::size_t{100'000}})
    raceRecords(waypoints);
  for (const std::size_t waypoints :
       {std::size_t{10'000}, std::size_t{100'000}, std::size_t{1'000'000}})
    measureMemory(waypoints);
}

}  // namespace tern::bench
