#include "tools/check/Strips.hpp"

#include <algorithm>

namespace tern::check {

namespace {

constexpr std::size_t stripCount = 256;

}  // namespace

Strips::Strips(std::span<const Segment> lines, double width, double reach)
    : lines_(lines),
      stripWidth_(std::max(width, 1.0) / stripCount),
      reach_(reach),
      strips_(stripCount) {
  for (std::uint32_t i = 0; i < lines.size(); ++i) {
    const auto [first, last] = stripsOf(lines[i]);
    for (std::size_t strip = first; strip <= last; ++strip) strips_[strip].push_back(i);
  }
}

// What lies beside the drawing counts to the strip at its edge.
Strips::Range Strips::stripsOf(const Segment& line) const {
  const auto stripAt = [&](double x) {
    const double strip = x / stripWidth_;
    return strip > 0 ? static_cast<std::size_t>(std::min(strip, stripCount - 1.0)) : 0;
  };
  const auto [left, right] = std::minmax(line.from.x, line.to.x);
  return {stripAt(left - reach_), stripAt(right + reach_)};
}

}  // namespace tern::check
