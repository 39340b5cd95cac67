#include "tools/tern/picture/MetreRamp.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/tern/picture/MapWindow.hpp"
#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {

namespace {

constexpr double stripHeightPx = 10;
constexpr double fontPx = 12;
constexpr double marginPx = 22;

std::string metresText(double metres) { return decimal(metres) + " m"; }

}  // namespace

MetreRamp::MetreRamp(double metres) {
  const double least = std::isfinite(metres) ? std::max(metres, 0.0) / steps : 0;
  // Of 1, 2, 3, 4, 5, 6, 8 or 10 times a power of ten.
  for (double power = 1; power <= 1e7; power *= 10) {
    for (const double digit : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 8.0}) {
      step_ = digit * power;
      if (step_ >= least) return;
    }
  }
}

std::size_t MetreRamp::stepOf(double metres) const {
  if (!(metres > 0)) return 0;
  return static_cast<std::size_t>(std::min(metres / step_, static_cast<double>(steps - 1)));
}

std::string_view MetreRamp::colourOf(std::size_t step) {
  return palette::ramp[std::min(step, steps - 1)];
}

PanelDrawing MetreRamp::legend() const {
  Markup out;
  const double width = (MapWindow::width - 2 * marginPx) / steps;
  out.open("g", {{"font-family", palette::fonts}, {"font-size", fontPx}});
  for (std::size_t i = 0; i < steps; ++i) {
    out.leaf("rect", {{"x", marginPx + width * static_cast<double>(i)},
                      {"y", 2},
                      {"width", width},
                      {"height", stripHeightPx},
                      {"fill", colourOf(i)}});
  }
  for (std::size_t i = 0; i <= steps; ++i) {
    const auto at = static_cast<double>(i);
    out.leaf("text",
             {{"x", marginPx + width * at},
              {"y", stripHeightPx + 18},
              {"text-anchor", "middle"},
              {"fill", palette::quiet}},
             i == 0 ? "0" : metresText(step_ * at));
  }
  out.close();
  return {out.take(), {MapWindow::width, stripHeightPx + 24}, {}};
}

std::string MetreRamp::words() const {
  return "Colours from near to far, each for " + metresText(step_) + ".";
}

}  // namespace tern::picture
