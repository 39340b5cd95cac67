#include "tools/import/ways/SiteWays.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "tools/import/ways/AreaWays.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

namespace {

// How far beside a door its areas are looked for; walls may be drawn as gaps.
constexpr double besideDoorMetres[] = {0.05, 0.15, 0.3, 0.6};
// A stand farther than this from any area is in none.
constexpr double mostAsideMetres = 3;
// One crosses a door about every so many metres.
constexpr double crossingMetres = 1.5;
constexpr double mostCrossings = 9;
constexpr double sameNodeMetres = 0.01;
// What of the smaller of two areas has to lie above the other.
constexpr double leastOverlap = 0.2;

// One connected piece of an area, and what leads to and from it.
struct Piece {
  std::size_t area;
  Polygon shape;
  Box box;
  std::vector<Point> doors;
  // Of each door the node in its middle.
  std::vector<std::size_t> doorNodes;
  std::vector<Point> places;
  // Of each place the stand, or none for where a mover is entered.
  std::vector<std::optional<std::size_t>> stands;
};

struct Crossing {
  Point at;
  Point normal;
};

Box boxOf(const Polygon& shape) {
  const Point first = shape.rings.front().front();
  Box box{first.x, first.y, first.x, first.y};
  for (const Point at : shape.rings.front()) box = box.with({at.x, at.y, at.x, at.y});
  return box;
}

bool isMover(LinkKind kind) { return kind != LinkKind::walkway; }

// Lifts are lifts, whoever may use them.
LinkKind familyOf(LinkKind kind) { return kind == LinkKind::stepFreeLift ? LinkKind::lift : kind; }

// Of stairs, escalators, lifts and ramps, which lead to other levels.
bool isClimbed(LinkKind kind) {
  return isMover(kind) && kind != LinkKind::movingWalkway && kind != LinkKind::gate;
}

std::vector<Crossing> crossingsOf(const Line& line) {
  double metres = 0;
  for (std::size_t i = 1; i < line.size(); ++i) metres += apart(line[i - 1], line[i]);
  const double count = std::clamp(std::floor(metres / crossingMetres), 1.0, mostCrossings);
  std::vector<Crossing> crossings;
  double before = 0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const Point way = line[i] - line[i - 1];
    const double length = lengthOf(way);
    while (length > 0 && static_cast<double>(crossings.size()) < count) {
      const double at = metres * (static_cast<double>(crossings.size()) + 0.5) / count - before;
      if (at > length) break;
      crossings.push_back(
          {between(line[i - 1], line[i], at / length), Point{-way.y, way.x} * (1 / length)});
    }
    before += length;
  }
  return crossings;
}

class WayMaker {
 public:
  WayMaker(const Site& site, Draft& draft) : site_(site), draft_(draft) {
    made_.insideDoors.resize(site.areas.size());
    made_.ofStand.resize(site.stands.size());
    entered_.resize(site.areas.size());
  }

  MadeWays make() {
    addPieces();
    for (const SiteDoor& door : site_.doors) addDoor(door);
    addMissingDoors();
    for (std::size_t i = 0; i < site_.stands.size(); ++i) addStand(i);
    for (Piece& piece : pieces_) addWays(piece);
    joinMovers();
    return std::move(made_);
  }

 private:
  void addPieces() {
    for (std::size_t i = 0; i < site_.areas.size(); ++i) {
      for (Polygon& shape : repaired(site_.areas[i].shapes)) {
        const Box box = boxOf(shape);
        const Point middle = nearestIn(shape, box.centre());
        pieces_.push_back({i, std::move(shape), box, {}, {}, {}, {}});
        if (!isMover(site_.areas[i].kind)) continue;
        pieces_.back().places.push_back(middle);
        pieces_.back().stands.emplace_back();
      }
    }
  }

  std::size_t addNode(std::string id, std::size_t floor, Point at) {
    draft_.nodes.push_back({std::move(id), floor, at, std::nullopt, false});
    return draft_.nodes.size() - 1;
  }

  // A piece of the floor that holds the point; none for none.
  Piece* pieceAt(std::size_t floor, Point at, const Piece* but = nullptr) {
    for (Piece& piece : pieces_) {
      if (&piece != but && site_.areas[piece.area].floor == floor && piece.box.contains(at) &&
          holds(piece.shape, at)) {
        return &piece;
      }
    }
    return nullptr;
  }

  Piece* pieceBeside(std::size_t floor, Point at, Point normal, const Piece* but) {
    for (const double metres : besideDoorMetres) {
      Piece* const piece = pieceAt(floor, at + normal * metres, but);
      if (piece != nullptr) return piece;
    }
    return nullptr;
  }

  void addDoor(const SiteDoor& door) {
    bool isBeside = false;
    int number = 0;
    for (const Crossing& crossing : crossingsOf(door.line)) {
      Piece* const left = pieceBeside(door.floor, crossing.at, crossing.normal, nullptr);
      Piece* const right = pieceBeside(door.floor, crossing.at, crossing.normal * -1, left);
      if (left == nullptr && right == nullptr) continue;
      isBeside = true;
      if (isWithin(door.floor, crossing)) continue;
      const std::string id = ++number == 1 ? door.id : door.id + "/" + std::to_string(number);
      const std::size_t node = addNode(id, door.floor, crossing.at);
      draft_.nodes[node].isEntrance = left == nullptr || right == nullptr;
      if (left != nullptr) addDoorTo(*left, node);
      if (right != nullptr) addDoorTo(*right, node);
    }
    if (!isBeside) {
      draft_.oddities.tell(door.id, "unreached", "No area that one can walk in lies beside it.");
    }
  }

  // A line amid an area, which one walks across without noticing.
  bool isWithin(std::size_t floor, const Crossing& crossing) {
    const Point step = crossing.normal * besideDoorMetres[0];
    const Piece* const piece = pieceAt(floor, crossing.at + step);
    return piece != nullptr && pieceAt(floor, crossing.at - step) == piece;
  }

  void addDoorTo(Piece& piece, std::size_t node) {
    piece.doors.push_back(nearestOnRings(piece.shape, draft_.nodes[node].at));
    piece.doorNodes.push_back(node);
  }

  // Stairs and the like that no door is drawn to are entered over their longest side that lies
  // along another area.
  void addMissingDoors() {
    for (Piece& piece : pieces_) {
      const SiteArea& area = site_.areas[piece.area];
      if (!isMover(area.kind) || !piece.doors.empty()) continue;
      double longest = 0;
      Piece* beside = nullptr;
      Point at;
      forEachSide(piece.shape, [&](Point a, Point b) {
        const Point way = b - a;
        if (lengthOf(way) <= longest) return;
        const Point middle = between(a, b, 0.5);
        const Point out = Point{way.y, -way.x} * (1 / lengthOf(way));
        Piece* const other = pieceBeside(area.floor, middle, out, &piece);
        if (other == nullptr) return;
        longest = lengthOf(way);
        beside = other;
        at = middle;
      });
      if (beside == nullptr) continue;
      draft_.oddities.tell(area.id, "noDoor", "No door leads to it; it is entered from beside.");
      const std::size_t node = addNode(area.id + "/door", area.floor, at);
      addDoorTo(piece, node);
      addDoorTo(*beside, node);
    }
  }

  void addStand(std::size_t index) {
    const SiteStand& stand = site_.stands[index];
    Piece* nearest = pieceAt(stand.floor, stand.at);
    double least = mostAsideMetres;
    for (Piece& piece : pieces_) {
      if (nearest != nullptr && least == mostAsideMetres) break;
      if (site_.areas[piece.area].floor != stand.floor) continue;
      const double metres = apart(nearestIn(piece.shape, stand.at), stand.at);
      if (metres >= least) continue;
      least = metres;
      nearest = &piece;
    }
    if (nearest == nullptr) return;
    nearest->places.push_back(stand.at);
    nearest->stands.emplace_back(index);
  }

  void addWays(const Piece& piece) {
    const SiteArea& area = site_.areas[piece.area];
    const AreaWays ways = waysIn(piece.shape, piece.doors, piece.places);
    std::vector<std::optional<std::size_t>> nodes(ways.nodes.size());
    for (std::size_t i = 0; i < piece.doors.size(); ++i) {
      auto& inside = nodes[ways.ofDoor[i]];
      if (!inside) inside = insideOf(piece, i, ways.nodes[ways.ofDoor[i]]);
      if (*inside != piece.doorNodes[i]) addDoorLink(area, piece.doorNodes[i], *inside);
      made_.insideDoors[piece.area].push_back(*inside);
    }
    for (std::size_t i = 0; i < piece.places.size(); ++i) {
      auto& node = nodes[ways.ofPlace[i]];
      const auto stand = piece.stands[i];
      if (!node) {
        node = addNode(stand ? site_.stands[*stand].id : area.id, area.floor,
                       ways.nodes[ways.ofPlace[i]]);
      }
      (stand ? made_.ofStand[*stand] : entered_[piece.area]) = *node;
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (!nodes[i]) {
        nodes[i] = addNode(area.id + "/" + std::to_string(i), area.floor, ways.nodes[i]);
      }
    }
    for (const StraightWay& way : ways.ways) addLink(area, *nodes[way.from], *nodes[way.to]);
  }

  // The node a step inside of a door: the door's own where there is no room for a step.
  std::size_t insideOf(const Piece& piece, std::size_t door, Point at) {
    const DraftNode& node = draft_.nodes[piece.doorNodes[door]];
    if (apart(node.at, at) < sameNodeMetres) return piece.doorNodes[door];
    const SiteArea& area = site_.areas[piece.area];
    return addNode(node.id + ">" + area.id, area.floor, at);
  }

  void addDoorLink(const SiteArea& area, std::size_t door, std::size_t inside) {
    DraftLink link;
    link.id = draft_.nodes[door].id + "=" + area.id;
    link.from = door;
    link.to = inside;
    draft_.links.push_back(std::move(link));
  }

  void addLink(const SiteArea& area, std::size_t from, std::size_t to) {
    DraftLink link;
    link.id = area.id + "=" + std::to_string(linksOf_[area.id]++);
    link.from = from;
    link.to = to;
    link.kind = area.kind;
    link.hasSteps = area.hasSteps;
    draft_.links.push_back(std::move(link));
  }

  double ordinalOf(std::size_t area) const {
    return draft_.floors[site_.areas[area].floor].ordinal;
  }

  void joinMovers() {
    std::set<std::pair<std::size_t, std::size_t>> pairs;
    std::set<std::size_t> joined;
    for (const SiteMover& mover : site_.movers) {
      joined.insert({mover.from, mover.to});
      addClimb(mover.id, mover.from, mover.to, mover.kind, mover.direction);
    }
    std::vector<std::size_t> climbed;
    for (std::size_t i = 0; i < site_.areas.size(); ++i) {
      if (isClimbed(site_.areas[i].kind) && !joined.contains(i)) climbed.push_back(i);
    }
    for (const std::size_t area : climbed) {
      for (const int side : {1, -1}) {
        const auto other = nextTo(area, side, climbed);
        if (!other) continue;
        joined.insert({area, *other});
        pairs.insert(side > 0 ? std::pair(area, *other) : std::pair(*other, area));
      }
      if (!joined.contains(area) && site_.areas[area].kind != LinkKind::ramp) {
        draft_.oddities.tell(site_.areas[area].id, "leadsNowhere",
                             "Nothing of its kind lies above or below it.");
      }
    }
    for (const auto& [low, high] : pairs) addClimb(low, high);
  }

  // Of those of the kind that lie above the area (or, with side -1, below it) the one that is the
  // fewest levels away and, of several, covers the most of it.
  std::optional<std::size_t> nextTo(std::size_t area, int side,
                                    const std::vector<std::size_t>& climbed) const {
    std::optional<std::size_t> best;
    double bestRise = 0;
    double bestCover = 0;
    for (const std::size_t other : climbed) {
      const double rise = (ordinalOf(other) - ordinalOf(area)) * side;
      const bool isAlike = familyOf(site_.areas[other].kind) == familyOf(site_.areas[area].kind);
      if (rise <= 0 || !isAlike || (best && rise > bestRise)) continue;
      const double cover = coverOf(area, other);
      if (cover < leastOverlap || (best && rise == bestRise && cover <= bestCover)) continue;
      best = other;
      bestRise = rise;
      bestCover = cover;
    }
    return best;
  }

  // How much of the smaller of the two lies above the other.
  double coverOf(std::size_t a, std::size_t b) const {
    const auto size = [](const Shapes& shapes) {
      double sum = 0;
      for (const Polygon& shape : shapes) sum += areaOf(shape);
      return sum;
    };
    const Shapes& first = site_.areas[a].shapes;
    const Shapes& second = site_.areas[b].shapes;
    if (!boxOf(first.front()).meets(boxOf(second.front()))) return 0;
    return size(common(first, second)) / std::max(std::min(size(first), size(second)), 1e-6);
  }

  void addClimb(std::size_t low, std::size_t high) {
    const LinkKind kind = site_.areas[low].kind;
    const bool isOfBoth = kind == site_.areas[high].kind;
    addClimb(site_.areas[low].id + "^" + site_.areas[high].id, low, high,
             isOfBoth ? kind : familyOf(kind), Direction::both);
  }

  void addClimb(std::string id, std::size_t from, std::size_t to, LinkKind kind,
                Direction direction) {
    const auto first = enteredAt(from);
    const auto second = enteredAt(to);
    if (!first || !second) {
      draft_.oddities.tell(id, "unreached", "No way leads to one of its ends.");
      return;
    }
    DraftLink link;
    link.id = std::move(id);
    link.from = *first;
    link.to = *second;
    link.kind = kind;
    link.direction = direction;
    draft_.links.push_back(std::move(link));
  }

  std::optional<std::size_t> enteredAt(std::size_t area) const {
    if (entered_[area]) return entered_[area];
    const auto& inside = made_.insideDoors[area];
    return inside.empty() ? std::nullopt : std::optional(inside.front());
  }

  const Site& site_;
  Draft& draft_;
  MadeWays made_;
  std::vector<Piece> pieces_;
  // Of each area the node in the middle of a mover.
  std::vector<std::optional<std::size_t>> entered_;
  std::map<std::string, int> linksOf_;
};

}  // namespace

MadeWays makeWays(const Site& site, Draft& draft) { return WayMaker(site, draft).make(); }

}  // namespace tern::imports
