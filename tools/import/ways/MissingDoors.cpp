#include "tools/import/ways/MissingDoors.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <string>

#include "tools/import/ways/Crossings.hpp"
#include "tools/import/ways/FloorAreas.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double widestGapMetres = 0.7;
constexpr double sampleMetres = 0.25;
constexpr double mostSamples = 200;
constexpr double leastStretchMetres = 0.5;
constexpr double doorMetres = 0.9;
// Nobody walks through more rooms than this to come to another.
constexpr int mostRoomsBehind = 12;
// Stairs are entered at an end where one lies along a way; theirs are so much longer than wide.
constexpr double leastLongish = 1.2;

struct Stretch {
  double metres = 0;
  Point from;
  Point to;
  std::size_t along = 0;
};

class RoomOpener {
 public:
  RoomOpener(Site& site, const std::vector<AreaUse>& uses, Oddities& oddities)
      : site_(site),
        uses_(uses),
        oddities_(oddities),
        isReached_(uses.size()),
        isShut_(uses.size()),
        byPlace_(site.areas) {
    for (const SiteArea& area : site.areas) boxes_.push_back(boxOfAll(area.shapes));
    for (const SiteDoor& door : site.doors) markBeside(door, isReached_);
    for (const SiteDoor& door : site.shutDoors) markBeside(door, isShut_);
  }

  // First those along corridors, at last those that only rooms with a name lie along; those behind
  // them one after the other.
  void open() {
    std::vector<std::size_t> closed;
    for (std::size_t i = 0; i < site_.areas.size(); ++i) {
      if (!isReached_[i] && !isShut_[i]) closed.push_back(i);
    }
    openCorridors(closed);
    for (const AreaUse use :
         {AreaUse::corridor, AreaUse::ground, AreaUse::passage, AreaUse::mover, AreaUse::ownRoom}) {
      int rounds = 0;
      while (rounds++ < mostRoomsBehind && openAll(closed, reached(use))) continue;
    }
  }

 private:
  bool holdsAt(std::size_t area, Point at) const {
    return boxes_[area].contains(at) &&
           std::ranges::any_of(site_.areas[area].shapes,
                               [&](const Polygon& shape) { return holds(shape, at); });
  }

  void markBeside(const SiteDoor& door, std::vector<bool>& marks) const {
    for (const Crossing& crossing : crossingsOf(door.line)) {
      for (const double side : {1.0, -1.0}) {
        for (const double metres : besideDoorMetres) {
          const std::vector<std::size_t> areas =
              holding(door.floor, crossing.at + crossing.normal * (side * metres));
          for (const std::size_t area : areas) {
            if (!isAmid(area, crossing)) marks[area] = true;
          }
          if (!areas.empty()) break;
        }
      }
    }
  }

  std::vector<std::size_t> holding(std::size_t floor, Point at) const {
    std::vector<std::size_t> areas = byPlace_.about(floor, {at.x, at.y, at.x, at.y});
    std::erase_if(areas, [&](std::size_t area) { return !holdsAt(area, at); });
    return areas;
  }

  // A line on its ground, too far from its walls for a door in one.
  bool isAmid(std::size_t area, const Crossing& crossing) const {
    const Point far = crossing.normal * *std::rbegin(besideDoorMetres);
    return holdsAt(area, crossing.at + far) && holdsAt(area, crossing.at - far);
  }

  // Corridors hang together by themselves; those that have no way out have one to outdoors.
  void openCorridors(std::vector<std::size_t>& closed) {
    const auto isOpen = [&](std::size_t area) { return uses_[area] <= AreaUse::ground; };
    std::vector<bool> isGround(uses_.size());
    std::vector<std::size_t> corridors;
    for (std::size_t i = 0; i < uses_.size(); ++i) {
      isGround[i] = uses_[i] == AreaUse::ground;
      const bool isClosed = !isReached_[i] && !isShut_[i];
      if (uses_[i] == AreaUse::corridor && isClosed) corridors.push_back(i);
    }
    openAll(corridors, isGround);
    for (std::size_t i = 0; i < uses_.size(); ++i) isReached_[i] = isReached_[i] || isOpen(i);
    std::erase_if(closed, isOpen);
  }

  // Those that have a door and are of the use, or of one before it.
  std::vector<bool> reached(AreaUse use) const {
    std::vector<bool> areas = isReached_;
    for (std::size_t i = 0; i < areas.size(); ++i) areas[i] = areas[i] && uses_[i] <= use;
    return areas;
  }

  // Of those that are still closed; whether there was one.
  bool openAll(std::vector<std::size_t>& closed, const std::vector<bool>& isWay) {
    const std::size_t before = closed.size();
    std::erase_if(closed, [&](std::size_t area) { return openTo(area, isWay); });
    return closed.size() < before;
  }

  bool openTo(std::size_t area, const std::vector<bool>& isWay) {
    const Box box = boxes_[area].grownBy(widestGapMetres);
    std::vector<std::size_t> near;
    for (const std::size_t other : byPlace_.about(site_.areas[area].floor, box)) {
      if (other != area && isWay[other]) near.push_back(other);
    }
    if (near.empty()) return false;
    Stretch longest;
    if (isClimbed(site_.areas[area].kind)) longest = longestAlong(area, near, true);
    if (longest.metres < leastStretchMetres) longest = longestAlong(area, near, false);
    if (longest.metres < leastStretchMetres) return false;
    addDoor(area, longest);
    return true;
  }

  static bool isClimbed(LinkKind kind) {
    return kind == LinkKind::stairs || kind == LinkKind::escalator || kind == LinkKind::ramp ||
           kind == LinkKind::movingWalkway;
  }

  // Whether the side goes across the area, which is longer than wide.
  static bool isEnd(const Polygon& shape, Point side) {
    const Point along = side * (1 / std::max(lengthOf(side), 1e-9));
    const Point first = shape.rings.front().front();
    double least[2] = {0, 0};
    double most[2] = {0, 0};
    for (const Point at : shape.rings.front()) {
      const double parts[2] = {dotOf(at - first, along), crossOf(at - first, along)};
      for (int axis = 0; axis < 2; ++axis) {
        least[axis] = std::min(least[axis], parts[axis]);
        most[axis] = std::max(most[axis], parts[axis]);
      }
    }
    return most[1] - least[1] >= leastLongish * (most[0] - least[0]);
  }

  Stretch longestAlong(std::size_t area, const std::vector<std::size_t>& near,
                       bool onlyEnds) const {
    Stretch longest;
    for (const Polygon& shape : site_.areas[area].shapes) {
      lengthenAlong(shape, near, onlyEnds, longest);
    }
    return longest;
  }

  void lengthenAlong(const Polygon& shape, const std::vector<std::size_t>& near, bool onlyEnds,
                     Stretch& longest) const {
    forEachSide(shape, [&](Point a, Point b) {
      const double length = apart(a, b);
      if (length <= longest.metres || (onlyEnds && !isEnd(shape, b - a))) return;
      const double count = std::clamp(std::ceil(length / sampleMetres), 2.0, mostSamples);
      const Point normal = Point{b.y - a.y, a.x - b.x} * (1 / length);
      Stretch run;
      std::optional<std::size_t> before;
      for (double sample = 0; sample < count; ++sample) {
        const auto beside = besideOf(between(a, b, (sample + 0.5) / count), normal, near);
        if (beside && beside != before) run = {0, between(a, b, sample / count), {}, *beside};
        before = beside;
        if (!beside) continue;
        run.to = between(a, b, (sample + 1) / count);
        run.metres = apart(run.from, run.to);
        if (run.metres > longest.metres + 1e-6) longest = run;
      }
    });
  }

  std::optional<std::size_t> besideOf(Point at, Point normal,
                                      const std::vector<std::size_t>& near) const {
    for (const double metres : besideDoorMetres) {
      for (const double side : {1.0, -1.0}) {
        for (const std::size_t area : near) {
          if (holdsAt(area, at + normal * (side * metres))) return area;
        }
      }
    }
    return std::nullopt;
  }

  void addDoor(std::size_t area, const Stretch& stretch) {
    const Point middle = between(stretch.from, stretch.to, 0.5);
    const double half = std::min(doorMetres, stretch.metres) / 2;
    const Point step = (stretch.to - stretch.from) * (half / stretch.metres);
    const SiteArea& room = site_.areas[area];
    site_.doors.push_back({room.id + "/door", room.floor, {middle - step, middle + step}});
    isReached_[area] = true;
    oddities_.remark(
        recordOf(room), "noDoor",
        "No door leads to it; it is entered from " + recordOf(site_.areas[stretch.along]) + ".");
  }

  Site& site_;
  const std::vector<AreaUse>& uses_;
  Oddities& oddities_;
  // By area: open, or with a door.
  std::vector<bool> isReached_;
  // With a door that is closed.
  std::vector<bool> isShut_;
  std::vector<Box> boxes_;
  FloorAreas byPlace_;
};

}  // namespace

void addMissingDoors(Site& site, const std::vector<AreaUse>& uses, Oddities& oddities) {
  RoomOpener(site, uses, oddities).open();
}

}  // namespace tern::imports
