#include "tools/tern/picture/MapWindow.hpp"

#include <algorithm>
#include <limits>

namespace tern::picture {

namespace {

constexpr double boundless = std::numeric_limits<double>::infinity();

double perUnit(double pixels, double units) { return units > 0 ? pixels / units : boundless; }

std::optional<Box> boundsOf(const std::vector<Point>& points) {
  if (points.empty()) return std::nullopt;
  Box box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (Point point : points) box = box.with({point.x, point.y, point.x, point.y});
  return box;
}

// A stretch of `length` around the middle of the wanted one, kept within the floor where it goes
// in.
double startOf(double middle, double length, double floorFrom, double floorTo) {
  if (length >= floorTo - floorFrom) return (floorFrom + floorTo - length) / 2;
  return std::clamp(middle - length / 2, floorFrom, floorTo - length);
}

}  // namespace

// The scale at which all of the box is seen.
void MapWindow::fit(const Box& box, double margin, double mostScale) {
  const double across = perUnit(width - 2 * margin, box.width());
  const double down = perUnit(mostHeight - 2 * margin, box.height());
  scale_ = std::min({across, down, mostScale});
  if (scale_ == boundless) scale_ = 1;
  height_ = std::clamp(box.height() * scale_ + 2 * margin, leastHeight, mostHeight);
}

MapWindow::MapWindow(const WindowRequest& request) {
  const std::optional<Box> route = boundsOf(request.points);
  const Box floor = request.floor.value_or(route.value_or(Box{0, 0, 1, 1}));
  const Box wanted = route.value_or(floor);
  fit(wanted, route ? padding : 0, perUnit(width, request.leastSpan));
  Box all = wanted;
  if (request.floor) {
    all = wanted.with(floor);
    const double wholeScale =
        std::min(perUnit(width, all.width()), perUnit(mostHeight, all.height()));
    if (scale_ < wholeScale) fit(all, 0, boundless);
  }
  const Size seen{width / scale_, height_ / scale_};
  const Point middle = wanted.centre();
  shown_.left = request.floor ? startOf(middle.x, seen.width, all.left, all.right)
                              : middle.x - seen.width / 2;
  shown_.top = request.floor ? startOf(middle.y, seen.height, all.top, all.bottom)
                             : middle.y - seen.height / 2;
  shown_.right = shown_.left + seen.width;
  shown_.bottom = shown_.top + seen.height;
}

}  // namespace tern::picture
