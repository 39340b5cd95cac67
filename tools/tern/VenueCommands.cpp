#include "tools/tern/VenueCommands.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

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

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

}  // namespace

Answer listVenues(const TernVenueCollection& venues, bool json) {
  Value list = Value::list();
  std::string text;
  for (const TernVenue& venue : venues.each()) {
    list.append(Value::map({{"id", venue.id.integer()},
                            {"externalId", venue.externalId.text()},
                            {"name", venue.name.text()}}));
    text += padded(venue.id.printed(), 8) + std::string(venue.name.text());
    const std::string_view externalId = venue.externalId.text();
    text += externalId.empty() ? "\n" : " (" + std::string(externalId) + ")\n";
  }
  if (json) return {.text = jsonLine(Value::map({{"venues", std::move(list)}})), .remark = {}};
  return {.text = std::move(text), .remark = {}};
}

Answer describeVenue(const TernActiveVenue& venue, bool json) {
  Value description = Value::map(
      {{"venue", Value::map({{"id", venue.id.integer()}, {"name", venue.name.text()}})}});
  std::string text =
      std::string(venue.name.text()) + " (venue " + std::to_string(venue.id.integer()) + ")\n";
  for (const Count& each : countsOf(venue)) {
    description.set(each.key, static_cast<std::int64_t>(each.count));
    text += "  " + padded(std::string(each.name), 14) + std::to_string(each.count) + "\n";
  }
  return {.text = json ? jsonLine(description) : std::move(text), .remark = {}};
}

}  // namespace tern::command
