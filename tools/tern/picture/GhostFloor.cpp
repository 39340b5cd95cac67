#include "tools/tern/picture/GhostFloor.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "tools/tern/picture/DrawingMarks.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::picture {

namespace {

// Whether a map unit of the one is where it is on the other, as far as the maps say.
bool liesAs(const TernMap& other, const TernMap& map) {
  const auto isSame = [](const Value& a, const Value& b) {
    return !(a.number() > 0) || !(b.number() > 0) || a.number() == b.number();
  };
  return isSame(other.mmPerPixel, map.mmPerPixel) && isSame(other.width, map.width) &&
         isSame(other.height, map.height);
}

bool showsSomething(const TernMap& map, const Box& part) {
  if (!map.svg.isText()) return false;
  // Whatever the drawing's frame is: only what lies in the part counts.
  return !marksOf(map.svg.text(), part).isBlankIn(part);
}

}  // namespace

const TernMap* ghostOf(const TernVenueData& venue, std::int64_t mapId, const Box& part) {
  const auto [own, building] = words::floorOf(venue, mapId);
  if (own == nullptr) return nullptr;
  std::vector<std::pair<double, const TernMap*>> others;
  for (const TernFloor& floor : building->floors->each()) {
    const TernMap* map = floor.map.get();
    if (map == nullptr || map->id.integer() == mapId || !liesAs(*map, *own->map.get())) continue;
    const double above = floor.level.number() - own->level.number();
    // A little further off when it lies above.
    others.emplace_back(std::abs(above) + (above > 0 ? 0.5 : 0), map);
  }
  std::ranges::stable_sort(others, {}, &std::pair<double, const TernMap*>::first);
  for (const auto& [distance, map] : others) {
    if (showsSomething(*map, part)) return map;
  }
  return nullptr;
}

}  // namespace tern::picture
