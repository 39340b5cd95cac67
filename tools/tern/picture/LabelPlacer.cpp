#include "tools/tern/picture/LabelPlacer.hpp"

#include <algorithm>

namespace tern::picture {

namespace {

constexpr double edgePx = 6;
constexpr double gapPx = 3;
// As bad as hiding so much of other labels is it to hide a part of a line.
constexpr double lineWeight = 0.5;

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

void LabelPlacer::avoidLine(const std::vector<Point>& line, double halfWidth) {
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    lines_.takeLine(line[i], line[i + 1], halfWidth);
  }
}

double LabelPlacer::penalty(const Box& box) const {
  const Box near = box.grownBy(gapPx);
  return taken_.takenArea(near) + lineWeight * lines_.takenArea(near);
}

bool LabelPlacer::isWhole(const Box& box) const {
  return box.left >= edgePx && box.top >= edgePx && box.right <= window_.width - edgePx &&
         box.bottom <= window_.height - edgePx;
}

bool LabelPlacer::isFree(const Box& box) const {
  return isWhole(box) && taken_.areFree(box.grownBy(gapPx)) && lines_.areFree(box.grownBy(gapPx));
}

std::optional<Box> LabelPlacer::fit(Point point, double clearance, Size size) {
  constexpr Point directions[] = {{0, 0}, {0, 1}, {0, -1}, {1, 0}, {-1, 0}};
  for (Point direction : directions) {
    const Box box = boxAt(point, direction, clearance, size);
    if (!isFree(box)) continue;
    avoid(box);
    return box;
  }
  return std::nullopt;
}

std::optional<Box> LabelPlacer::cover(const Box& drawn, Size size) {
  const Box box = boxAt(drawn.centre(), {0, 0}, 0, size);
  const Box near = box.grownBy(gapPx);
  const bool hidesIt = drawn.width() <= size.width && drawn.height() <= size.height;
  if (!hidesIt || !isWhole(box) || !taken_.areFree(near)) return std::nullopt;
  if (lines_.takenArea(near) > lines_.takenArea(drawn)) return std::nullopt;
  avoid(box);
  return box;
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
