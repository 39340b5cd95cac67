// A pedestrian network of a few lines, written as the files in which such networks come. A place is
// given in metres east and south of 139.5 degrees east and 35.5 degrees north.
//
//   DrawnNetwork network;
//   network.node("a", 0, {0, 0}).node("b", 0, {30, 0}).link("ab", "a", "b");
//   network.writeTo(folder.at("site"));
//
// Ownership: a plain value. Threads: one.
#pragma once

#include <algorithm>
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

class DrawnNetwork {
 public:
  using Properties = std::vector<std::pair<std::string, Value>>;

  static imports::LonLat globe(imports::Point at) {
    // Radii of curvature of WGS 84 at 35.5 degrees.
    constexpr double along = 6356952.944;
    constexpr double across = 5198411.206;
    return {139.5 + at.x / across * 180 / std::numbers::pi,
            35.5 - at.y / along * 180 / std::numbers::pi};
  }

  DrawnNetwork& node(const std::string& id, double ordinal, imports::Point at,
                     Properties more = {}) {
    places_[id] = at;
    more.insert(more.begin(), {{"node_id", id}, {"ordinal", ordinal}});
    return add("Node", "Point", coordinates(at), std::move(more));
  }

  DrawnNetwork& link(const std::string& id, const std::string& from, const std::string& to,
                     Properties more = {}, const std::vector<imports::Point>& bends = {}) {
    Value line = Value::list({coordinates(places_[from])});
    for (const imports::Point bend : bends) line.append(coordinates(bend));
    line.append(coordinates(places_[to]));
    more.insert(more.begin(), {{"link_id", id}, {"start_id", from}, {"end_id", to}});
    const auto isRoute = [](const auto& entry) { return entry.first == "route_type"; };
    if (std::none_of(more.begin(), more.end(), isRoute)) more.emplace_back("route_type", "1");
    return add("Link", "LineString", std::move(line), std::move(more));
  }

  // A floor or a space: a box.
  DrawnNetwork& area(const std::string& file, imports::Box box, Properties properties) {
    Value ring = Value::list();
    for (const imports::Point corner : {imports::Point{box.left, box.top},
                                        {box.right, box.top},
                                        {box.right, box.bottom},
                                        {box.left, box.bottom},
                                        {box.left, box.top}}) {
      ring.append(coordinates(corner));
    }
    return add(file, "Polygon", Value::list({std::move(ring)}), std::move(properties));
  }

  DrawnNetwork& line(const std::string& file, imports::Point from, imports::Point to,
                     Properties properties) {
    return add(file, "LineString", Value::list({coordinates(from), coordinates(to)}),
               std::move(properties));
  }

  DrawnNetwork& point(const std::string& file, imports::Point at, Properties properties) {
    return add(file, "Point", coordinates(at), std::move(properties));
  }

  void writeTo(const std::filesystem::path& folder) const {
    std::filesystem::create_directories(folder);
    for (const auto& [file, features] : files_) {
      std::ofstream(folder / ("Site_" + file + ".geojson")) << encodeJson(
          Value::map({{"type", "FeatureCollection"}, {"features", features}}), JsonLayout::compact);
    }
  }

 private:
  static Value coordinates(imports::Point at) {
    const imports::LonLat place = globe(at);
    return Value::list({place.longitude, place.latitude});
  }

  DrawnNetwork& add(const std::string& file, const char* type, Value coordinates,
                    const Properties& properties) {
    Value map = Value::map();
    for (const auto& [key, value] : properties) map.set(key, value);
    files_.try_emplace(file, Value::list())
        .first->second.append(Value::map(
            {{"type", "Feature"},
             {"properties", std::move(map)},
             {"geometry", Value::map({{"type", type}, {"coordinates", std::move(coordinates)}})}}));
    return *this;
  }

  std::map<std::string, imports::Point> places_;
  std::map<std::string, Value> files_;
};

}  // namespace tern::test
