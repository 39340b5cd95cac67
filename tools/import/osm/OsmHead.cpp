#include "tools/import/osm/OsmHead.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <vector>

#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

std::string addressOf(const OsmTags& tags) {
  std::string address;
  const auto add = [&](std::string_view key, std::string_view before) {
    if (tags.has(key)) (address += address.empty() ? "" : before) += tags[key];
  };
  add("addr:street", "");
  add("addr:housenumber", " ");
  add("addr:postcode", ", ");
  add("addr:city", tags.has("addr:postcode") ? " " : ", ");
  return address;
}

// The one whose names are most often the plain names, else English.
std::string languageOfMost(const OsmSelection& found) {
  std::map<std::string, int> counts;
  const auto count = [&](const OsmTags& tags) {
    for (const Name& name : osmNames(tags)) {
      if (!name.language.empty() && tags.is("name", name.text)) ++counts[name.language];
    }
  };
  for (const OsmOutline& area : found.areas) count(*area.tags);
  for (const OsmOutline& building : found.buildings) count(*building.tags);
  for (const OsmPoint& place : found.places) count(place.node->tags);
  if (counts.empty()) return "en";
  return std::ranges::max_element(counts, {}, [](const auto& item) { return item.second; })->first;
}

std::size_t countIn(const Shapes& shapes, const std::vector<Point>& middles) {
  return static_cast<std::size_t>(std::ranges::count_if(middles, [&](Point at) {
    return std::ranges::any_of(shapes, [&](const Polygon& shape) {
      return boxOf(shape).contains(at) && holds(shape, at);
    });
  }));
}

const OsmOutline* mostFilled(const OsmSelection& found, const OsmNodes& nodes,
                             std::span<const OsmArea> areas) {
  std::vector<Point> middles;
  for (const OsmArea& area : areas) {
    if (!area.meaning.isGround) middles.push_back(middleOfShape(area.shapes.front()));
  }
  const OsmOutline* best = nullptr;
  std::size_t most = 0;
  for (const OsmOutline& outline : found.buildings) {
    if (!outline.tags->has("building")) continue;
    const std::size_t count = countIn(osmShapes(nodes, outline), middles);
    if (count <= most) continue;
    most = count;
    best = &outline;
  }
  return best;
}

// Of the ground that the building lies on.
Names namesOfGround(std::span<const OsmArea> areas) {
  for (const OsmArea& area : areas) {
    if (!area.meaning.isGround || isOsmOutline(*area.tags)) continue;
    if (Names names = osmNames(*area.tags); !names.empty()) return names;
  }
  return {};
}

}  // namespace

bool placeOsm(const OsmSelection& found, const OsmNodes& nodes, Draft& draft) {
  std::vector<double> longitudes;
  std::vector<double> latitudes;
  const auto add = [&](std::int64_t id) {
    constexpr double mostLatitude = 85;
    const OsmNode* const node = nodes.find(id);
    if (node == nullptr || std::abs(node->at.latitude) > mostLatitude) return;
    longitudes.push_back(node->at.longitude);
    latitudes.push_back(node->at.latitude);
  };
  for (const OsmOutline& area : found.areas) {
    for (const OsmRing& ring : area.outer) std::ranges::for_each(ring, add);
  }
  for (const OsmLine& walk : found.walks) {
    if (!walk.levels.empty()) std::ranges::for_each(walk.way->refs, add);
  }
  if (longitudes.empty()) return false;
  draft.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
  return true;
}

void nameOsmVenue(Draft& draft, const std::string& file, const OsmSelection& found,
                  const OsmNodes& nodes, std::span<const OsmArea> areas) {
  draft.id = file;
  draft.language = languageOfMost(found);
  DraftBuilding& building = draft.buildings.front();
  if (const OsmOutline* const outline = mostFilled(found, nodes, areas)) {
    building.names = osmNames(*outline->tags);
    building.address = addressOf(*outline->tags);
  }
  draft.names = building.names.empty() ? namesOfGround(areas) : building.names;
  if (draft.names.empty()) draft.names = {{"", file}};
}

}  // namespace tern::imports
