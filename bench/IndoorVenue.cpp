#include "bench/IndoorVenue.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <string>
#include <utility>

namespace tern::bench {

namespace {

constexpr std::int64_t walking = 1;
constexpr std::int64_t lift = 2;
constexpr std::int64_t stairs = 3;

// A block of shops between corridors: so many points along two of its sides and the two others.
constexpr std::size_t pointsAlong = 40;
constexpr std::size_t pointsAcross = 10;
// Beside every second point lies a room.
constexpr double waypointsAPoint = 1.5;
constexpr double spacing = 100;  // map units: five metres

class Builder {
 public:
  Builder(std::size_t waypoints, IdOrder order) : order_(order), random_(20260101) {
    floors_ = std::clamp<std::size_t>(waypoints / 2500, 2, 40);
    const double points = static_cast<double>(waypoints / floors_) / waypointsAPoint;
    const double rows = std::max(1.0, std::floor(std::sqrt(points / (pointsAlong + pointsAcross))));
    const double inAColumn = pointsAlong * (rows + 1) + (pointsAcross - 1) * rows;
    const double columns = std::round((points - (pointsAcross - 1) * rows) / inAColumn);
    rows_ = static_cast<std::size_t>(rows);
    columns_ = static_cast<std::size_t>(std::max(1.0, columns));
    venue_.waypointIds.resize(waypoints * 3 + 1000);
    std::iota(venue_.waypointIds.begin(), venue_.waypointIds.end(), 1);
    if (order == IdOrder::random) {
      std::shuffle(venue_.waypointIds.begin(), venue_.waypointIds.end(), shuffling_);
    }
  }

  IndoorVenue build() {
    Value floors = Value::list();
    for (std::size_t floor = 0; floor < floors_; ++floor) floors.append(makeFloor(floor));
    venue_.waypointIds.resize(used_);
    venue_.venue = Value::map({{"id", 1},
                               {"name", "Bench"},
                               {"buildings", batch(Value::list({Value::map({{"id", 1}})}))},
                               {"pathTypes", batch(pathTypes())}});
    venue_.building =
        Value::map({{"id", 1}, {"name", "Main"}, {"floors", batch(std::move(floors))}});
    return std::move(venue_);
  }

 private:
  static Value batch(Value items) { return Value::map({{"items", std::move(items)}}); }

  static Value pathTypes() {
    const auto type = [](std::int64_t id, const char* name, double weight, int accessibility) {
      return Value::map({{"id", id},
                         {"name", name},
                         {"weight", weight},
                         {"accessibility", accessibility},
                         {"verticalWeight", 99}});
    };
    return Value::list({type(walking, "Walkway", 1, 0), type(lift, "Lift", 450, 0),
                        type(stairs, "Stairs", 300, 100)});
  }

  double jitter() { return std::round(static_cast<double>(random_() % 500)) / 100; }

  std::int64_t addWaypoint(std::size_t floor, double x, double y) {
    const std::int64_t id = venue_.waypointIds[used_++];
    waypoints_.append(Value::map({{"id", id},
                                  {"externalId", "W" + std::to_string(id)},
                                  {"mapId", static_cast<std::int64_t>(floor + 1)},
                                  {"coordinates", Value::list({x, y})},
                                  {"status", 1}}));
    return id;
  }

  void addPath(std::int64_t a, std::int64_t b, std::int64_t type) {
    paths_.append(Value::map({{"id", ++pathId_},
                              {"externalId", ""},
                              {"pathTypeId", type},
                              {"direction", 0},
                              {"waypointIds", Value::list({a, b})},
                              {"status", 1}}));
  }

  // A point of a corridor, five metres from the last, and beside most of them a room with one door
  // there or with two, the other one at the last point.
  std::int64_t addPoint(std::size_t floor, double x, double y, std::int64_t last) {
    const std::int64_t point = addWaypoint(floor, x + jitter(), y + jitter());
    if (last == 0) return point;
    addPath(last, point, walking);
    const std::uint64_t kind = random_() % 10;
    if (kind >= 5) return point;
    const std::int64_t room = addWaypoint(floor, x - 40, y + 40);
    addPath(point, room, walking);
    if (kind >= 1) addPath(last, room, walking);
    return point;
  }

  // Corridors along and across, round blocks of shops; a lift or stairs at every third crossing.
  void drawCorridors(std::size_t floor, std::vector<std::int64_t>& shafts) {
    std::vector<std::int64_t> above(columns_ + 1, 0);
    for (std::size_t row = 0; row <= rows_; ++row) {
      const double y = static_cast<double>(row * pointsAcross) * spacing;
      std::int64_t last = 0;
      for (std::size_t column = 0; column <= columns_ * pointsAlong; ++column) {
        const double x = static_cast<double>(column) * spacing;
        last = addPoint(floor, x, y, last);
        if (column % pointsAlong != 0) continue;
        const std::size_t crossing = column / pointsAlong;
        if (row > 0) drawAcross(floor, x, y, above[crossing], last);
        if ((row + crossing) % 3 == 0) shafts.push_back(last);
        above[crossing] = last;
      }
    }
  }

  void drawAcross(std::size_t floor, double x, double y, std::int64_t above, std::int64_t below) {
    std::int64_t last = above;
    for (std::size_t point = pointsAcross - 1; point > 0; --point) {
      last = addPoint(floor, x, y - static_cast<double>(point) * spacing, last);
    }
    addPath(last, below, walking);
  }

  Value makeFloor(std::size_t floor) {
    waypoints_ = Value::list();
    paths_ = Value::list();
    std::vector<std::int64_t> shafts;
    drawCorridors(floor, shafts);
    for (std::size_t i = 0; i < below_.size(); ++i) {
      addPath(below_[i], shafts[i], i % 2 == 0 ? lift : stairs);
    }
    below_ = std::move(shafts);
    if (order_ == IdOrder::random) {
      std::ranges::shuffle(waypoints_.items(), shuffling_);
      std::ranges::shuffle(paths_.items(), shuffling_);
    }
    const auto id = static_cast<std::int64_t>(floor + 1);
    return Value::map({{"id", id},
                       {"name", "Level " + std::to_string(floor)},
                       {"level", static_cast<std::int64_t>(floor)},
                       {"map", Value::map({{"id", id},
                                           {"mmPerPixel", 50},
                                           {"svg", "<svg viewBox=\"0 0 1200 800\"></svg>"},
                                           {"waypoints", batch(std::move(waypoints_))},
                                           {"paths", batch(std::move(paths_))}})}});
  }

  const IdOrder order_;
  std::mt19937_64 random_;
  // Numbers of its own, so that the venue is the same in any order.
  std::mt19937_64 shuffling_{20260102};
  std::size_t floors_ = 0;
  std::size_t rows_ = 0;  // of blocks, on each floor
  std::size_t columns_ = 0;
  IndoorVenue venue_;
  std::size_t used_ = 0;
  std::int64_t pathId_ = 0;
  Value waypoints_;
  Value paths_;
  std::vector<std::int64_t> below_;
};

}  // namespace

IndoorVenue makeIndoorVenue(std::size_t waypoints, IdOrder order) {
  return Builder(waypoints, order).build();
}

}  // namespace tern::bench
