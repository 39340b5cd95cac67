#include "tools/import/ways/SiteWays.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

#include "tools/import/ways/AreaWays.hpp"
#include "tools/import/ways/Climbs.hpp"
#include "tools/import/ways/Crossings.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/SitePieces.hpp"

namespace tern::imports {

namespace {

constexpr double sameNodeMetres = 0.01;

bool isMover(LinkKind kind) { return kind != LinkKind::walkway; }

class WayMaker {
 public:
  WayMaker(const Site& site, Draft& draft) : site_(site), draft_(draft), pieces_(site.areas) {
    made_.insideDoors.resize(site.areas.size());
    made_.ofDoor.resize(site.doors.size());
    made_.ofStand.resize(site.stands.size());
    entered_.resize(site.areas.size());
  }

  MadeWays make() {
    for (SitePiece& piece : pieces_.all()) addMiddle(piece);
    for (std::size_t i = 0; i < site_.doors.size(); ++i) addDoor(i);
    for (const SiteDoor& door : site_.shutDoors) markShut(door);
    for (SitePiece& piece : pieces_.all()) addMissingDoor(piece);
    for (std::size_t i = 0; i < site_.stands.size(); ++i) addStand(i);
    for (const SitePiece& piece : pieces_.all()) addWays(piece);
    joinMovers();
    return std::move(made_);
  }

 private:
  // Where one gets on a lift, or is half way up the stairs.
  void addMiddle(SitePiece& piece) {
    if (!isMover(site_.areas[piece.area].kind)) return;
    piece.places.push_back(nearestIn(piece.shape, boxOf(piece.shape).centre()));
    piece.stands.emplace_back();
  }

  // The id itself, and with a number behind it where it is taken.
  static std::string untaken(std::unordered_set<std::string>& taken, const std::string& id) {
    std::string free = id;
    for (int number = 2; !taken.insert(free).second; ++number) {
      free = id + "/" + std::to_string(number);
    }
    return free;
  }

  std::size_t addNode(const std::string& id, std::size_t floor, Point at) {
    draft_.nodes.push_back({untaken(nodeIds_, id), floor, at, std::nullopt, false});
    return draft_.nodes.size() - 1;
  }

  void addDoor(std::size_t index) {
    const SiteDoor& door = site_.doors[index];
    bool isBeside = false;
    for (const Crossing& crossing : crossingsOf(door.line)) {
      if (pieces_.areOneAcross(door.floor, crossing.at, crossing.normal)) {
        addDoorBeside(index, crossing);
        isBeside = true;
        continue;
      }
      SitePiece* left = pieces_.beside(door.floor, crossing.at, crossing.normal, nullptr);
      SitePiece* right = pieces_.beside(door.floor, crossing.at, crossing.normal * -1, left);
      if (left == nullptr && right == nullptr) continue;
      const bool leadsOut = left == nullptr || right == nullptr;
      if (left == nullptr) left = besideElsewhere(door.floor, crossing.at, crossing.normal);
      if (right == nullptr) right = besideElsewhere(door.floor, crossing.at, crossing.normal * -1);
      isBeside = true;
      const std::size_t node = addDoorNode(index, crossing.at);
      draft_.nodes[node].isEntrance = leadsOut;
      if (left != nullptr) addDoorTo(*left, node);
      if (right != nullptr) addDoorTo(*right, node);
    }
    if (!isBeside) {
      draft_.oddities.tell(door.id, "unreached", "No area that one can walk in lies beside it.");
    }
  }

  std::size_t addDoorNode(std::size_t index, Point at) {
    const SiteDoor& door = site_.doors[index];
    made_.ofDoor[index].push_back(addNode(door.id, door.floor, at));
    return made_.ofDoor[index].back();
  }

  // Drawn within an area, it is a door in the nearest wall across it, where there is one not far
  // away. Amid the area one walks over it without noticing.
  void addDoorBeside(std::size_t index, const Crossing& crossing) {
    const SiteDoor& door = site_.doors[index];
    const auto wall = pieces_.wallAcross(door.floor, crossing.at, crossing.normal);
    if (!wall) return;
    const std::size_t node = addDoorNode(index, wall->at);
    draft_.nodes[node].isEntrance = wall->beyond == nullptr;
    addDoorTo(*wall->within, node);
    if (wall->beyond != nullptr) addDoorTo(*wall->beyond, node);
  }

  // On another floor of the same height: that of the building next door, or the ground about both.
  SitePiece* besideElsewhere(std::size_t floor, Point at, Point normal) {
    for (std::size_t other = 0; other < draft_.floors.size(); ++other) {
      if (other == floor || draft_.floors[other].ordinal != draft_.floors[floor].ordinal) continue;
      SitePiece* const piece = pieces_.beside(other, at, normal, nullptr);
      if (piece != nullptr) return piece;
    }
    return nullptr;
  }

  void markShut(const SiteDoor& door) {
    for (const Crossing& crossing : crossingsOf(door.line)) {
      SitePiece* const left = pieces_.beside(door.floor, crossing.at, crossing.normal, nullptr);
      SitePiece* const right = pieces_.beside(door.floor, crossing.at, crossing.normal * -1, left);
      for (const SitePiece* const piece : {left, right}) {
        if (piece != nullptr) shut_.insert(piece);
      }
    }
  }

  void addDoorTo(SitePiece& piece, std::size_t node) {
    piece.doors.push_back(nearestOnRings(piece.shape, draft_.nodes[node].at));
    piece.doorNodes.push_back(node);
  }

  // Stairs and the like that no door is drawn to are entered over their longest side that lies
  // along an area with a door, else along any other.
  void addMissingDoor(SitePiece& piece) {
    const SiteArea& area = site_.areas[piece.area];
    if (!isMover(area.kind) || !piece.doors.empty() || shut_.contains(&piece)) return;
    double longest = 0;
    SitePiece* beside = nullptr;
    Point at;
    forEachSide(piece.shape, [&](Point a, Point b) {
      const Point way = b - a;
      if (lengthOf(way) == 0) return;
      const Point middle = between(a, b, 0.5);
      const Point out = Point{way.y, -way.x} * (1 / lengthOf(way));
      SitePiece* const other = pieces_.beside(piece.floor, middle, out, &piece);
      if (other == nullptr) return;
      const bool hasDoor = !other->doors.empty();
      const bool hadDoor = beside != nullptr && !beside->doors.empty();
      if (hadDoor && !hasDoor) return;
      if (hadDoor == hasDoor && lengthOf(way) <= longest) return;
      longest = lengthOf(way);
      beside = other;
      at = middle;
    });
    if (beside == nullptr) return;
    draft_.oddities.remark(recordOf(area), "noDoor",
                           "No door leads to it; it is entered from beside.");
    const std::size_t node = addNode(area.id + "/door", area.floor, at);
    addDoorTo(piece, node);
    addDoorTo(*beside, node);
  }

  void addStand(std::size_t index) {
    const SiteStand& stand = site_.stands[index];
    SitePiece* const nearest = pieces_.nearest(stand.floor, stand.at);
    if (nearest == nullptr) return;
    nearest->places.push_back(stand.at);
    nearest->stands.emplace_back(index);
  }

  void addWays(const SitePiece& piece) {
    const AreaWays ways = waysIn(piece.shape, piece.doors, piece.places);
    std::vector<std::optional<std::size_t>> nodes(ways.nodes.size());
    addDoorNodes(piece, ways, nodes);
    addPlaceNodes(piece, ways, nodes);
    const SiteArea& area = site_.areas[piece.area];
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i]) continue;
      nodes[i] = addNode(area.id + "/" + std::to_string(i), area.floor, ways.nodes[i]);
    }
    for (const StraightWay& way : ways.ways) addLink(area, *nodes[way.from], *nodes[way.to]);
  }

  using Nodes = std::vector<std::optional<std::size_t>>;

  void addDoorNodes(const SitePiece& piece, const AreaWays& ways, Nodes& nodes) {
    for (std::size_t i = 0; i < piece.doors.size(); ++i) {
      auto& inside = nodes[ways.ofDoor[i]];
      if (!inside) inside = insideOf(piece, i, ways.nodes[ways.ofDoor[i]]);
      if (*inside != piece.doorNodes[i]) {
        addDoorLink(site_.areas[piece.area], piece.doorNodes[i], *inside);
      }
      made_.insideDoors[piece.area].push_back(*inside);
    }
  }

  void addPlaceNodes(const SitePiece& piece, const AreaWays& ways, Nodes& nodes) {
    const SiteArea& area = site_.areas[piece.area];
    for (std::size_t i = 0; i < piece.places.size(); ++i) {
      auto& node = nodes[ways.ofPlace[i]];
      const auto stand = piece.stands[i];
      if (!node) {
        node = addNode(stand ? site_.stands[*stand].id : area.id, area.floor,
                       ways.nodes[ways.ofPlace[i]]);
      }
      (stand ? made_.ofStand[*stand] : entered_[piece.area]) = *node;
    }
  }

  // The node a step inside of a door: the door's own where there is no room for a step.
  std::size_t insideOf(const SitePiece& piece, std::size_t door, Point at) {
    const DraftNode& node = draft_.nodes[piece.doorNodes[door]];
    if (apart(node.at, at) < sameNodeMetres) return piece.doorNodes[door];
    const SiteArea& area = site_.areas[piece.area];
    return addNode(node.id + ">" + area.id, area.floor, at);
  }

  void addDoorLink(const SiteArea& area, std::size_t door, std::size_t inside) {
    DraftLink link;
    link.id = untaken(linkIds_, draft_.nodes[door].id + "=" + area.id);
    link.from = door;
    link.to = inside;
    link.isWithinArea = true;
    draft_.links.push_back(std::move(link));
  }

  void addLink(const SiteArea& area, std::size_t from, std::size_t to) {
    DraftLink link;
    link.id = untaken(linkIds_, area.id + "=" + std::to_string(linksOf_[area.id]++));
    link.from = from;
    link.to = to;
    link.kind = area.kind;
    link.hasSteps = area.hasSteps;
    link.isWithinArea = true;
    draft_.links.push_back(std::move(link));
  }

  void joinMovers() {
    for (const SiteMover& mover : site_.movers) {
      addClimb(mover.id, mover.from, mover.to, mover.kind, mover.direction);
    }
    std::vector<double> ordinals;
    for (const SiteArea& area : site_.areas) ordinals.push_back(draft_.floors[area.floor].ordinal);
    for (const Climb& climb : climbsIn(site_, ordinals, draft_.oddities)) {
      addClimb(climb.low, climb.high);
    }
  }

  void addClimb(std::size_t low, std::size_t high) {
    const LinkKind kind = site_.areas[low].kind;
    const bool isOfBoth = kind == site_.areas[high].kind;
    addClimb(site_.areas[low].id + "^" + site_.areas[high].id, low, high,
             isOfBoth ? kind : familyOf(kind), Direction::both);
  }

  void addClimb(const std::string& id, std::size_t from, std::size_t to, LinkKind kind,
                Direction direction) {
    const auto first = enteredAt(from);
    const auto second = enteredAt(to);
    if (!first || !second) {
      draft_.oddities.tell(id, "unreached", "No way leads to one of its ends.");
      return;
    }
    DraftLink link;
    link.id = untaken(linkIds_, id);
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
  SitePieces pieces_;
  // With a door that is closed.
  std::set<const SitePiece*> shut_;
  // Of each area the node in the middle of a mover.
  std::vector<std::optional<std::size_t>> entered_;
  std::map<std::string, int> linksOf_;
  std::unordered_set<std::string> nodeIds_;
  std::unordered_set<std::string> linkIds_;
};

}  // namespace

MadeWays makeWays(const Site& site, Draft& draft) { return WayMaker(site, draft).make(); }

}  // namespace tern::imports
