// Places by name, beside a scan of the same names that folds each when it is asked.
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/guidance/TernPlaces.hpp"
#include "TernCoreKit/guidance/detail/Folding.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "bench/Bench.hpp"

namespace tern::bench {

namespace {

// Two or three words of two to four syllables each, "Tamílo Kérasu".
std::string randomName(std::mt19937_64& random) {
  static const std::vector<std::string> syllables{"ta", "mi",  "lo", "ké", "ra", "su", "ven", "dor",
                                                  "an", "bel", "ço", "fu", "ny", "po", "ri",  "Ōs"};
  std::string name;
  for (std::size_t words = 2 + random() % 2; words > 0; --words) {
    for (std::size_t left = 2 + random() % 3; left > 0; --left)
      name += syllables[random() % syllables.size()];
    if (words > 1) name += ' ';
  }
  return name;
}

std::unique_ptr<TernVenueData> venueOf(std::size_t count) {
  std::mt19937_64 random(20261122);
  Value items = Value::list();
  for (std::size_t i = 0; i < count; ++i) {
    items.append(
        Value::map({{"id", static_cast<std::int64_t>(i + 1)}, {"name", randomName(random)}}));
  }
  Value batch = Value::map();
  batch.set("items", std::move(items));
  auto venue = std::make_unique<TernVenueData>();
  venue->destinations = std::make_shared<TernDestinationCollection>();
  venue->destinations->createBatch(std::move(batch));
  return venue;
}

std::size_t scan(const TernVenueData& venue, std::string_view text) {
  const std::string wanted = detail::folded(text);
  std::size_t found = 0;
  for (const TernDestination& destination : venue.destinations->each()) {
    if (detail::folded(destination.name.text()).find(wanted) != std::string::npos) ++found;
  }
  return found;
}

void racePlaces(const TernVenueData& venue, const TernPlaces& places, const std::string& text) {
  const auto seconds = race({{"find", [&] { keep(static_cast<double>(places.find(text).size())); }},
                             {"scan", [&] { keep(static_cast<double>(scan(venue, text))); }}},
                            15);
  std::printf("%-24s %9zu  %8zu  %8.2f ms  %8.1f\n", text.c_str(), places.all().size(),
              places.find(text).size(), median(seconds[0]) * 1e3, ratioOf(seconds[1], seconds[0]));
}

}  // namespace

void benchPlaces() {
  const auto venue = venueOf(100'000);
  std::unique_ptr<TernPlaces> places;
  const double built = secondsOf([&] { places = std::make_unique<TernPlaces>(*venue); });
  std::printf("%-24s %9s  %8s  %11s  %8s    (built in %.0f ms)\n", "places by name", "names",
              "found", "find", "scan/find", built * 1e3);
  const std::string name = places->all()[50'000].name;
  std::string misspelled = name;
  misspelled.erase(misspelled.size() / 2, 1);
  for (const std::string& text : {std::string("a"), std::string("ta"), std::string("tamilo"), name,
                                  misspelled, std::string("nothing of it")}) {
    racePlaces(*venue, *places, text);
  }
}

}  // namespace tern::bench
