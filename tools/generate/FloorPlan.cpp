#include "tools/generate/FloorPlan.hpp"

#include <algorithm>

#include "tools/generate/Spread.hpp"

namespace tern::generate {

namespace {

// How far behind its door a visitor has arrived.
constexpr int insidePx = 2 * metrePx;
constexpr int gateInsetPx = 14;
constexpr int ringHalfHeightPx = 92;
constexpr int ringCornerPx = 50;
constexpr int liftDepthPx = 130;

// A stretch of a rank of shops between two passages.
struct Stretch {
  int left;
  int right;
  // The edge along the concourse and the one away from it.
  int front;
  int back;
  int concourseY;
  int line;
};

class FloorPlanner {
 public:
  FloorPlanner(const BuildingPlan& building, int level, int shops, Random random)
      : building_(building), level_(level), shopsLeft_(shops), random_(random) {}

  FloorPlan plan() {
    for (int row = 0; row < building_.concourses; ++row) addConcourse(row);
    for (std::size_t i = 0; i < building_.crossings.size(); ++i) addPassage(static_cast<int>(i));
    for (int row = 0; row < building_.concourses; ++row) addEnds(row);
    fillStretches();
    return std::move(plan_);
  }

 private:
  bool isMain(int row) const { return row == building_.mainConcourse(); }
  int mainY() const { return building_.concourseY(building_.mainConcourse()); }

  int addLine(Point from, Point to, CorridorKind kind) {
    plan_.lines.push_back({from, to, kind});
    return static_cast<int>(plan_.lines.size()) - 1;
  }

  // The concourse's walking line, cut where a court is walked round, and the ranks on both sides.
  void addConcourse(int row) {
    const int y = building_.concourseY(row);
    const Box& box = building_.footprint;
    const bool west = isMain(row) && building_.openWest;
    const bool east = isMain(row) && building_.openEast;
    int from = west ? box.left + gateInsetPx : box.left + endDepthPx + 3 * metrePx;
    const int end = east ? box.right - gateInsetPx : box.right - endDepthPx - 3 * metrePx;
    firstLine_.push_back(static_cast<int>(plan_.lines.size()));
    if (west) plan_.gates.push_back({{from, y}, Side::west, true});
    if (east) plan_.gates.push_back({{end, y}, Side::east, true});
    if (isMain(row)) {
      for (int x : building_.crossings) {
        addLine({from, y}, {x - courtHalfWidthPx, y}, CorridorKind::concourse);
        from = x + courtHalfWidthPx;
      }
    }
    addLine({from, y}, {end, y}, CorridorKind::concourse);
    addStretches(row);
  }

  void addStretches(int row) {
    const std::vector<int>& crossings = building_.crossings;
    const int half = passageWidthPx / 2 + (isMain(row) ? serviceWidthPx : 0);
    const int y = building_.concourseY(row);
    const int near = concourseWidthPx / 2;
    for (int side : {-1, 1}) {
      int left = building_.footprint.left + endDepthPx;
      for (std::size_t i = 0; i <= crossings.size(); ++i) {
        const bool last = i == crossings.size();
        const int right = last ? building_.footprint.right - endDepthPx : crossings[i] - half;
        const int line = firstLine_.back() + (isMain(row) ? static_cast<int>(i) : 0);
        stretches_.push_back(
            {left, right, y + side * near, y + side * (near + rankDepthPx), y, line});
        if (!last) left = crossings[i] + half;
      }
    }
  }

  void addPassage(int index) {
    const int x = building_.crossings[static_cast<std::size_t>(index)];
    const Point north{x, building_.footprint.top + gateInsetPx};
    const Point south{x, building_.footprint.bottom - gateInsetPx};
    const bool main = x == building_.middleCrossing();
    plan_.gates.push_back({north, Side::north, main});
    plan_.gates.push_back({south, Side::south, main});
    const int up = addLine(north, {x, mainY() - ringHalfHeightPx}, CorridorKind::passage);
    const int down = addLine({x, mainY() + ringHalfHeightPx}, south, CorridorKind::passage);
    addRing({x, mainY()});
    addServices(x, up, down);
  }

  // The way round the court: from the concourse's west end over both sides to its east end.
  void addRing(Point centre) {
    plan_.courts.push_back(centre);
    const Point west{centre.x - courtHalfWidthPx, centre.y};
    const Point east{centre.x + courtHalfWidthPx, centre.y};
    for (int side : {-1, 1}) {
      const int y = centre.y + side * ringHalfHeightPx;
      const Point corners[] = {
          west, {west.x + ringCornerPx, y}, {centre.x, y}, {east.x - ringCornerPx, y}, east};
      for (int i = 0; i < 4; ++i) addLine(corners[i], corners[i + 1], CorridorKind::court);
    }
  }

  // Both strips north of the court and both south of it.
  void addServices(int x, int northLine, int southLine) {
    const bool storeys = building_.floors > 1;
    const RoomKind lift = storeys ? RoomKind::lift : RoomKind::service;
    const RoomKind stairs = storeys ? RoomKind::stairs : RoomKind::service;
    const int near = concourseWidthPx / 2;
    for (int side : {-1, 1}) {
      const int line = side < 0 ? northLine : southLine;
      const int front = mainY() + side * near;
      const int middle = front + side * liftDepthPx;
      const int back = front + side * rankDepthPx;
      addService(lift, x, -1, front, middle, line);
      addService(stairs, x, -1, middle, back, line);
      if (side < 0) {
        addService(RoomKind::toilets, x, 1, front, back, line);
      } else {
        addService(level_ == 0 ? RoomKind::information : RoomKind::babyCare, x, 1, front, middle,
                   line);
        addService(level_ <= 0 ? RoomKind::cashMachine : RoomKind::toilets, x, 1, middle, back,
                   line);
      }
    }
  }

  void addService(RoomKind kind, int x, int eastward, int yFrom, int yTo, int line) {
    const int wall = x + eastward * passageWidthPx / 2;
    const int far = wall + eastward * serviceWidthPx;
    const int y = (yFrom + yTo) / 2;
    Room room{
        {std::min(wall, far), std::min(yFrom, yTo), std::max(wall, far), std::max(yFrom, yTo)},
        kind,
        -1,
        {}};
    if (kind != RoomKind::service) {
      room.doors.push_back({{wall + eastward * insidePx, y}, {wall, y}, line, {x, y}});
    }
    plan_.rooms.push_back(std::move(room));
  }

  void addEnds(int row) {
    const Box& box = building_.footprint;
    addEnd(row, isMain(row) && building_.openWest, box.left, box.left + endDepthPx, false);
    addEnd(row, isMain(row) && building_.openEast, box.right - endDepthPx, box.right, true);
  }

  void addEnd(int row, bool open, int left, int right, bool east) {
    const int top = building_.rowTop(row);
    const int y = building_.concourseY(row);
    const int pieces = isMain(row) ? static_cast<int>(building_.crossings.size()) : 0;
    const int line = firstLine_[static_cast<std::size_t>(row)] + (east ? pieces : 0);
    if (!open) {
      addClosedEnd({left, top, right, top + rowHeightPx}, y, line, east);
      return;
    }
    const int near = concourseWidthPx / 2;
    addRankRoom({left, right, y - near, top, y, line}, left, right, takeAnchor());
    addRankRoom({left, right, y + near, top + rowHeightPx, y, line}, left, right, takeAnchor());
  }

  // One large room across the end of the concourse, with two doors.
  void addClosedEnd(Box box, int y, int line, bool east) {
    Room room{box, takeAnchor(), -1, {}};
    const int inward = east ? -1 : 1;
    const int wall = east ? box.left : box.right;
    const Point corridor{wall + inward * 3 * metrePx, y};
    for (int side : {-1, 1}) {
      const int doorY = y + side * 70;
      room.doors.push_back({{wall - inward * insidePx, doorY}, {wall, doorY}, line, corridor});
    }
    addRoom(std::move(room));
  }

  void addRoom(Room room) {
    if (room.kind == RoomKind::vacant) room.doors.clear();
    plan_.rooms.push_back(std::move(room));
  }

  RoomKind takeAnchor() { return take(RoomKind::anchor); }

  RoomKind take(RoomKind kind) {
    if (shopsLeft_ == 0) return RoomKind::vacant;
    --shopsLeft_;
    return kind;
  }

  void addRankRoom(const Stretch& stretch, int left, int right, RoomKind kind) {
    const int top = std::min(stretch.front, stretch.back);
    const int bottom = std::max(stretch.front, stretch.back);
    const int side = stretch.back < stretch.front ? -1 : 1;
    const int x = (left + right) / 2 + random_.between(-(right - left) / 6, (right - left) / 6);
    // The line may begin a little behind the corner of the concourse.
    const Line& line = plan_.lines[static_cast<std::size_t>(stretch.line)];
    const int corridorX = std::clamp(x, line.from.x, line.to.x);
    Room room{{left, top, right, bottom}, kind, -1, {}};
    room.doors.push_back({{x, stretch.front + side * insidePx},
                          {x, stretch.front},
                          stretch.line,
                          {corridorX, stretch.concourseY}});
    addRoom(std::move(room));
  }

  // Gives each stretch its part of the shops that are left, by its length.
  void fillStretches() {
    std::int64_t total = 0;
    for (const Stretch& stretch : stretches_) total += stretch.right - stretch.left;
    Spread spread(shopsLeft_, total);
    for (const Stretch& stretch : stretches_) {
      fill(stretch, spread.next(stretch.right - stretch.left));
    }
  }

  void fill(const Stretch& stretch, int count) {
    if (count == 0) {
      addRankRoom(stretch, stretch.left, stretch.right, RoomKind::vacant);
      return;
    }
    std::vector<int> shares;
    std::int64_t total = 0;
    for (int i = 0; i < count; ++i) total += shares.emplace_back(random_.between(7, 13));
    Spread spread(stretch.right - stretch.left, total);
    int left = stretch.left;
    for (int share : shares) {
      const int right = left + spread.next(share);
      addRankRoom(stretch, left, right, take(RoomKind::shop));
      left = right;
    }
  }

  const BuildingPlan& building_;
  int level_;
  int shopsLeft_;
  Random random_;
  FloorPlan plan_;
  std::vector<Stretch> stretches_;
  // The first walking line of each row.
  std::vector<int> firstLine_;
};

}  // namespace

FloorPlan planFloor(const BuildingPlan& building, int level, int shops, Random random) {
  return FloorPlanner(building, level, shops, random).plan();
}

}  // namespace tern::generate
