#include "tools/tern/picture/LabelPlacer.hpp"

#include <algorithm>
#include <cmath>

namespace tern::picture {

namespace {

constexpr double lineStepPx = 4;
constexpr std::size_t mostLinePoints = 20'000;
constexpr double edgePx = 6;
constexpr double gapPx = 3;

Box boxAt(Point point, Point direction, double clearance, Size size) {
  const Point middle{point.x + direction.x * (clearance + size.width / 2),
                     point.y + direction.y * (clearance + size.height / 2)};
  return {middle.x - size.width / 2, middle.y - size.height / 2, middle.x + size.width / 2,
          middle.y + size.height / 2};
}

Box movedInto(const Box& box, Size window) {
  const double left =
      std::clamp(box.left, edgePx, std::max(edgePx, window.width - edgePx - box.width()));
  const double top =
      std::clamp(box.top, edgePx, std::max(edgePx, window.height - edgePx - box.height()));
  return {left, top, left + box.width(), top + box.height()};
}

}  // namespace

void LabelPlacer::avoidLine(const std::vector<Point>& line) {
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const Point way{line[i + 1].x - line[i].x, line[i + 1].y - line[i].y};
    const double steps = std::ceil(std::hypot(way.x, way.y) / lineStepPx);
    for (double step = 0; step < steps && line_.size() < mostLinePoints; ++step) {
      line_.push_back({line[i].x + way.x * step / steps, line[i].y + way.y * step / steps});
    }
  }
}

double LabelPlacer::penalty(const Box& box) const {
  double total = 0;
  for (const Box& other : taken_) total += box.grownBy(gapPx).overlap(other);
  const Box near = box.grownBy(gapPx);
  const auto hidden =
      std::count_if(line_.begin(), line_.end(), [&](Point point) { return near.contains(point); });
  return total + 20.0 * static_cast<double>(hidden);
}

Box LabelPlacer::place(Point point, double clearance, Size size) {
  constexpr Point directions[] = {{1, 0},      {-1, 0},      {0, -1},    {0, 1},
                                  {0.7, -0.9}, {-0.7, -0.9}, {0.7, 0.9}, {-0.7, 0.9}};
  Box best{};
  double least = -1;
  double preference = 0;
  for (double further : {0.0, 14.0, 32.0}) {
    for (Point direction : directions) {
      const Box box = movedInto(boxAt(point, direction, clearance + further, size), window_);
      const double penaltyHere = penalty(box) + preference++;
      if (least >= 0 && penaltyHere >= least) continue;
      best = box;
      least = penaltyHere;
    }
    preference += 10;
  }
  avoid(best);
  return best;
}

}  // namespace tern::picture
