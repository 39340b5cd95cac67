#include "tools/import/imdf/ImdfCutting.hpp"

#include <cstdint>
#include <utility>
#include <vector>

#include "tools/import/ways/BoxGrid.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

void cutObstacles(Site& site, std::size_t floor, const Shapes& obstacles) {
  std::vector<Box> boxes;
  for (const Polygon& obstacle : obstacles) boxes.push_back(boxOf(obstacle));
  const BoxGrid grid(std::move(boxes));
  for (SiteArea& area : site.areas) {
    if (area.floor != floor) continue;
    Shapes here;
    for (const std::uint32_t i : grid.about(boxOfAll(area.shapes))) {
      here.push_back(obstacles[i]);
    }
    if (here.empty()) continue;
    Shapes left = cut(repaired(area.shapes), repaired(here));
    if (!left.empty()) area.shapes = std::move(left);
  }
}

void cutSmallerAreas(Site& site) {
  std::vector<Box> boxes;
  std::vector<double> sizes;
  for (const SiteArea& area : site.areas) {
    boxes.push_back(boxOfAll(area.shapes));
    sizes.push_back(0);
    for (const Polygon& shape : area.shapes) sizes.back() += areaOf(shape);
  }
  const BoxGrid grid(boxes);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    SiteArea& area = site.areas[i];
    Shapes smaller;
    for (const std::uint32_t other : grid.about(boxes[i])) {
      const SiteArea& over = site.areas[other];
      if (over.floor != area.floor || sizes[other] >= sizes[i]) continue;
      smaller.insert(smaller.end(), over.shapes.begin(), over.shapes.end());
    }
    if (smaller.empty()) continue;
    const Shapes whole = repaired(area.shapes);
    const Shapes others = repaired(smaller);
    if (common(whole, others).empty()) continue;
    Shapes left = cut(whole, others);
    if (!left.empty()) area.shapes = std::move(left);
  }
}

}  // namespace tern::imports
