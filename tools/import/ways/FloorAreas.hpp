// Finds areas by where they lie on a floor.
//
// Ownership: borrows the areas. Threads: reads from several at once. Fails: by value.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <vector>

#include "tools/import/ways/BoxGrid.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

class FloorAreas {
 public:
  explicit FloorAreas(std::span<const SiteArea> areas) : areas_(areas) {
    std::map<std::size_t, std::vector<Box>> boxes;
    for (std::size_t i = 0; i < areas.size(); ++i) {
      floors_[areas[i].floor].areas.push_back(i);
      boxes[areas[i].floor].push_back(boxOfAll(areas[i].shapes));
    }
    for (auto& [floor, list] : boxes) floors_[floor].grid = BoxGrid(std::move(list));
  }

  // Those whose boxes share a point with this one.
  std::vector<std::size_t> about(std::size_t floor, const Box& box) const {
    std::vector<std::size_t> found;
    const auto on = floors_.find(floor);
    if (on == floors_.end()) return found;
    for (const std::uint32_t i : on->second.grid.about(box)) found.push_back(on->second.areas[i]);
    return found;
  }

  // The first that holds the point.
  std::optional<std::size_t> at(std::size_t floor, Point at) const {
    for (const std::size_t area : about(floor, {at.x, at.y, at.x, at.y})) {
      for (const Polygon& shape : areas_[area].shapes) {
        if (holds(shape, at)) return area;
      }
    }
    return std::nullopt;
  }

 private:
  struct OnFloor {
    std::vector<std::size_t> areas;
    BoxGrid grid{{}};
  };

  std::span<const SiteArea> areas_;
  std::map<std::size_t, OnFloor> floors_;
};

}  // namespace tern::imports
