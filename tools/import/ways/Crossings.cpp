#include "tools/import/ways/Crossings.hpp"

#include <algorithm>
#include <cmath>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

std::vector<Crossing> crossingsOf(const Line& line) {
  // One crosses a door about every so many metres.
  constexpr double crossingMetres = 1.5;
  constexpr double mostCrossings = 9;
  double metres = 0;
  for (std::size_t i = 1; i < line.size(); ++i) metres += apart(line[i - 1], line[i]);
  const double count = std::clamp(std::floor(metres / crossingMetres), 1.0, mostCrossings);
  std::vector<Crossing> crossings;
  double before = 0;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const Point way = line[i] - line[i - 1];
    const double length = lengthOf(way);
    while (length > 0 && static_cast<double>(crossings.size()) < count) {
      const double at = metres * (static_cast<double>(crossings.size()) + 0.5) / count - before;
      if (at > length) break;
      crossings.push_back(
          {between(line[i - 1], line[i], at / length), Point{-way.y, way.x} * (1 / length)});
    }
    before += length;
  }
  return crossings;
}

}  // namespace tern::imports
