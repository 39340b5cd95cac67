// The nearest destination, amenity or path type: from a point over the floors in straight lines,
// from a waypoint on a given map, and from a waypoint by walk.
#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"

namespace tern::inline v5::detail {

namespace {

template <class Collection>
auto recordOf(const Nested<Collection>& collection, std::int64_t id) {
  return collection ? collection->getById(id) : nullptr;
}

// Of several kinds the destination, then the amenity.
TernElement elementOf(const TernActiveVenue& venue, RequestFields& fields) {
  if (!fields.has("destination") && fields.has("amenity")) {
    return recordOf(venue.amenities, fields.integer("amenity"));
  }
  if (!fields.has("destination") && fields.has("pathType")) {
    return recordOf(venue.pathTypes, fields.integer("pathType"));
  }
  return recordOf(venue.destinations, fields.integer("destination"));
}

// Those of the ids that the collection knows.
template <class Collection>
void appendElements(const Nested<Collection>& collection, const std::vector<std::int64_t>& ids,
                    TernNearestElement::Elements& elements) {
  for (const std::int64_t id : ids) {
    if (auto record = recordOf(collection, id)) elements.emplace_back(std::move(record));
  }
}

// Destinations come first, then amenities, then path types.
TernNearestElement::Elements elementsOf(const TernActiveVenue& venue, RequestFields& fields) {
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
  return elements;
}

std::string_view nameOf(TernElement::Kind kind) {
  if (kind == TernElement::Kind::destination) return "destination";
  return kind == TernElement::Kind::amenity ? "amenity" : "pathType";
}

Value elementPart(const TernElement& element) {
  return Value::map({{"kind", nameOf(element.kind)}, {"id", element.record->id.integer()}});
}

Value waypointsPart(const TernNearestElement::Waypoints& waypoints) {
  Value ids = Value::list();
  for (const auto& waypoint : waypoints) ids.append(waypointPart(waypoint));
  return ids;
}

Value errorPart(const std::optional<TernError>& error) {
  return error ? errorAnswer(*error)["error"] : Value(nullptr);
}

// What is wanted by one name, or by several.
TernNearestElement::Elements wantedElements(const TernActiveVenue& venue, RequestFields& fields) {
  const bool hasLists =
      fields.has("destinations") || fields.has("amenities") || fields.has("pathTypes");
  const bool hasOne = fields.has("destination") || fields.has("amenity") || fields.has("pathType");
  if (hasLists && !hasOne) return elementsOf(venue, fields);
  return {elementOf(venue, fields)};
}

bool areKnown(const TernNearestElement::Elements& elements) {
  const auto isKnown = [](const TernElement& each) {
    return each.kind != TernElement::Kind::other;
  };
  return !elements.empty() && std::ranges::all_of(elements, isKnown);
}

// What the library says of elements that it does not know.
Value objectionPart(const TernNearestElement::Elements& elements) {
  TernNearestElement nearest;
  nearest.getNearestElementFrom(nullptr, 0, elements, 0);
  return errorPart(nearest.error());
}

const std::vector<std::shared_ptr<TernWaypoint>>& doorsOf(const TernElement& element) {
  const TernBaseModel& record = *element.record;
  if (element.kind == TernElement::Kind::destination) {
    return static_cast<const TernDestination&>(record).waypoints;
  }
  if (element.kind == TernElement::Kind::amenity) {
    return static_cast<const TernAmenity&>(record).waypoints;
  }
  return static_cast<const TernPathType&>(record).waypoints;
}

// Where an element is reached.
struct Door {
  const TernElement* element;
  std::shared_ptr<TernWaypoint> waypoint;
};

std::vector<Door> doorsOf(const TernActiveVenue& venue,
                          const TernNearestElement::Elements& elements) {
  std::vector<Door> doors;
  const MutexLock lock(venue.recordsMutex());
  for (const TernElement& element : elements) {
    for (const auto& waypoint : doorsOf(element)) doors.push_back({&element, waypoint});
  }
  return doors;
}

// The cheapest way to a door, which has no segment where one stands there already.
struct WayToDoor {
  const Door* door = nullptr;
  TernRoute route = {};
};

WayToDoor cheapestWay(const TernActiveVenue& venue, std::int64_t from,
                      const std::vector<Door>& doors, std::int64_t level) {
  const auto doorAt = [&](std::int64_t id) -> const Door* {
    const auto found = std::ranges::find_if(
        doors, [id](const Door& each) { return each.waypoint->id.integer() == id; });
    return found != doors.end() ? &*found : nullptr;
  };
  if (const Door* here = doorAt(from)) return {here};
  TernASSearch search;
  search.grid = venue.globalASGrid();
  search.maps = venue.maps;
  TernActiveVenue::Waypoints goals;
  for (const Door& door : doors) goals.push_back(door.waypoint);
  auto route = search.routeToOneOf(from, goals, level);
  if (!route) return {};
  const Door* reached = doorAt(route->back().points.back().nodeId());
  return {reached, *std::move(route)};
}

// One of this request's own, which shows no other's connectors and error.
std::shared_ptr<TernNearestElement> searcherOf(const TernActiveVenue& venue) {
  const auto shared = venue.nearestElement();
  auto own = shared->another();
  own->delegate = shared->delegate;
  return own;
}

}  // namespace

Value answerNearest(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t map = fields.integer("map");
  const TernCoordinate at = fields.point("at");
  const TernElement element = elementOf(venue, fields);
  if (fields.error()) return {};
  const auto nearest = searcherOf(venue);
  Value answer;
  nearest->searchNearestElement(
      element, at, venue.maps->getById(map),
      [&](const auto& waypoint, const auto&, const auto& error) {
        const bool isFound = waypoint != nullptr;
        answer = Value::map({{"waypoint", waypointPart(waypoint)},
                             {"element", isFound ? elementPart(element) : Value(nullptr)},
                             {"connectors", isFound ? waypointsPart(nearest->arrayOfPathTypeTaken())
                                                    : Value::list()},
                             {"error", errorPart(error)}});
      });
  return answer;
}

Value answerNearestOnMap(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t toMap = fields.integer("toMap");
  const std::int64_t level = fields.level();
  const TernNearestElement::Elements elements = elementsOf(venue, fields);
  if (fields.error()) return {};
  const auto nearest = searcherOf(venue);
  const auto start = venue.globalASGrid()->getWPById(from);
  const auto found = nearest->getNearestElementFrom(start, toMap, elements, level);
  if (!found) {
    return Value::map({{"waypoint", nullptr},
                       {"totalDistance", nullptr},
                       {"connectors", Value::list()},
                       {"error", errorPart(nearest->error())}});
  }
  return Value::map({{"waypoint", waypointPart(found->waypoint)},
                     {"totalDistance", shortestDouble(found->totalDistance)},
                     {"connectors", waypointsPart(nearest->arrayOfPathTypeTaken())},
                     {"error", nullptr}});
}

Value answerNearestByWalk(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t level = fields.level();
  const TernNearestElement::Elements elements = wantedElements(venue, fields);
  if (fields.error()) return {};
  Value answer =
      Value::map({{"waypoint", nullptr}, {"element", nullptr}, {"route", Value::list()}});
  if (!areKnown(elements)) {
    answer.set("error", objectionPart(elements));
    return answer;
  }
  if (venue.globalASGrid()->getWPById(from) == nullptr) return answer;
  const std::vector<Door> doors = doorsOf(venue, elements);
  const WayToDoor way = cheapestWay(venue, from, doors, level);
  if (way.door == nullptr) return answer;
  answer.set("waypoint", waypointPart(way.door->waypoint));
  answer.set("element", elementPart(*way.door->element));
  answer.set("route", routePart(way.route));
  return answer;
}

}  // namespace tern::detail
