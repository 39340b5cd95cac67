#include "tools/import/osm/OsmCarving.hpp"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// Square metres; less is a sliver that drawing left.
constexpr double leastArea = 0.3;
constexpr double leastOverlapArea = 0.05;

double areaOfAll(const Shapes& shapes) {
  double sum = 0;
  for (const Polygon& shape : shapes) sum += areaOf(shape);
  return sum;
}

struct Taken {
  Shapes shapes;
  Box box;
};

class Carver {
 public:
  Carver(std::span<const OsmArea> drawn, const OsmObstacles& obstacles, Oddities& oddities)
      : drawn_(drawn), obstacles_(obstacles), oddities_(oddities) {
    carved_.of.resize(drawn.size());
  }

  CarvedAreas carve() {
    std::set<std::size_t> floors;
    for (const OsmArea& area : drawn_) floors.insert(area.floor);
    for (const std::size_t floor : floors) carveFloor(floor);
    return std::move(carved_);
  }

 private:
  void carveFloor(std::size_t floor) {
    taken_.clear();
    const auto obstacles = obstacles_.on.find(floor);
    if (obstacles != obstacles_.on.end()) take(repaired(obstacles->second));
    for (const std::size_t area : walledOn(floor)) {
      Shapes left = without(repaired(drawn_[area].shapes));
      if (areaOfAll(left) < leastArea) {
        oddities_.tell(drawn_[area].record, "covered", "Others are drawn over all of it.");
        continue;
      }
      if (drawn_[area].meaning.isWalked) addRoom(area, left);
      take(std::move(left));
    }
    addOpen(floor, false);
    if (!obstacles_.buildings.empty()) take(repaired(obstacles_.buildings));
    addOpen(floor, true);
  }

  // Stairs and lifts first, then from the smallest to the largest: the first keeps its place.
  std::vector<std::size_t> walledOn(std::size_t floor) const {
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < drawn_.size(); ++i) {
      const OsmArea& area = drawn_[i];
      const bool isIn = area.meaning.isWalled || !area.meaning.isWalked;
      if (area.floor != floor || !isIn) continue;
      const bool isMover = area.meaning.drawn == AreaKind::mover;
      order.emplace_back(isMover ? 0 : areaOfAll(area.shapes), i);
    }
    std::ranges::sort(order);
    std::vector<std::size_t> areas;
    for (const auto& [size, area] : order) areas.push_back(area);
    return areas;
  }

  void take(Shapes shapes) {
    if (shapes.empty()) return;
    const Box box = boxOfAll(shapes);
    taken_.push_back({std::move(shapes), box});
  }

  Shapes without(Shapes shapes) const {
    for (const Taken& taken : taken_) {
      if (shapes.empty()) break;
      if (!taken.box.meets(boxOfAll(shapes))) continue;
      if (areaOfAll(common(shapes, taken.shapes)) < leastOverlapArea) continue;
      shapes = cut(shapes, taken.shapes);
    }
    return shapes;
  }

  void addRoom(std::size_t area, const Shapes& pieces) {
    const OsmArea& drawn = drawn_[area];
    for (const Polygon& piece : pieces) {
      if (areaOf(piece) < leastArea) continue;
      carved_.of[area].push_back(carved_.areas.size());
      add(drawn, drawn.floor, drawn.meaning.link, piece);
      carved_.uses.push_back(useOf(drawn));
    }
  }

  // Nobody goes through somebody's shop to come to another one.
  static AreaUse useOf(const OsmArea& room) {
    if (room.meaning.drawn == AreaKind::mover) return AreaUse::mover;
    const bool isPassage = room.meaning.drawn == AreaKind::way ||
                           (room.meaning.drawn == AreaKind::room && osmNames(*room.tags).empty());
    return isPassage ? AreaUse::passage : AreaUse::ownRoom;
  }

  // Those that touch are one, whatever they are called.
  void addOpen(std::size_t floor, bool isGround) {
    Shapes all;
    for (const OsmArea& area : drawn_) {
      if (area.floor != floor || !isOpen(area, isGround)) continue;
      all = all.empty() ? repaired(area.shapes) : joined(all, repaired(area.shapes));
    }
    if (all.empty()) return;
    all = without(std::move(all));
    for (const Polygon& piece : all) {
      if (areaOf(piece) < leastArea) continue;
      const OsmArea* const largest = largestIn(piece, floor, isGround);
      if (largest == nullptr) continue;
      add(*largest, floor, LinkKind::walkway, piece);
      carved_.uses.push_back(isGround ? AreaUse::ground : AreaUse::corridor);
    }
    take(std::move(all));
  }

  static bool isOpen(const OsmArea& area, bool isGround) {
    return !area.meaning.isWalled && area.meaning.isWalked && area.meaning.isGround == isGround;
  }

  // The open area that most of the piece is.
  const OsmArea* largestIn(const Polygon& piece, std::size_t floor, bool isGround) const {
    const OsmArea* largest = nullptr;
    double most = 0;
    const Box box = boxOf(piece);
    for (const OsmArea& area : drawn_) {
      if (area.floor != floor || !isOpen(area, isGround)) continue;
      if (!box.meets(boxOfAll(area.shapes))) continue;
      const double size = areaOfAll(common({piece}, repaired(area.shapes)));
      if (size <= most) continue;
      most = size;
      largest = &area;
    }
    return largest;
  }

  void add(const OsmArea& drawn, std::size_t floor, LinkKind kind, const Polygon& piece) {
    const std::string& id = drawn.id;
    const int number = ++pieces_[id];
    const std::string own = number == 1 ? id : id + "." + std::to_string(number);
    carved_.areas.push_back({own, floor, kind, false, {piece}, drawn.record});
  }

  std::span<const OsmArea> drawn_;
  const OsmObstacles& obstacles_;
  Oddities& oddities_;
  CarvedAreas carved_;
  // What of the floor is taken, and what lies round it.
  std::vector<Taken> taken_;
  // By id.
  std::map<std::string, int> pieces_;
};

}  // namespace

CarvedAreas carved(std::span<const OsmArea> drawn, const OsmObstacles& obstacles,
                   Oddities& oddities) {
  return Carver(drawn, obstacles, oddities).carve();
}

}  // namespace tern::imports
