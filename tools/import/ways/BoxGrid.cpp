#include "tools/import/ways/BoxGrid.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tern::imports {

namespace {

constexpr double leastCellMetres = 1;
constexpr double mostBoxesAcross = 256;

bool touch(const Box& a, const Box& b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

}  // namespace

// About as many cells as boxes.
BoxGrid::BoxGrid(std::vector<Box> boxes) : boxes_(std::move(boxes)) {
  if (!boxes_.empty()) all_ = boxes_.front();
  for (const Box& box : boxes_) all_ = all_.with(box);
  const double large = std::max(all_.width(), all_.height());
  const double usual =
      std::sqrt(all_.width() * all_.height() / static_cast<double>(boxes_.size() + 1));
  cellMetres_ = std::max({leastCellMetres, large / mostBoxesAcross, usual});
  columns_ = static_cast<std::size_t>(all_.width() / cellMetres_) + 1;
  rows_ = static_cast<std::size_t>(all_.height() / cellMetres_) + 1;
  inCell_.resize(columns_ * rows_);
  for (std::uint32_t i = 0; i < boxes_.size(); ++i) {
    const Cells cells = cellsOf(boxes_[i]);
    for (std::size_t row = cells.top; row <= cells.bottom; ++row) {
      for (std::size_t column = cells.left; column <= cells.right; ++column) {
        inCell_[row * columns_ + column].push_back(i);
      }
    }
  }
}

BoxGrid::Cells BoxGrid::cellsOf(const Box& box) const {
  const auto index = [&](double metres, std::size_t count) {
    const double cell = std::floor(metres / cellMetres_);
    return static_cast<std::size_t>(std::clamp(cell, 0.0, static_cast<double>(count - 1)));
  };
  return {index(box.left - all_.left, columns_), index(box.top - all_.top, rows_),
          index(box.right - all_.left, columns_), index(box.bottom - all_.top, rows_)};
}

std::vector<std::uint32_t> BoxGrid::about(const Box& box) const {
  std::vector<std::uint32_t> found;
  const Cells cells = cellsOf(box);
  for (std::size_t row = cells.top; row <= cells.bottom; ++row) {
    for (std::size_t column = cells.left; column <= cells.right; ++column) {
      for (const std::uint32_t i : inCell_[row * columns_ + column]) {
        if (touch(boxes_[i], box)) found.push_back(i);
      }
    }
  }
  std::ranges::sort(found);
  const auto again = std::ranges::unique(found);
  found.erase(again.begin(), again.end());
  return found;
}

}  // namespace tern::imports
