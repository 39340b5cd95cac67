// Decoding building documents from cold, beside simdjson's DOM parse of the same bytes and beside
// RapidJSON's reader into the same tree.
//
// Cold is what a load is: each time the system has taken back what the last round freed, and the
// peer has a new parser. The text itself lies ready for both; giving up the results is not timed.
#include <malloc.h>
#include <simdjson.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "bench/Bench.hpp"
#include "bench/RapidJsonPeer.hpp"

namespace tern::bench {

namespace {

// A map of a building as the service sends it, every field present.
class MapDocument {
 public:
  explicit MapDocument(std::size_t waypoints) {
    text_ = R"({"id":1,"name":"Ground","svg":")";
    for (int room = 0; room < 100; ++room) {
      text_ += R"(<path class=\"room\" d=\"M10 20L30 40V60Z\"/>\n)";
    }
    text_ += R"(","waypoints":{"items":[)";
    for (std::size_t i = 0; i < waypoints; ++i) addWaypoint(i);
    text_.back() = ']';
    text_ += R"(},"paths":{"items":[)";
    for (std::size_t i = 0; i < waypoints * 13 / 10; ++i) addPath(i, waypoints);
    text_.back() = ']';
    text_ += "}}";
  }

  std::string take() { return std::move(text_); }

 private:
  std::uint64_t below(std::uint64_t bound) { return random_() % bound; }

  template <class... Numbers>
  void add(const char* format, Numbers... numbers) {
    std::array<char, 512> line = {};
    const int size = std::snprintf(line.data(), line.size(), format,
                                   static_cast<unsigned long long>(numbers)...);
    text_.append(line.data(), static_cast<std::size_t>(size));
  }

  void addWaypoint(std::size_t number) {
    add(R"({"id":%llu,"externalId":"wp-%llu","mapId":"%llu","coordinates":[%llu.%02llu,%llu.%02llu],)",
        100'000 + number, number, below(30), below(4000), below(100), below(4000), below(100));
    text_ += R"("associations":{"destinations":[)";
    if (below(8) == 0) add(R"({"id":%llu})", 1000 + below(5000));
    add(R"(],"amenities":[]},"status":1,"unitNumber":"A%llu","zoneId":null},)", below(400));
  }

  void addPath(std::size_t number, std::size_t waypoints) {
    add(R"({"id":%llu,"externalId":"","pathTypeId":1,"name":"","direction":0,)"
        R"("waypointIds":[%llu,%llu],"status":1},)",
        500'000 + number, 100'000 + below(waypoints), 100'000 + below(waypoints));
  }

  std::mt19937_64 random_{20260301};
  std::string text_;
};

// What one contender took for the text of one round.
struct Cost {
  double seconds = 0;
  std::size_t bytes = 0;
};

Value decodeOurs(std::string text) {
  JsonResult result = decodeJson(std::move(text));
  if (result.error) std::abort();
  return std::move(result.value);
}

Cost costOfTree(const std::string& document, Value (*read)(std::string)) {
  std::string text = document;
  const std::size_t textBytes = malloc_usable_size(text.data());
  malloc_trim(0);
  const std::size_t before = heapInUse();
  Value tree;
  Cost cost;
  cost.seconds = secondsOf([&] { tree = read(std::move(text)); });
  // The text went with the decoding.
  cost.bytes = heapInUse() + textBytes - before;
  return cost;
}

Cost costOfSimdjson(const std::string& document) {
  const simdjson::padded_string text(document);
  malloc_trim(0);
  const std::size_t before = heapInUse();
  simdjson::dom::parser parser;
  Cost cost;
  cost.seconds = secondsOf([&] {
    if (parser.parse(text).error() != simdjson::SUCCESS) std::abort();
  });
  cost.bytes = heapInUse() - before;
  return cost;
}

void raceDecoding(const char* layout, std::size_t waypoints, const std::string& document) {
  constexpr int rounds = 15;
  std::vector<double> ours;
  std::vector<double> simdjson;
  std::vector<double> rapidJson;
  Cost oursLast;
  Cost simdjsonLast;
  for (int round = 0; round < rounds; ++round) {
    oursLast = costOfTree(document, decodeOurs);
    simdjsonLast = costOfSimdjson(document);
    ours.push_back(oursLast.seconds);
    simdjson.push_back(simdjsonLast.seconds);
    rapidJson.push_back(costOfTree(document, parseByRapidJson).seconds);
  }
  const auto size = static_cast<double>(document.size());
  std::printf(
      "decoding, %-8s %7zu waypoints %6.1f MB  %7.1f ms  ours/simdjson %.2f  RapidJSON/ours %.2f  "
      "bytes a byte %.2f, simdjson %.2f\n",
      layout, waypoints, size / 1e6, median(ours) * 1e3, ratioOf(ours, simdjson),
      ratioOf(rapidJson, ours), static_cast<double>(oursLast.bytes) / size,
      static_cast<double>(simdjsonLast.bytes) / size);
}

}  // namespace

void benchDecode() {
  for (const std::size_t waypoints : {std::size_t{10'000}, std::size_t{100'000}}) {
    const std::string document = MapDocument(waypoints).take();
    raceDecoding("compact", waypoints, document);
    raceDecoding("pretty", waypoints, encodeJson(decodeJson(document).value, JsonLayout::pretty));
  }
}

}  // namespace tern::bench
