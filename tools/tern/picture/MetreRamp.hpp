// The colours of lengths from near to far, in steps of whole metres, and the legend that names
// them.
//
// Threads: plain values. Fails: never.
//
//   const MetreRamp ramp(38);  // 0 to 40 m in five steps of 8 m
//   canvas.stroke(line, ramp.colourOf(ramp.stepOf(12)), 5);
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/tern/picture/FloorCanvas.hpp"

namespace tern::picture {

class MetreRamp {
 public:
  static constexpr std::size_t steps = 5;

  // At least so many metres have a colour.
  explicit MetreRamp(double metres);

  // Each is so long, in metres.
  double step() const { return step_; }
  // The step that the length lies in; the last for what is longer.
  std::size_t stepOf(double metres) const;
  static std::string_view colourOf(std::size_t step);

  // A strip of the colours with the metres below it, and the same in words.
  PanelDrawing legend() const;
  std::string words() const;

 private:
  double step_ = 1;
};

}  // namespace tern::picture
