#include "tools/import/ways/WallGrid.hpp"

#include <algorithm>
#include <cmath>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// What is nearer than this is at the same place.
constexpr double samePlaceMetres = 1e-6;
// Sideways of a line, far below what rounding leaves of a shrunk area.
constexpr double sameLineMetres = 1e-9;
constexpr double mostCellsAcross = 512;

}  // namespace

WallGrid::WallGrid(const Polygon& area) {
  if (!area.rings.empty()) box_ = boxOf(area);
  forEachSide(area, [&](Point a, Point b) { walls_.push_back({a, b}); });
  double metres = 0;
  for (const Wall& wall : walls_) metres += apart(wall.a, wall.b);
  const double large = std::max({box_.width(), box_.height(), samePlaceMetres});
  const double usual = metres / static_cast<double>(std::max<std::size_t>(walls_.size(), 1));
  cellMetres_ = std::max(usual, large / mostCellsAcross);
  columns_ = static_cast<std::int64_t>(box_.width() / cellMetres_) + 1;
  rows_ = static_cast<std::int64_t>(box_.height() / cellMetres_) + 1;
  starts_.assign(static_cast<std::size_t>(columns_ * rows_) + 1, 0);
  for (const Wall& wall : walls_) forCellsOf(wall, [&](std::size_t cell) { ++starts_[cell + 1]; });
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
  inCell_.resize(starts_.back());
  std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
  for (std::uint32_t i = 0; i < walls_.size(); ++i) {
    forCellsOf(walls_[i], [&](std::size_t cell) { inCell_[next[cell]++] = i; });
  }
}

// Every cell of the wall's box whose square it comes near.
template <class Use>
void WallGrid::forCellsOf(const Wall& wall, Use use) const {
  const Cell a = cellAt(wall.a);
  const Cell b = cellAt(wall.b);
  const Point way = wall.b - wall.a;
  const double reach =
      (std::abs(way.x) + std::abs(way.y)) * cellMetres_ * 0.51 + samePlaceMetres * lengthOf(way);
  for (std::int64_t row = std::min(a.row, b.row); row <= std::max(a.row, b.row); ++row) {
    for (std::int64_t column = std::min(a.column, b.column); column <= std::max(a.column, b.column);
         ++column) {
      const Point middle{box_.left + (static_cast<double>(column) + 0.5) * cellMetres_,
                         box_.top + (static_cast<double>(row) + 0.5) * cellMetres_};
      if (std::abs(crossOf(way, middle - wall.a)) <= reach) {
        use(static_cast<std::size_t>(row * columns_ + column));
      }
    }
  }
}

WallGrid::Cell WallGrid::cellAt(Point at) const {
  const auto index = [&](double metres, std::int64_t count) {
    const double cell = std::floor(metres / cellMetres_);
    return static_cast<std::int64_t>(std::clamp(cell, 0.0, static_cast<double>(count - 1)));
  };
  return {index(at.x - box_.left, columns_), index(at.y - box_.top, rows_)};
}

bool WallGrid::isCrossed(const Wall& wall, const Way& way) {
  const double first = crossOf(way.unit, wall.a - way.from);
  const double second = crossOf(way.unit, wall.b - way.from);
  // A corner on the line counts as beside it, on the left, so that of two walls that meet there on
  // both sides of the way just one is crossed.
  if ((first >= -sameLineMetres) == (second >= -sameLineMetres)) return false;
  const Point at = between(wall.a, wall.b, first / (first - second));
  const double along = dotOf(at - way.from, way.unit);
  return along > samePlaceMetres && along < way.metres - samePlaceMetres;
}

bool WallGrid::isCrossedIn(Cell cell, const Way& way) const {
  const auto at = static_cast<std::size_t>(cell.row * columns_ + cell.column);
  return std::any_of(inCell_.begin() + starts_[at], inCell_.begin() + starts_[at + 1],
                     [&](std::uint32_t wall) { return isCrossed(walls_[wall], way); });
}

// Walks the cells row by row: of each row the columns between where the way enters and leaves it,
// and one more on each side, so that rounding passes none over.
bool WallGrid::areCrossed(Point from, Point to) const {
  const double metres = apart(from, to);
  if (metres <= samePlaceMetres) return false;
  if (from.y > to.y) std::swap(from, to);
  const Way way{from, (to - from) * (1 / metres), metres};
  const std::int64_t lastRow = cellAt(to).row;
  for (std::int64_t row = cellAt(from).row; row <= lastRow; ++row) {
    const double top = box_.top + static_cast<double>(row) * cellMetres_;
    const auto xAt = [&](double y) {
      if (y <= from.y) return from.x;
      if (y >= to.y) return to.x;
      return from.x + (to.x - from.x) * (y - from.y) / (to.y - from.y);
    };
    // The first and the last row also hold what lies beside the grid.
    const double enter = xAt(row == 0 ? from.y : top - samePlaceMetres);
    const double leave = xAt(row + 1 == rows_ ? to.y : top + cellMetres_ + samePlaceMetres);
    const std::int64_t first = cellAt({std::min(enter, leave) - samePlaceMetres, top}).column;
    const std::int64_t last = cellAt({std::max(enter, leave) + samePlaceMetres, top}).column;
    for (std::int64_t column = first; column <= last; ++column) {
      if (isCrossedIn({column, row}, way)) return true;
    }
  }
  return false;
}

bool WallGrid::areNear(Point at, double metres) const {
  const Cell low = cellAt(at - Point{metres, metres});
  const Cell high = cellAt(at + Point{metres, metres});
  for (std::int64_t row = low.row; row <= high.row; ++row) {
    for (std::int64_t column = low.column; column <= high.column; ++column) {
      const auto cell = static_cast<std::size_t>(row * columns_ + column);
      for (std::uint32_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
        const Wall& wall = walls_[inCell_[i]];
        if (apart(nearestOn(wall.a, wall.b, at), at) < metres) return true;
      }
    }
  }
  return false;
}

}  // namespace tern::imports
