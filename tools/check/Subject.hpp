// What is checked: a venue as the library loaded it, with its graph, and the documents that it came
// from, which still have what the library left out.
//
// Ownership: borrows all of it, which must outlive it. Threads: as readers of the venue.
// Fails: never.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/check/Finding.hpp"
#include "tools/check/Network.hpp"
#include "tools/graph/Standing.hpp"

namespace tern::check {

class Subject {
 public:
  // REQUIRES: the venue has its graph.
  Subject(const TernActiveVenue& loaded, const Value& venueDocument,
          std::span<const Value> buildingDocuments)
      : venue(loaded),
        document(venueDocument),
        buildings(buildingDocuments),
        network(*loaded.globalASGrid()),
        ways(network.upTo(anyLevel)),
        standing(graph::standingIn(ways)) {}

  const TernActiveVenue& venue;
  const Value& document;
  const std::span<const Value> buildings;
  const Network network;
  // All links, whatever level they ask for.
  const graph::Digraph ways;
  const graph::Standing standing;

  // "Harbour Hall, Ground Floor"; what has no name is "map 3".
  std::string floor(std::int64_t map) const;
};

// The map that all of the nodes lie on, or none.
std::optional<std::int64_t> commonMap(const Network& network, std::span<const std::uint32_t> nodes);
// " on Ground Floor", " on several floors"
std::string onFloor(const Subject& subject, std::optional<std::int64_t> map);

// The items of the batch under the key, as the document has them.
inline std::span<const Value> itemsOf(const Value& owner, std::string_view key) {
  return owner[key]["items"].items();
}

// Calls `visit(const Value& building, const Value& floor)` for every floor of the documents.
template <class Visit>
void forEachFloor(const Subject& subject, Visit visit) {
  for (const Value& building : subject.buildings) {
    for (const Value& floor : itemsOf(building, "floors")) visit(building, floor);
  }
}

// Calls `visit(const Value& map)` for every map of the documents.
template <class Visit>
void forEachMap(const Subject& subject, Visit visit) {
  if (subject.document["map"].isMap()) visit(subject.document["map"]);
  forEachFloor(subject, [&](const Value&, const Value& floor) {
    if (floor["map"].isMap()) visit(floor["map"]);
  });
}

}  // namespace tern::check
