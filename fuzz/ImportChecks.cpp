#include "fuzz/ImportChecks.hpp"

#include <algorithm>
#include <cmath>
#include <memory>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/Target.hpp"
#include "fuzz/VenueChecks.hpp"
#include "tools/import/gtfs/GtfsReader.hpp"
#include "tools/import/imdf/ImdfReader.hpp"
#include "tools/import/network/NetworkReader.hpp"
#include "tools/import/osm/OsmReader.hpp"
#include "tools/import/write/Documents.hpp"
#include "tools/import/write/VenuePlan.hpp"

namespace tern::fuzz {

namespace {

using imports::Draft;
using imports::DraftLink;
using imports::DraftNode;
using imports::DraftPlace;
using imports::Point;
using imports::VenuePlan;

constexpr std::size_t fewPlaces = 3;

bool isFinite(Point at) { return std::isfinite(at.x) && std::isfinite(at.y); }

void checkDraft(const Draft& draft) {
  require(!draft.nodes.empty() && !draft.floors.empty() && !draft.buildings.empty(),
          "a draft has nodes on floors of a building");
  for (const auto& floor : draft.floors) {
    require(floor.building < draft.buildings.size(), "a floor is in a building");
    require(std::isfinite(floor.ordinal), "and has a place among the floors");
  }
  for (const DraftNode& node : draft.nodes) {
    require(node.floor < draft.floors.size(), "a node is on a floor");
    require(isFinite(node.at), "and lies somewhere");
  }
  for (const DraftLink& link : draft.links) {
    require(link.from < draft.nodes.size() && link.to < draft.nodes.size(), "a link joins nodes");
    require(std::ranges::all_of(link.bends, isFinite), "and leads somewhere");
  }
  for (const DraftPlace& place : draft.places) {
    require(place.category < draft.categories.size(), "a place has a category");
    require(!place.nodes.empty(), "and is reached from somewhere");
    for (const std::size_t node : place.nodes) require(node < draft.nodes.size(), "from a node");
  }
}

Value decoded(const std::string& text) {
  const JsonResult document = decodeJson(text);
  require(!document.error, "a document that is written is JSON");
  return document.value;
}

Value documentsOf(const VenuePlan& plan) {
  Value buildings = Value::map();
  for (std::size_t i = 0; i < plan.buildingIds.size(); ++i) {
    buildings.set(std::to_string(plan.buildingIds[i]), decoded(buildingDocument(plan, i)));
  }
  static_cast<void>(decoded(imports::customerDocument(plan.name, {&plan, 1})));
  static_cast<void>(decoded(imports::destinationsDocument(plan)));
  return Value::map({{"venue", decoded(venueDocument(plan))}, {"buildings", buildings}});
}

std::size_t countOfPlaces(const VenuePlan& plan) {
  return plan.destinations.size() + plan.amenities.size();
}

const imports::PlannedPlace& placeAt(const VenuePlan& plan, std::size_t index) {
  const std::size_t destinations = plan.destinations.size();
  return index < destinations ? plan.destinations[index] : plan.amenities[index - destinations];
}

// From the first waypoint to a way into each of a few places, step-free and any way.
void checkRoutes(const VenuePlan& plan, TernActiveVenue& venue) {
  const auto grid = venue.globalASGrid();
  require(grid->nodeCount() == plan.waypoints.size(), "every waypoint of the plan is in the venue");
  RouteChecks checks(*grid);
  const auto all = grid->waypoints();
  const auto waypointOf = [&](std::size_t index) {
    const auto found = std::ranges::find(all, plan.waypoints[index].id,
                                         [](const auto& w) { return w->id.integer(); });
    require(found != all.end(), "a place is reached from a waypoint of the venue");
    return *found;
  };
  const auto from = waypointOf(0);
  for (std::size_t i = 0; i < std::min(countOfPlaces(plan), fewPlaces); ++i) {
    const auto to = waypointOf(placeAt(plan, i).waypoints.front());
    for (const unsigned level : {0U, 100U}) {
      checks.check(venue.wayfind(from, to, level), narrowed(from->id.integer()),
                   narrowed(to->id.integer()), level);
    }
  }
}

}  // namespace

void checkDrafts(std::span<const Draft> drafts, const std::optional<std::string>& error) {
  require(error.has_value() == drafts.empty(), "there is a draft, or an error");
  require(!error || !error->empty(), "an error says what is wrong");
  imports::IdTable ids;
  for (const Draft& draft : drafts) {
    checkDraft(draft);
    const VenuePlan plan = planVenue(draft, {.customer = "all"}, ids);
    const auto venue = venueOf(documentsOf(plan));
    venue->loadGridData();
    checkRoutes(plan, *venue);
  }
}

namespace {

void checkOne(const imports::ReadDraft& read) {
  if (read.error) {
    checkDrafts({}, read.error);
  } else {
    checkDrafts({&read.draft, 1}, read.error);
  }
}

}  // namespace

void checkNetwork(const imports::SourceFiles& source) { checkOne(imports::readNetwork(source)); }

void checkImdf(const imports::SourceFiles& source) { checkOne(imports::readImdf(source)); }

void checkOsm(const imports::SourceFiles& source) { checkOne(imports::readOsm(source)); }

void checkFeed(const imports::SourceFiles& source) {
  const imports::ReadStations read = imports::readGtfs(source, {.all = true});
  checkDrafts(read.drafts, read.error);
}

}  // namespace tern::fuzz
