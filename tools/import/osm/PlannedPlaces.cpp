#include "tools/import/osm/PlannedPlaces.hpp"

#include <string>
#include <utility>
#include <vector>

#include "tools/import/osm/OsmGeometry.hpp"

namespace tern::imports {

namespace {

void planNode(const OsmPoint& place, const OsmFrame& frame, const std::vector<AreaUse>& uses,
              const FloorAreas& byPlace, const FloorAreas& barred, OsmPlaces& places) {
  const std::string record = osmId(OsmKind::node, place.node->id);
  const Point at = *frame.nodes.placeOf(place.node->id);
  if (!isNearSite(at)) {
    frame.tell(record, "far", "It lies more than 10 km from the others.");
    return;
  }
  for (const std::size_t floor : frame.floorsOf(record, place.levels)) {
    const auto area = byPlace.at(floor, at);
    if (!area && barred.at(floor, at)) {
      frame.tell(record, "noAccess", "It lies in what is closed to the public.");
      continue;
    }
    std::vector<std::size_t> rooms;
    if (area && uses[*area] > AreaUse::ground) rooms.push_back(*area);
    const std::string id = frame.idOn(record, floor, place.levels.size() > 1);
    places.plan({record, id, &place.node->tags, floor, at}, std::move(rooms));
  }
}

}  // namespace

void planOsmPlaces(const OsmFrame& frame, const OsmPlans& plans, const FloorAreas& byPlace,
                   OsmPlaces& places) {
  for (std::size_t i = 0; i < plans.areas.size(); ++i) {
    const OsmArea& area = plans.areas[i];
    const bool isNone =
        area.meaning.drawn == AreaKind::mover || area.meaning.isGround || !area.meaning.isWalked;
    if (isNone || !OsmPlaces::isPlace(*area.tags)) continue;
    places.plan({area.record, area.id, area.tags, area.floor, middleOfShape(area.shapes.front())},
                plans.carved.of[i]);
  }
  const FloorAreas barred(plans.barred);
  for (const OsmPoint& place : frame.found.places) {
    planNode(place, frame, plans.carved.uses, byPlace, barred, places);
  }
}

}  // namespace tern::imports
