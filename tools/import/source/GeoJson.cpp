#include "tools/import/source/GeoJson.hpp"

#include <string_view>
#include <utility>

namespace tern::imports {

namespace {

std::optional<LonLat> place(const Value& coordinates, const PlaneSystem& system) {
  const auto numbers = coordinates.items();
  if (numbers.size() < 2 || !numbers[0].isNumber() || !numbers[1].isNumber()) return std::nullopt;
  return system.onGlobe({numbers[0].number(), numbers[1].number()});
}

std::optional<GlobeLine> line(const Value& coordinates, const PlaneSystem& system,
                              std::size_t least) {
  GlobeLine line;
  for (const Value& point : coordinates.items()) {
    const auto at = place(point, system);
    if (!at) return std::nullopt;
    line.push_back(*at);
  }
  return line.size() < least ? std::nullopt : std::optional(std::move(line));
}

std::optional<GlobePolygon> polygon(const Value& coordinates, const PlaneSystem& system) {
  constexpr std::size_t leastOfRing = 4;
  GlobePolygon rings;
  for (const Value& ring : coordinates.items()) {
    auto points = line(ring, system, leastOfRing);
    if (!points) return std::nullopt;
    points->pop_back();
    rings.push_back(std::move(*points));
  }
  return rings.empty() ? std::nullopt : std::optional(std::move(rings));
}

}  // namespace

std::optional<PlaneSystem> statedPlaneSystem(const Value& document) {
  const Value& name = document["crs"]["properties"]["name"];
  return name.isText() ? planeSystemOf(name.text()) : PlaneSystem();
}

std::optional<LonLat> globePoint(const Value& geometry, const PlaneSystem& system) {
  const std::string_view type = geometry["type"].text();
  const Value& coordinates = geometry["coordinates"];
  if (type == "Point") return place(coordinates, system);
  if (type != "MultiPoint" || coordinates.size() != 1) return std::nullopt;
  return place(coordinates.items()[0], system);
}

std::optional<GlobeLine> globeLine(const Value& geometry, const PlaneSystem& system) {
  GlobeLine whole;
  for (const GlobeLine& part : globeLines(geometry, system)) {
    if (!whole.empty() && whole.back() != part.front()) return std::nullopt;
    whole.insert(whole.end(), part.begin() + (whole.empty() ? 0 : 1), part.end());
  }
  return whole.empty() ? std::nullopt : std::optional(std::move(whole));
}

std::vector<GlobeLine> globeLines(const Value& geometry, const PlaneSystem& system) {
  constexpr std::size_t leastOfLine = 2;
  const std::string_view type = geometry["type"].text();
  std::vector<GlobeLine> lines;
  const auto add = [&](const Value& coordinates) {
    auto added = line(coordinates, system, leastOfLine);
    if (added) lines.push_back(std::move(*added));
    return added.has_value();
  };
  if (type == "LineString") add(geometry["coordinates"]);
  if (type == "MultiLineString") {
    for (const Value& part : geometry["coordinates"].items()) {
      if (!add(part)) return {};
    }
  }
  return lines;
}

std::optional<std::vector<GlobePolygon>> globePolygons(const Value& geometry,
                                                       const PlaneSystem& system) {
  const std::string_view type = geometry["type"].text();
  std::vector<GlobePolygon> polygons;
  const auto add = [&](const Value& coordinates) {
    auto added = polygon(coordinates, system);
    if (added) polygons.push_back(std::move(*added));
    return added.has_value();
  };
  if (type == "Polygon" && !add(geometry["coordinates"])) return std::nullopt;
  if (type == "MultiPolygon") {
    for (const Value& part : geometry["coordinates"].items()) {
      if (!add(part)) return std::nullopt;
    }
  }
  return polygons.empty() ? std::nullopt : std::optional(std::move(polygons));
}

}  // namespace tern::imports
