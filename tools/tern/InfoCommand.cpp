// The command that counts what a venue holds. The counts of what is missing are 0.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

// A number of the description: its key in JSON and its name in words.
struct Count {
  std::string_view key;
  std::string_view name;
  std::size_t count;
};

template <class Collection>
std::size_t countOf(const Nested<Collection>& collection) {
  return collection ? collection->getCount() : 0;
}

std::array<Count, 9> countsOf(const TernActiveVenue& venue) {
  std::size_t waypoints = 0;
  std::size_t paths = 0;
  for (const TernMap& map : venue.maps->each()) {
    waypoints += countOf(map.waypoints);
    paths += countOf(map.paths);
  }
  const std::size_t floors = venue.buildings ? venue.buildings->getAllFloors().size() : 0;
  return {{{"buildings", "buildings", countOf(venue.buildings)},
           {"floors", "floors", floors},
           {"maps", "maps", venue.maps->getCount()},
           {"waypoints", "waypoints", waypoints},
           {"paths", "paths", paths},
           {"destinations", "destinations", countOf(venue.destinations)},
           {"amenities", "amenities", countOf(venue.amenities)},
           {"pathTypes", "path types", countOf(venue.pathTypes)},
           {"links", "graph links", venue.globalASGrid()->linkCount()}}};
}

Outcome describeVenue(const Arguments& call, const std::shared_ptr<TernActiveVenue>& loaded) {
  const TernActiveVenue& venue = *loaded;
  Value description = Value::map(
      {{"venue", Value::map({{"id", venue.id.integer()}, {"name", venue.name.text()}})}});
  std::string text =
      std::string(venue.name.text()) + " (venue " + std::to_string(venue.id.integer()) + ")\n";
  for (const Count& each : countsOf(venue)) {
    description.set(each.key, static_cast<std::int64_t>(each.count));
    text += "  " + padded(std::string(each.name), 14) + std::to_string(each.count) + "\n";
  }
  if (call.json) text = jsonLine(description);
  return Answer{.text = std::move(text), .remark = {}};
}

}  // namespace

const Command infoCommand{.name = "info",
                          .summary = "count what a venue holds",
                          .about = AboutVenue{describeVenue},
                          .help = R"(Examples:
  tern generate --out mall
  tern info --data mall
  tern info --data mall --venue 1 --building 2 --json
)"};

}  // namespace tern::command
