#include "tools/tern/Nearest.hpp"

#include <string_view>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/Requests.hpp"

namespace tern::command {

namespace {

template <class Collection>
auto recordOf(const Nested<Collection>& collection, std::int64_t id) {
  return collection ? collection->getById(id) : nullptr;
}

// Those of the ids that the collection knows.
template <class Collection>
void appendElements(const Nested<Collection>& collection, const std::vector<std::int64_t>& ids,
                    TernNearestElement::Elements& elements) {
  for (const std::int64_t id : ids) {
    if (auto record = recordOf(collection, id)) elements.emplace_back(std::move(record));
  }
}

std::string_view kindName(TernElement::Kind kind) {
  if (kind == TernElement::Kind::destination) return "destination";
  return kind == TernElement::Kind::amenity ? "amenity" : "pathType";
}

Value idOrNull(const std::shared_ptr<TernWaypoint>& waypoint) {
  return waypoint != nullptr ? Value(waypoint->id.integer()) : Value(nullptr);
}

Value elementOrNull(const TernElement& element, bool isFound) {
  if (!isFound) return nullptr;
  return Value::map({{"kind", kindName(element.kind)}, {"id", element.record->id.integer()}});
}

Value idsOf(const TernNearestElement::Waypoints& waypoints) {
  Value ids = Value::list();
  for (const auto& waypoint : waypoints) ids.append(waypoint->id.integer());
  return ids;
}

Value errorOrNull(const std::optional<TernError>& error) {
  return error ? errorAnswer(*error)["error"] : Value(nullptr);
}

std::shared_ptr<TernNearestElement> searcherOf(const TernActiveVenue& venue) {
  auto nearest = venue.nearestElement();
  // Else a search that leaves no error would repeat that of an earlier one.
  nearest->setError(std::nullopt);
  return nearest;
}

TernElement elementOf(const TernActiveVenue& venue, RequestFields& fields) {
  if (!fields.has("destination") && fields.has("amenity")) {
    return recordOf(venue.amenities, fields.integer("amenity"));
  }
  if (!fields.has("destination") && fields.has("pathType")) {
    return recordOf(venue.pathTypes, fields.integer("pathType"));
  }
  return recordOf(venue.destinations, fields.integer("destination"));
}

}  // namespace

std::optional<NearestSearch> nearestSearchOf(const TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t map = fields.integer("map");
  const TernCoordinate at = fields.point("at");
  TernElement element = elementOf(venue, fields);
  if (fields.error()) return std::nullopt;
  return NearestSearch{at, venue.maps->getById(map), std::move(element)};
}

NearestFound findNearest(const TernActiveVenue& venue, const NearestSearch& search) {
  const auto nearest = searcherOf(venue);
  NearestFound found;
  nearest->searchNearestElement(search.element, search.at, search.map,
                                [&](auto waypoint, const auto&, auto error) {
                                  found.waypoint = std::move(waypoint);
                                  found.error = std::move(error);
                                });
  if (found.waypoint != nullptr) found.connectors = nearest->arrayOfPathTypeTaken();
  return found;
}

Value nearestAnswer(const TernActiveVenue& venue, const NearestSearch& search) {
  const NearestFound found = findNearest(venue, search);
  return Value::map({{"waypoint", idOrNull(found.waypoint)},
                     {"element", elementOrNull(search.element, found.waypoint != nullptr)},
                     {"connectors", idsOf(found.connectors)},
                     {"error", errorOrNull(found.error)}});
}

std::optional<NearestOnMapSearch> nearestOnMapSearchOf(const TernActiveVenue& venue,
                                                       RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t toMap = fields.integer("toMap");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  const bool hasOthers = fields.has("amenities") || fields.has("pathTypes");
  TernNearestElement::Elements elements;
  if (fields.has("destinations") || !hasOthers) {
    appendElements(venue.destinations, fields.integers("destinations"), elements);
  }
  if (fields.has("amenities")) {
    appendElements(venue.amenities, fields.integers("amenities"), elements);
  }
  if (fields.has("pathTypes")) {
    appendElements(venue.pathTypes, fields.integers("pathTypes"), elements);
  }
  if (fields.error()) return std::nullopt;
  return NearestOnMapSearch{venue.globalASGrid()->getWPById(from), toMap, std::move(elements),
                            level};
}

Value nearestOnMapAnswer(const TernActiveVenue& venue, const NearestOnMapSearch& search) {
  const auto nearest = searcherOf(venue);
  const auto found =
      nearest->getNearestElementFrom(search.from, search.toMap, search.elements, search.level);
  if (!found) {
    return Value::map({{"waypoint", nullptr},
                       {"totalDistance", nullptr},
                       {"connectors", Value::list()},
                       {"error", errorOrNull(nearest->error())}});
  }
  return Value::map({{"waypoint", idOrNull(found->waypoint)},
                     {"totalDistance", shortestDouble(found->totalDistance)},
                     {"connectors", idsOf(nearest->arrayOfPathTypeTaken())},
                     {"error", nullptr}});
}

}  // namespace tern::command
