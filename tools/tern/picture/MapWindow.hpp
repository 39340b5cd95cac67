// The part of a floor that a picture of a route shows, and how it is placed in the picture.
//
// A route over most of a floor shows the whole floor; a short one shows its own surroundings, large
// enough to follow. The window is as wide as it is told and as high as its contents need.
//
// Threads: a plain value.
// Fails: never; a route without points shows the whole floor.
#pragma once

#include <optional>
#include <vector>

#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

struct WindowRequest {
  // Points that must be seen, in map units.
  std::vector<Point> points;
  // What the drawing fills, in map units; none when that is unknown.
  std::optional<Box> floor;
  // The least distance to see across, in map units.
  double leastSpan = 0;
};

class MapWindow {
 public:
  static constexpr double width = 358;
  static constexpr double leastHeight = 220;
  static constexpr double mostHeight = 420;
  // Room for markers and labels around the route.
  static constexpr double padding = 52;

  explicit MapWindow(const WindowRequest& request);

  // In pixels of the picture.
  Size size() const { return {width, height_}; }
  Point toPicture(Point map) const {
    return {(map.x - shown_.left) * scale_, (map.y - shown_.top) * scale_};
  }
  // What is seen, in map units, and the pixels that one of them takes.
  const Box& shown() const { return shown_; }
  double scale() const { return scale_; }

 private:
  void fit(const Box& box, double margin, double mostScale);

  Box shown_;
  double height_ = leastHeight;
  double scale_ = 1;
};

}  // namespace tern::picture
