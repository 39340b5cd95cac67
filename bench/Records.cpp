// From text to records: decoding and making records, beside simdjson's DOM parse of the same bytes.
#include <simdjson.h>

#include <cstdio>
#include <string>

#include "TernCoreKit/model/TernActiveVenue.hpp"
#include "TernCoreKit/model/TernBuilding.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/IndoorVenue.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

void raceRecords(std::size_t waypoints) {
  const IndoorVenue documents = makeIndoorVenue(waypoints, IdOrder::walking);
  const std::string text = encodeJson(documents.building, JsonLayout::compact);
  const auto ours = [&] {
    const auto building = TernBuilding::initWithDictionary(decodeJson(text).value);
    keep(static_cast<double>(building->id.integer()));
  };
  const auto peer = [&] {
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    if (parser.parse(text).get(document) != simdjson::SUCCESS) std::abort();
    keep(static_cast<double>(document["id"].get_int64().value_unsafe()));
  };
  const auto seconds = race({{"ours", ours}, {"simdjson", peer}}, 9);
  std::printf("%-28s %9zu  %8.1f ms  %8.2f\n", "text to records, by simdjson", waypoints,
              median(seconds[0]) * 1e3, ratioOf(seconds[0], seconds[1]));
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
  const auto each = [&](std::size_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(count);
  };
  std::printf("%-28s %9zu  records %.0f, graph %.0f, together %.0f bytes a waypoint\n", "memory",
              count, each(withRecords - before), each(withGraph - withRecords),
              each(withGraph - before));
}

}  // namespace

void benchRecords() {
  for (const std::size_t waypoints : {std::size_t{10'000}, std::size_t{100'000}}) raceRecords(waypoints);
  for (const std::size_t waypoints : {std::size_t{10'000}, std::size_t{100'000}, std::size_t{1'000'000}}) measureMemory(waypoints);
}

}  // namespace tern::bench
