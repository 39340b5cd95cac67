#include "tools/tern/picture/MapNames.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tern::picture {

namespace {

using Weight = FloorCanvas::Weight;

// Of the points of a line, so many say how far off a name is.
constexpr std::size_t mostMeasured = 200;

struct Wish {
  std::string_view name;
  bool isLandmark = false;
  // Those that are seen, the nearest to the way first.
  std::vector<Point> places;
  double rank = 0;
};

double distanceTo(const std::vector<Point>& way, Point at) {
  double least = std::numeric_limits<double>::infinity();
  const std::size_t step = way.size() / mostMeasured + 1;
  for (std::size_t i = 0; i < way.size(); i += step) {
    least = std::min(least, std::hypot(way[i].x - at.x, way[i].y - at.y));
  }
  return way.empty() ? 0 : least;
}

Wish wishOf(const PlaceName& name, const FloorCanvas& canvas, const MapNames& wanted) {
  const auto [width, height] = canvas.size();
  std::vector<std::pair<double, Point>> seen;
  for (const Point place : name.places) {
    const Point at = canvas.toPicture(place);
    if (Box{0, 0, width, height}.contains(at)) seen.emplace_back(distanceTo(wanted.way, at), at);
  }
  std::ranges::stable_sort(seen, {}, &std::pair<double, Point>::first);
  Wish wish{name.name, name.destination && wanted.landmarks.contains(*name.destination), {}, 0};
  for (const auto& [distance, at] : seen) wish.places.push_back(at);
  if (!seen.empty()) wish.rank = seen.front().first / static_cast<double>(seen.size());
  return wish;
}

}  // namespace

void writeNames(FloorCanvas& canvas, const MapNames& wanted) {
  std::vector<Wish> wishes;
  for (const PlaceName& name : wanted.names) {
    const bool isLabelled = std::ranges::any_of(wanted.labels, [&](std::string_view label) {
      return label.find(name.name) != std::string_view::npos;
    });
    if (isLabelled) continue;
    Wish wish = wishOf(name, canvas, wanted);
    if (!wish.places.empty()) wishes.push_back(std::move(wish));
  }
  std::ranges::stable_sort(wishes, {},
                           [](const Wish& wish) { return std::pair(!wish.isLandmark, wish.rank); });
  for (const Wish& wish : wishes) {
    canvas.name(wish.places, wish.name, wish.isLandmark ? Weight::strong : Weight::normal);
  }
}

}  // namespace tern::picture
