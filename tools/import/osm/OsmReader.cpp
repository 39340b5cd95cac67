#include "tools/import/osm/OsmReader.hpp"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "tools/import/draft/EmptyFloors.hpp"
#include "tools/import/osm/DrawnWays.hpp"
#include "tools/import/osm/FloorShapes.hpp"
#include "tools/import/osm/OsmDoors.hpp"
#include "tools/import/osm/OsmHead.hpp"
#include "tools/import/osm/OsmPlans.hpp"
#include "tools/import/osm/OsmSource.hpp"
#include "tools/import/osm/PlannedPlaces.hpp"
#include "tools/import/osm/SameNodes.hpp"
#include "tools/import/ways/MissingDoors.hpp"

namespace tern::imports {

namespace {

void markEntrances(const std::set<std::string>& entrances, Draft& draft) {
  for (DraftNode& node : draft.nodes) {
    node.isEntrance = node.isEntrance || entrances.contains(node.id);
  }
}

void tellOfOthers(std::size_t count, Oddities& oddities) {
  if (count == 0) return;
  oddities.tell("others", "notIndoors",
                count == 1 ? "1 record with tags says nothing of indoors."
                           : std::to_string(count) + " records with tags say nothing of indoors.");
}

// Some answers of the Overpass API have ways without the nodes that they are drawn through.
std::string whyNothingIsPlaced(const OsmData& data) {
  const auto isDrawn = [](const OsmWay& way) { return !way.refs.empty(); };
  if (data.ways.empty() || std::ranges::any_of(data.ways, isDrawn)) {
    return "no room, corridor or way of it lies on a level";
  }
  return "its ways come without their nodes; ask the Overpass API for \"out geom;\"";
}

std::string whyNothingIsWalked(const Oddities& oddities) {
  const auto isBarred = [](const Oddity& oddity) { return oddity.kind == "noAccess"; };
  return std::ranges::any_of(oddities.told(), isBarred)
             ? "nothing of it can be walked: access=no or access=private closes it to the public"
             : "nothing of it can be walked";
}

// Into the draft, whose floors are known: first what is drawn, then the ways that are made of it.
void readFloors(const OsmFrame& frame, const std::string& name) {
  Draft& draft = frame.draft;
  const OsmPlans plans = readOsmPlans(frame);
  nameOsmVenue(draft, name, frame.found, frame.nodes, plans.areas);
  const OsmOutlines outlines(plans.areas,
                             [&](std::int64_t node) { return frame.nodes.placeOf(node); });
  Site site;
  site.areas = plans.carved.areas;
  const FloorAreas byPlace(site.areas);
  const DrawnWays drawn = readDrawnWays(frame, plans, outlines, byPlace, site);
  OsmPlaces places(draft, site);
  const OsmDoors doors = readOsmDoors(frame, plans, outlines, drawn.openings, site, places);
  addMissingDoors(site, plans.carved.uses, draft.oddities);
  planOsmPlaces(frame, plans, byPlace, places);
  const MadeWays made = makeWays(site, draft);
  const auto same = joinDrawnWays(drawn, made, draft);
  places.add(made);
  markEntrances(doors.entrances, draft);
  mergeSameNodes(draft, same);
  drawOsmFloors(frame, plans.areas);
  dropEmptyFloors(draft);
  tellOfOthers(frame.found.others + plans.others + drawn.others + doors.others, draft.oddities);
}

}  // namespace

ReadDraft readOsm(const SourceFiles& source) {
  Draft draft;
  const ReadOsmSource read = readOsmSource(source, draft.oddities);
  if (read.error) return {{}, read.error};
  draft.stamp = read.stamp;
  const OsmSelection found = selectOsm(read.data, draft.oddities);
  OsmNodes nodes(read.data, draft);
  if (!placeOsm(found, nodes, draft)) {
    return {{}, whyNothingIsPlaced(read.data)};
  }
  if (isTooMuch(found)) {
    return {{},
            "more than " + std::to_string(mostOsmThings) + " things of it, or " +
                std::to_string(mostOsmCorners) + " corners, lie on levels"};
  }
  draft.buildings.push_back({source.name(), {}, {}});
  const OsmFloors floors = addOsmFloors(found, draft);
  readFloors({found, nodes, floors, draft}, source.name());
  if (draft.nodes.empty()) return {{}, whyNothingIsWalked(draft.oddities)};
  return {std::move(draft), std::nullopt};
}

}  // namespace tern::imports
