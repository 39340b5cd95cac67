#include "tools/generate/WalkGraph.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <numeric>

namespace tern::generate {

namespace {

// Waypoints of a corridor that would stand closer than this are one.
constexpr int snapPx = 30;
constexpr int escalatorEndPx = 146;

int lengthOf(const Line& line) {
  return std::max(std::abs(line.to.x - line.from.x), std::abs(line.to.y - line.from.y));
}

// The point that lies so many pixels along the line's longer axis.
Point pointAlong(const Line& line, int distance) {
  const int length = lengthOf(line);
  return {line.from.x + (line.to.x - line.from.x) * distance / length,
          line.from.y + (line.to.y - line.from.y) * distance / length};
}

bool isLevel(const Line& line) { return line.from.y == line.to.y; }

int nearest(const std::vector<int>& sorted, int wanted) {
  const auto above = std::lower_bound(sorted.begin(), sorted.end(), wanted);
  if (above == sorted.begin()) return *above;
  if (above == sorted.end()) return sorted.back();
  return *above - wanted < wanted - *(above - 1) ? *above : *(above - 1);
}

// The fixed places and the wanted ones, without those that come too near to another.
std::vector<int> mergedStops(std::vector<int> fixed, std::vector<int> wanted) {
  std::sort(fixed.begin(), fixed.end());
  fixed.erase(std::unique(fixed.begin(), fixed.end()), fixed.end());
  std::sort(wanted.begin(), wanted.end());
  std::vector<int> stops = fixed;
  int last = -snapPx;
  for (int place : wanted) {
    if (place - last < snapPx || std::abs(nearest(fixed, place) - place) < snapPx) continue;
    stops.push_back(last = place);
  }
  std::sort(stops.begin(), stops.end());
  return stops;
}

// Puts more stops between those that are further apart than the spacing.
std::vector<int> filledStops(const std::vector<int>& stops, int spacing) {
  std::vector<int> filled{stops.front()};
  for (std::size_t i = 1; i < stops.size(); ++i) {
    const int gap = stops[i] - stops[i - 1];
    const int parts = (gap + spacing - 1) / spacing;
    for (int part = 1; part <= parts; ++part) filled.push_back(stops[i - 1] + gap * part / parts);
  }
  return filled;
}

std::string_view nameOf(CorridorKind kind) {
  if (kind == CorridorKind::court) return "Court";
  return kind == CorridorKind::concourse ? "Concourse" : "Passage";
}

NodeKind nodeKindOf(RoomKind kind) {
  switch (kind) {
    case RoomKind::lift:
      return NodeKind::lift;
    case RoomKind::stairs:
      return NodeKind::stairs;
    case RoomKind::shop:
    case RoomKind::anchor:
      return NodeKind::shop;
    default:
      return NodeKind::amenity;
  }
}

class WalkGraphBuilder {
 public:
  WalkGraphBuilder(const FloorPlan& plan, int spacing) : plan_(plan), spacing_(spacing) {}

  WalkGraph build(const Flights& flights, bool atGround) {
    for (const Room& room : plan_.rooms) {
      for (const Door& door : room.doors) doorsOf(door.line).push_back(&door);
    }
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) walkLine(i);
    for (std::size_t i = 0; i < plan_.rooms.size(); ++i) enterRoom(static_cast<int>(i));
    for (const Point& court : plan_.courts) addEscalators(court, flights);
    for (const Gate& gate : plan_.gates) addGate(gate, atGround);
    renumber();
    return std::move(graph_);
  }

 private:
  std::vector<const Door*>& doorsOf(int line) {
    doors_.resize(plan_.lines.size());
    return doors_[static_cast<std::size_t>(line)];
  }

  int nodeAt(Point at) {
    const auto [entry, isNew] =
        corridorNodes_.try_emplace(at, static_cast<int>(graph_.nodes.size()));
    if (isNew) graph_.nodes.push_back({at, NodeKind::corridor, -1});
    return entry->second;
  }

  int addNode(Point at, NodeKind kind, int room) {
    graph_.nodes.push_back({at, kind, room});
    return static_cast<int>(graph_.nodes.size()) - 1;
  }

  void walkLine(std::size_t index) {
    const Line& line = plan_.lines[index];
    std::vector<int> fixed = crossingsOf(line);
    fixed.push_back(0);
    fixed.push_back(lengthOf(line));
    std::vector<int> wanted;
    for (const Door* door : doorsOf(static_cast<int>(index))) wanted.push_back(place(line, *door));
    stops_.push_back(mergedStops(std::move(fixed), std::move(wanted)));
    int previous = -1;
    for (int stop : filledStops(stops_.back(), spacing_)) {
      const int node = nodeAt(pointAlong(line, stop));
      if (previous >= 0) graph_.links.push_back({previous, node, nameOf(line.kind)});
      previous = node;
    }
  }

  static int place(const Line& line, const Door& door) {
    return isLevel(line) ? door.corridor.x - line.from.x : door.corridor.y - line.from.y;
  }

  // Where level and upright lines cross. The slanting ones round a court only meet others at ends.
  std::vector<int> crossingsOf(const Line& line) const {
    std::vector<int> places;
    if (line.kind == CorridorKind::court) return places;
    for (const Line& other : plan_.lines) {
      if (other.kind == CorridorKind::court || isLevel(other) == isLevel(line)) continue;
      const Line& level = isLevel(line) ? line : other;
      const Line& upright = isLevel(line) ? other : line;
      const Point meet{upright.from.x, level.from.y};
      if (meet.x < level.from.x || meet.x > level.to.x) continue;
      if (meet.y < upright.from.y || meet.y > upright.to.y) continue;
      places.push_back(isLevel(line) ? meet.x - line.from.x : meet.y - line.from.y);
    }
    return places;
  }

  void enterRoom(int index) {
    const Room& room = plan_.rooms[static_cast<std::size_t>(index)];
    for (const Door& door : room.doors) {
      const auto line = static_cast<std::size_t>(door.line);
      const int stop = nearest(stops_[line], place(plan_.lines[line], door));
      const int node = addNode(door.inside, nodeKindOf(room.kind), index);
      graph_.links.push_back({nodeAt(pointAlong(plan_.lines[line], stop)), node, "Door"});
      if (room.kind == RoomKind::lift) graph_.lifts.push_back(node);
      if (room.kind == RoomKind::stairs) graph_.stairs.push_back(node);
    }
  }

  int addEscalatorEnd(Point court, bool east, int strip) {
    const int x = court.x + (east ? escalatorEndPx : -escalatorEndPx);
    const int node = addNode({x, court.y + escalatorOffsetsPx[strip]}, NodeKind::escalator, -1);
    const int ring = nodeAt({court.x + (east ? courtHalfWidthPx : -courtHalfWidthPx), court.y});
    graph_.links.push_back({ring, node, "Court"});
    return node;
  }

  // A flight's foot lies at the end that it rises away from.
  void addEscalators(Point court, const Flights& flights) {
    EscalatorEnds ends;
    const int above = flights.aboveEastward ? 0 : 2;
    const int below = 2 - above;
    if (flights.above) {
      ends.upFoot = addEscalatorEnd(court, !flights.aboveEastward, above);
      ends.downFoot = addEscalatorEnd(court, !flights.aboveEastward, above + 1);
    }
    if (flights.below) {
      ends.upHead = addEscalatorEnd(court, !flights.aboveEastward, below);
      ends.downHead = addEscalatorEnd(court, !flights.aboveEastward, below + 1);
    }
    graph_.escalators.push_back(ends);
  }

  void addGate(const Gate& gate, bool atGround) {
    const int node = nodeAt(gate.at);
    if (atGround) graph_.nodes[static_cast<std::size_t>(node)].kind = NodeKind::entrance;
    graph_.gates.push_back(node);
  }

  // Sorts the nodes by kind and carries everything that names one along.
  void renumber() {
    std::vector<int> order(graph_.nodes.size());
    std::iota(order.begin(), order.end(), 0);
    const auto kindOf = [&](int node) { return graph_.nodes[static_cast<std::size_t>(node)].kind; };
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return kindOf(a) < kindOf(b); });
    std::vector<int> placeOf(order.size());
    std::vector<Node> nodes;
    nodes.reserve(order.size());
    for (int node : order) {
      placeOf[static_cast<std::size_t>(node)] = static_cast<int>(nodes.size());
      nodes.push_back(graph_.nodes[static_cast<std::size_t>(node)]);
    }
    graph_.nodes = std::move(nodes);
    const auto carry = [&](int& node) {
      if (node >= 0) node = placeOf[static_cast<std::size_t>(node)];
    };
    for (Link& link : graph_.links) carry(link.from), carry(link.to);
    for (auto* list : {&graph_.lifts, &graph_.stairs, &graph_.gates}) {
      for (int& node : *list) carry(node);
    }
    for (EscalatorEnds& ends : graph_.escalators) {
      for (int* node : {&ends.upFoot, &ends.downFoot, &ends.upHead, &ends.downHead}) carry(*node);
    }
  }

  const FloorPlan& plan_;
  int spacing_;
  WalkGraph graph_;
  std::map<Point, int> corridorNodes_;
  std::vector<std::vector<const Door*>> doors_;
  // Per line, the places that a door may lead to.
  std::vector<std::vector<int>> stops_;
};

}  // namespace

Flights flightsAt(const BuildingPlan& building, int level) {
  return {level<building.highestLevel(), level> building.lowestLevel,
          (level - building.lowestLevel) % 2 == 0};
}

WalkGraph buildWalkGraph(const FloorPlan& plan, const BuildingPlan& building, int level,
                         int spacingPx) {
  return WalkGraphBuilder(plan, spacingPx).build(flightsAt(building, level), level == 0);
}

}  // namespace tern::generate
