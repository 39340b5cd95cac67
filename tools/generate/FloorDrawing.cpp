#include "tools/generate/FloorDrawing.hpp"

#include <algorithm>
#include <array>

#include "tools/drawing/SvgText.hpp"
#include "tools/generate/Icons.hpp"
#include "tools/generate/Label.hpp"

namespace tern::generate {

namespace {

// In the order of `Category`.
constexpr std::array<std::string_view, categoryCount> categoryFills{
    "#f4d9dc", "#efdcd0", "#f0dcec", "#f3e6c4", "#d4e2f1", "#e3ddd0", "#dfe6d3", "#cfe6e2",
    "#fbedbb", "#d8e9c9", "#fae0c4", "#d0e8d9", "#dde0ee", "#dcd6ee", "#e2d3dc"};
constexpr std::string_view serviceFill = "#e4e8ec";
constexpr std::string_view vacantFill = "#efefec";

constexpr int wallPx = 8;
constexpr int linkWidthPx = 120;
constexpr int leastLabelPx = 14;
constexpr int treeStepPx = 130;
constexpr int plantStepPx = 190;

std::string attribute(std::string_view name, std::string_view value) {
  return std::string(name) + "=\"" + std::string(value) + "\"";
}

class FloorDrawer {
 public:
  FloorDrawer(const VenueModel& venue, const FloorModel& floor)
      : venue_(venue),
        floor_(floor),
        building_(venue.site.buildings[static_cast<std::size_t>(floor.building)]),
        svg_(venue.site.widthPx, venue.site.heightPx) {}

  std::string draw() {
    drawSite();
    drawLinks();
    drawShell();
    drawPaving();
    drawRooms();
    drawDoors();
    for (const Point& court : floor_.plan.courts) drawCourt(court);
    drawPlants();
    drawIcons();
    drawLabels();
    drawTitle();
    return svg_.finished();
  }

 private:
  const Shop& shopOf(const Room& room) const {
    return venue_.shops[static_cast<std::size_t>(room.shop)];
  }

  void drawSite() {
    const Box site{0, 0, venue_.site.widthPx, venue_.site.heightPx};
    svg_.rect(site, floor_.level < 0 ? "fill=\"#e8e6e1\"" : "fill=\"#e9eee3\"");
    if (floor_.level >= 0) drawTrees();
    for (const BuildingPlan& other : venue_.site.buildings) {
      if (other.index != building_.index) drawOther(other);
    }
  }

  // The outline of another building, or its roof when the floor lies above it.
  void drawOther(const BuildingPlan& other) {
    const bool isRoof = !other.hasLevel(floor_.level);
    svg_.rect(other.footprint.grownBy(wallPx),
              isRoof ? "rx=\"16\" fill=\"#dee2da\""
                     : "rx=\"16\" fill=\"#f1f1ed\" stroke=\"#cfd3cd\" stroke-width=\"4\"");
    if (isRoof) return;
    const Point middle = other.footprint.centre();
    svg_.text({middle.x, middle.y + titlePx() / 3}, titlePx(), buildingName(other.index),
              "text-anchor=\"middle\" fill=\"#a4aaa2\" font-family=\"Inter,Helvetica,Arial,"
              "sans-serif\"");
  }

  // Where people walk from one building to another.
  Box linkBox(const BuildingLink& link) const {
    const BuildingPlan& first = venue_.site.buildings[static_cast<std::size_t>(link.first)];
    const BuildingPlan& second = venue_.site.buildings[static_cast<std::size_t>(link.second)];
    const int half = linkWidthPx / 2;
    if (link.northSouth) {
      const int x = first.middleCrossing();
      return {x - half, first.footprint.bottom, x + half, second.footprint.top};
    }
    const int y = first.concourseY(first.mainConcourse());
    return {first.footprint.right, y - half, second.footprint.left, y + half};
  }

  // Whether a tree may stand there: not on a building, its name or the way to its gates.
  bool isOpenGround(const Box& spot) const {
    for (const BuildingPlan& building : venue_.site.buildings) {
      const Box& box = building.footprint;
      if (spot.meets(box.grownBy(3 * wallPx))) return false;
      if (spot.meets({box.left, box.top - 120, box.centre().x, box.top})) return false;
      for (int x : building.crossings) {
        if (spot.meets({x - 90, box.top - 100, x + 90, box.bottom + 100})) return false;
      }
      const int y = building.concourseY(building.mainConcourse());
      if (spot.meets({box.left - 100, y - 90, box.right + 100, y + 90})) return false;
    }
    return std::none_of(venue_.site.links.begin(), venue_.site.links.end(),
                        [&](const BuildingLink& link) { return spot.meets(linkBox(link)); });
  }

  // The same trees on every floor that sees them.
  void drawTrees() {
    Random random(venue_.options.seed, 4);
    svg_.openGroup("fill=\"#cbdabd\"");
    for (int y = treeStepPx / 2; y < venue_.site.heightPx; y += treeStepPx) {
      for (int x = treeStepPx / 2; x < venue_.site.widthPx; x += treeStepPx) {
        const int radius = random.between(20, 36);
        const Point at{x + random.between(-35, 35), y + random.between(-35, 35)};
        const bool stands = random.below(100) < 45;
        const Box spot = Box{at.x, at.y, at.x, at.y}.grownBy(radius + 6);
        if (stands && isOpenGround(spot)) svg_.circle(at, radius);
      }
    }
    svg_.closeGroup();
  }

  void drawLinks() {
    if (floor_.level != 0 && floor_.level != 1) return;
    for (const BuildingLink& link : venue_.site.links) {
      const bool joined =
          venue_.site.buildings[static_cast<std::size_t>(link.first)].hasLevel(floor_.level) &&
          venue_.site.buildings[static_cast<std::size_t>(link.second)].hasLevel(floor_.level);
      if (!joined) continue;
      svg_.rect(linkBox(link), floor_.level == 0
                                   ? "fill=\"#f6f2e8\""
                                   : "fill=\"#fdfcfa\" stroke=\"#aab4be\" stroke-width=\"6\"");
    }
  }

  void drawShell() {
    svg_.rect(building_.footprint.grownBy(wallPx / 2),
              "rx=\"6\" fill=\"#fdfcfa\" stroke=\"#8793a0\" stroke-width=\"8\"");
    for (const Gate& gate : floor_.plan.gates) drawGate(gate);
  }

  // A band of darker stone along the ways.
  void drawPaving() {
    svg_.openGroup("stroke=\"#f4f0e7\" stroke-width=\"84\"");
    for (const Line& line : floor_.plan.lines) {
      if (line.kind == CorridorKind::court) continue;
      const bool level = line.from.y == line.to.y;
      svg_.shape(line.from,
                 level ? "H" + std::to_string(line.to.x) : "V" + std::to_string(line.to.y));
    }
    for (const Point& court : floor_.plan.courts) {
      svg_.shape({court.x - courtHalfWidthPx, court.y}, "h" + std::to_string(2 * courtHalfWidthPx));
      svg_.shape({court.x, court.y - concourseWidthPx / 2}, "v" + std::to_string(concourseWidthPx));
    }
    svg_.closeGroup();
  }

  bool isLinked(const Gate& gate) const {
    if (!gate.main) return false;
    const bool northSouth = gate.side == Side::north || gate.side == Side::south;
    const bool outward = gate.side == Side::south || gate.side == Side::east;
    return std::any_of(
        venue_.site.links.begin(), venue_.site.links.end(), [&](const BuildingLink& link) {
          const int own = outward ? link.first : link.second;
          const int other = outward ? link.second : link.first;
          return link.northSouth == northSouth && own == building_.index &&
                 venue_.site.buildings[static_cast<std::size_t>(other)].hasLevel(floor_.level);
        });
  }

  // An opening in the façade on the ground and where a bridge comes in; elsewhere a window.
  void drawGate(const Gate& gate) {
    const Box& box = building_.footprint;
    const bool level = gate.side == Side::north || gate.side == Side::south;
    const int half = linkWidthPx / 2;
    Box opening;
    if (level) {
      const int y = gate.side == Side::north ? box.top : box.bottom;
      opening = {gate.at.x - half, y - wallPx, gate.at.x + half, y + wallPx};
    } else {
      const int x = gate.side == Side::west ? box.left : box.right;
      opening = {x - wallPx, gate.at.y - half, x + wallPx, gate.at.y + half};
    }
    const bool open = floor_.level == 0 || (floor_.level == 1 && isLinked(gate));
    svg_.rect(opening, open ? "fill=\"#fdfcfa\"" : "fill=\"#cfdde6\"");
  }

  std::string_view fillOf(const Room& room) const {
    if (room.shop >= 0) return categoryFills[static_cast<std::size_t>(shopOf(room).name.category)];
    return room.kind == RoomKind::vacant ? vacantFill : serviceFill;
  }

  void drawRooms() {
    std::vector<const Room*> rooms;
    for (const Room& room : floor_.plan.rooms) rooms.push_back(&room);
    std::stable_sort(rooms.begin(), rooms.end(),
                     [&](const Room* a, const Room* b) { return fillOf(*a) < fillOf(*b); });
    svg_.openGroup("stroke=\"#b4bcc4\" stroke-width=\"3\"");
    std::string_view fill;
    for (const Room* room : rooms) {
      if (fillOf(*room) != fill) {
        if (!fill.empty()) svg_.closeGroup();
        svg_.openGroup(attribute("fill", fill = fillOf(*room)));
      }
      svg_.rect(room->box);
    }
    if (!fill.empty()) svg_.closeGroup();
    svg_.closeGroup();
  }

  // A gap in the wall.
  void drawDoors() {
    svg_.openGroup("stroke=\"#fdfcfa\" stroke-width=\"7\" fill=\"none\"");
    for (const Room& room : floor_.plan.rooms) {
      for (const Door& door : room.doors) {
        const bool upright = door.wall.x == room.box.left || door.wall.x == room.box.right;
        const int half = std::min(26, (upright ? room.box.height() : room.box.width()) / 4);
        const Point from = upright ? Point{door.wall.x, door.wall.y - half}
                                   : Point{door.wall.x - half, door.wall.y};
        svg_.shape(from, (upright ? "v" : "h") + std::to_string(2 * half));
      }
    }
    svg_.closeGroup();
  }

  void drawCourt(Point court) {
    const Box box{court.x - voidHalfWidthPx, court.y - voidHalfHeightPx, court.x + voidHalfWidthPx,
                  court.y + voidHalfHeightPx};
    const Flights flights = flightsAt(building_, floor_.level);
    svg_.rect(box, flights.below
                       ? "rx=\"10\" fill=\"#e3e9ed\" stroke=\"#aab6c1\" stroke-width=\"4\""
                       : "rx=\"10\" fill=\"#f1ece1\" stroke=\"#ddd5c4\" stroke-width=\"3\"");
    if (!flights.above && !flights.below) {
      svg_.circle(court, 40, "fill=\"#d3e5ec\" stroke=\"#a9c6d3\" stroke-width=\"4\"");
      svg_.circle(court, 14, "fill=\"#f4fafc\"");
    }
    const int above = flights.aboveEastward ? 0 : 2;
    if (flights.above) drawFlight(court, above, flights.aboveEastward);
    if (flights.below) drawFlight(court, 2 - above, !flights.aboveEastward);
  }

  // The pair of strips of one flight: the one going up runs with it, the other against it.
  void drawFlight(Point court, int strip, bool eastward) {
    drawStrip({court.x, court.y + escalatorOffsetsPx[strip]}, eastward);
    drawStrip({court.x, court.y + escalatorOffsetsPx[strip + 1]}, !eastward);
  }

  void drawStrip(Point middle, bool eastward) {
    const int half = escalatorWidthPx / 2 - 2;
    svg_.rect(
        {middle.x - voidHalfWidthPx, middle.y - half, middle.x + voidHalfWidthPx, middle.y + half},
        "rx=\"3\" fill=\"#8fa3b5\"");
    for (int step = -2; step <= 2; ++step) {
      svg_.shape({middle.x + 46 * step + (eastward ? -4 : 4), middle.y - 7},
                 eastward ? "l8 7l-8 7" : "l-8 7l8 7",
                 "fill=\"none\" stroke=\"#fff\" stroke-width=\"4\"");
    }
  }

  // Planters in the middle of the concourses, well away from where people walk in and out.
  void drawPlants() {
    svg_.openGroup("fill=\"#c3d8b8\" stroke=\"#e3dccb\" stroke-width=\"6\"");
    for (const Line& line : floor_.plan.lines) {
      if (line.kind != CorridorKind::concourse) continue;
      for (int x = line.from.x + 100; x < line.to.x - 60; x += plantStepPx) {
        const int side = (x - line.from.x) / plantStepPx % 2 * 2 - 1;
        if (!isByPassage(x)) svg_.circle({x, line.from.y + side * 62}, 17);
      }
    }
    svg_.closeGroup();
  }

  bool isByPassage(int x) const {
    return std::any_of(building_.crossings.begin(), building_.crossings.end(),
                       [x](int crossing) { return std::abs(crossing - x) < passageWidthPx; });
  }

  void drawIcons() {
    for (const Room& room : floor_.plan.rooms) {
      switch (room.kind) {
        case RoomKind::lift:
          drawIcon(svg_, Icon::lift, room.box.centre());
          break;
        case RoomKind::stairs:
          drawIcon(svg_, Icon::stairs, room.box.centre());
          break;
        case RoomKind::toilets:
          drawIcon(svg_, Icon::toilets, room.box.centre());
          break;
        case RoomKind::information:
          drawIcon(svg_, Icon::information, room.box.centre());
          break;
        case RoomKind::cashMachine:
          drawIcon(svg_, Icon::cashMachine, room.box.centre());
          break;
        case RoomKind::babyCare:
          drawIcon(svg_, Icon::babyCare, room.box.centre());
          break;
        default:
          break;
      }
    }
    if (floor_.level == 0) drawEntrances();
  }

  // An arrow outside each entrance, pointing in.
  void drawEntrances() {
    for (const Gate& gate : floor_.plan.gates) {
      const Box& box = building_.footprint;
      constexpr std::string_view style = "fill=\"#5e8c6a\"";
      switch (gate.side) {
        case Side::north:
          svg_.shape({gate.at.x - 22, box.top - 46}, "h44l-22 30z", style);
          break;
        case Side::south:
          svg_.shape({gate.at.x - 22, box.bottom + 46}, "h44l-22 -30z", style);
          break;
        case Side::west:
          svg_.shape({box.left - 46, gate.at.y - 22}, "v44l30 -22z", style);
          break;
        case Side::east:
          svg_.shape({box.right + 46, gate.at.y - 22}, "v44l-30 -22z", style);
          break;
      }
    }
  }

  void drawLabels() {
    svg_.openGroup(
        "text-anchor=\"middle\" fill=\"#434b55\" font-family=\"Inter,Helvetica,Arial,sans-serif\"");
    for (const Room& room : floor_.plan.rooms) {
      if (room.shop >= 0) drawLabel(room);
    }
    svg_.closeGroup();
  }

  // Along a narrow room when that makes the words much larger.
  void drawLabel(const Room& room) {
    const int most = room.kind == RoomKind::anchor ? 46 : 34;
    const std::string name = shopOf(room).name.full(0);
    const int width = room.box.width() - 20;
    const int height = room.box.height() - 100;
    const Label across = fitLabel(name, width, height, leastLabelPx, most);
    const Label along = fitLabel(name, height, width, leastLabelPx, most);
    const bool turned = along.size * 3 > across.size * 4;
    const Point middle = room.box.centre();
    if (turned) {
      svg_.openGroup("transform=\"rotate(-90 " + std::to_string(middle.x) + " " +
                     std::to_string(middle.y) + ")\"");
    }
    drawLines(turned ? along : across, middle);
    if (turned) svg_.closeGroup();
  }

  void drawLines(const Label& label, Point at) {
    const int line = labelLinePx(label.size);
    at.y += label.size * 7 / 20 - (static_cast<int>(label.lines.size()) - 1) * line / 2;
    for (const std::string& words : label.lines) {
      svg_.text(at, label.size, words);
      at.y += line;
    }
  }

  // Large sites are looked at from further away.
  int titlePx() const { return std::max(50, venue_.site.widthPx / 48); }

  void drawTitle() {
    const std::string title = buildingName(building_.index) + " · " + floorName(floor_.level);
    // It ends before the arrow of the first entrance.
    const int widthPx = building_.crossings.front() - building_.footprint.left - passageWidthPx;
    const Label label =
        fitLabel(title, widthPx, labelLinePx(titlePx()), 12, std::min(titlePx(), 80));
    svg_.text(
        {building_.footprint.left, building_.footprint.top - 36}, label.size, title,
        "fill=\"#6c7681\" font-weight=\"600\" font-family=\"Inter,Helvetica,Arial,sans-serif\"");
  }

  const VenueModel& venue_;
  const FloorModel& floor_;
  const BuildingPlan& building_;
  drawing::SvgText svg_;
};

}  // namespace

std::string drawFloor(const VenueModel& venue, const FloorModel& floor) {
  return FloorDrawer(venue, floor).draw();
}

}  // namespace tern::generate
