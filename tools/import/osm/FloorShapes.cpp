#include "tools/import/osm/FloorShapes.hpp"

#include <utility>
#include <vector>

#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

namespace {

// By floor.
std::vector<Shapes> shapesTogether(const OsmFrame& frame, std::span<const OsmArea> areas) {
  std::vector<Shapes> together(frame.draft.floors.size());
  const auto add = [&](std::size_t floor, const Shapes& shapes) {
    together[floor] = together[floor].empty() ? shapes : joined(together[floor], shapes);
  };
  for (const OsmArea& area : areas) add(area.floor, repaired(area.shapes));
  const std::vector<double> ground{0};
  for (const OsmOutline& building : frame.found.buildings) {
    const Shapes shapes = repaired(osmShapes(frame.nodes, building));
    for (const double level : building.levels.empty() ? ground : building.levels) {
      const auto floor = frame.floors.find(level);
      if (floor == frame.floors.end() || shapes.empty()) continue;
      if (!common(together[floor->second], shapes).empty()) add(floor->second, shapes);
    }
  }
  return together;
}

}  // namespace

void drawOsmFloors(const OsmFrame& frame, std::span<const OsmArea> areas) {
  std::vector<DraftFloor>& floors = frame.draft.floors;
  for (const OsmOutline& level : frame.found.levels) {
    const Shapes shapes = osmShapes(frame.nodes, level);
    for (const std::size_t floor : frame.floorsOf(level.record, level.levels)) {
      floors[floor].shapes.insert(floors[floor].shapes.end(), shapes.begin(), shapes.end());
    }
  }
  std::vector<Shapes> together = shapesTogether(frame, areas);
  for (std::size_t i = 0; i < together.size(); ++i) {
    if (floors[i].shapes.empty()) floors[i].shapes = std::move(together[i]);
  }
}

}  // namespace tern::imports
