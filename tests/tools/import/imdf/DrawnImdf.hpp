// A building of a few features, written as the files of the Indoor Mapping Data Format. A place is
// given in metres east and south of 11.5 degrees east and 48 degrees north.
//
//   DrawnImdf building;
//   building.level("ground", 0).unit("hall", "ground", "walkway", {0, 0, 10, 5});
//   building.writeTo(folder.at("site"));
//
// Ownership: a plain value. Threads: one.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/draft/LocalPlane.hpp"

namespace tern::test {

class DrawnImdf {
 public:
  using Properties = std::vector<std::pair<std::string, Value>>;

  static Value label(const std::string& text) { return Value::map({{"en", text}}); }

  static Value point(imports::Point at) {
    return Value::map({{"type", "Point"}, {"coordinates", coordinates(at)}});
  }

  static Value line(imports::Point from, imports::Point to) {
    return Value::map({{"type", "LineString"},
                       {"coordinates", Value::list({coordinates(from), coordinates(to)})}});
  }

  static Value box(imports::Box at) {
    Value ring = Value::list();
    for (const imports::Point corner : {imports::Point{at.left, at.top},
                                        {at.right, at.top},
                                        {at.right, at.bottom},
                                        {at.left, at.bottom},
                                        {at.left, at.top}}) {
      ring.append(coordinates(corner));
    }
    return Value::map({{"type", "Polygon"}, {"coordinates", Value::list({std::move(ring)})}});
  }

  DrawnImdf& level(const std::string& id, double ordinal, Properties more = {}) {
    more.insert(more.begin(), {{"ordinal", ordinal}, {"name", label("Level " + id)}});
    return add("level", id, box({-50, -50, 50, 50}), std::move(more));
  }

  DrawnImdf& unit(const std::string& id, const std::string& level, const std::string& category,
                  imports::Box at, Properties more = {}) {
    more.insert(more.begin(), {{"level_id", level}, {"category", category}});
    return add("unit", id, box(at), std::move(more));
  }

  DrawnImdf& opening(const std::string& id, const std::string& level, imports::Point from,
                     imports::Point to) {
    return add("opening", id, line(from, to), {{"level_id", level}, {"category", "pedestrian"}});
  }

  DrawnImdf& add(const std::string& type, const std::string& id, Value geometry,
                 const Properties& properties) {
    Value map = Value::map();
    for (const auto& [key, value] : properties) map.set(key, value);
    files_.try_emplace(type, Value::list())
        .first->second.append(Value::map({{"id", id},
                                          {"type", "Feature"},
                                          {"feature_type", type},
                                          {"geometry", std::move(geometry)},
                                          {"properties", std::move(map)}}));
    return *this;
  }

  void writeTo(const std::filesystem::path& folder) const {
    std::filesystem::create_directories(folder);
    for (const auto& [type, features] : files_) {
      std::ofstream(folder / (type + ".geojson")) << encodeJson(
          Value::map({{"type", "FeatureCollection"}, {"features", features}}), JsonLayout::compact);
    }
  }

 private:
  static Value coordinates(imports::Point at) {
    // Radii of curvature of WGS 84 at 48 degrees.
    constexpr double along = 6370707.0;
    constexpr double across = 4279655.0;
    return Value::list({11.5 + at.x / across * 180 / std::numbers::pi,
                        48 - at.y / along * 180 / std::numbers::pi});
  }

  std::map<std::string, Value> files_;
};

}  // namespace tern::test
