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

class Builder {
 public:
  Builder(std::size_t waypoints, IdOrder order) : random_(20260101) {
    floors_ = std::clamp<std::size_t>(waypoints / 2500, 2, 40);
    const double points = static_cast<double>(waypoints / floors_) / 1.6;
    columns_ = std::max<std::size_t>(4, static_cast<std::size_t>(std::sqrt(points * 2)));
    rows_ = std::max<std::size_t>(2, static_cast<std::size_t>(points) / columns_);
    venue_.waypointIds.resize(waypoints * 2);
    std::iota(venue_.waypointIds.begin(), venue_.waypointIds.end(), 1);
    if (order == IdOrder::random) {
      std::shuffle(venue_.waypointIds.begin(), venue_.waypointIds.end(), random_);
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
    return Value::list({type(walking, "Walkway", 1, 0), type(lift, "Lift", 60, 0),
                        type(stairs, "Stairs", 90, 100)});
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

  // Corridors along the rows, crossings at every second column, a room beside three of five points.
  void drawCorridors(std::size_t floor, std::vector<std::int64_t>& shafts) {
    std::vector<std::int64_t> above;
    for (std::size_t row = 0; row < rows_; ++row) {
      std::vector<std::int64_t> points;
      for (std::size_t column = 0; column < columns_; ++column) {
        const double x = static_cast<double>(column) * 20 + jitter();
        const double y = static_cast<double>(row) * 60 + jitter();
        points.push_back(addWaypoint(floor, x, y));
        if (column > 0) addPath(points[column - 1], points[column], walking);
        if (row > 0 && column % 2 == 0) addPath(above[column], points[column], walking);
        if (random_() % 5 < 3) addPath(points[column], addWaypoint(floor, x, y + 15), walking);
        if (column % 20 == 3 && row % 8 == 1) shafts.push_back(points[column]);
      }
      above = std::move(points);
    }
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

  std::mt19937_64 random_;
  std::size_t floors_ = 0;
  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
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
