#include "tools/tern/picture/TakenCells.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <utility>

namespace tern::picture {

namespace {

constexpr double cellPx = 2;
constexpr std::size_t bitsPerWord = 64;

std::size_t cellsIn(double pixels) {
  return static_cast<std::size_t>(std::ceil(std::clamp(pixels, 0.0, 1e4) / cellPx));
}

// Where an edge of a box lies among so many cells; an edge between two belongs to neither.
std::size_t cellOf(double pixels, std::size_t cells, bool isEnd) {
  const double cell = pixels / cellPx;
  return static_cast<std::size_t>(
      std::clamp(isEnd ? std::ceil(cell) : std::floor(cell), 0.0, static_cast<double>(cells)));
}

// The parts of the way from 0 to 1 between which it lies between both bounds.
std::optional<std::pair<double, double>> within(double from, double to, double least, double most) {
  if (from == to) {
    return from >= least && from <= most ? std::optional(std::pair(0.0, 1.0)) : std::nullopt;
  }
  const auto [first, last] =
      std::minmax({(least - from) / (to - from), (most - from) / (to - from)});
  const std::pair parts(std::max(first, 0.0), std::min(last, 1.0));
  return parts.first <= parts.second ? std::optional(parts) : std::nullopt;
}

}  // namespace

TakenCells::TakenCells(Size size)
    : columns_(cellsIn(size.width)),
      rows_(cellsIn(size.height)),
      wordsPerRow_((columns_ + bitsPerWord - 1) / bitsPerWord),
      bits_(rows_ * wordsPerRow_) {}

TakenCells::Rows TakenCells::rowsOf(const Box& box) const {
  return {cellOf(box.top, rows_, false), cellOf(box.bottom, rows_, true),
          cellOf(box.left, columns_, false), cellOf(box.right, columns_, true)};
}

// Hands the place of each word that the box touches, with the bits that it touches there.
template <class Use>
void TakenCells::eachWord(const Box& box, Use use) const {
  const auto [top, bottom, left, right] = rowsOf(box);
  if (left >= right) return;
  for (std::size_t row = top; row < bottom; ++row) {
    for (std::size_t word = left / bitsPerWord; word <= (right - 1) / bitsPerWord; ++word) {
      const std::size_t first = std::max(left, word * bitsPerWord) - word * bitsPerWord;
      const std::size_t behind = std::min(right - word * bitsPerWord, bitsPerWord);
      const std::uint64_t upTo = behind == bitsPerWord ? ~0ULL : (1ULL << behind) - 1;
      use(row * wordsPerRow_ + word, upTo & ~0ULL << first);
    }
  }
}

void TakenCells::take(const Box& box) {
  eachWord(box, [&](std::size_t place, std::uint64_t mask) { bits_[place] |= mask; });
}

double TakenCells::takenArea(const Box& box) const {
  int count = 0;
  eachWord(box, [&](std::size_t place, std::uint64_t mask) {
    count += std::popcount(bits_[place] & mask);
  });
  return count * cellPx * cellPx;
}

void TakenCells::takeLine(Point from, Point to, double halfWidth) {
  const double most = halfWidth + cellPx;
  const auto across = within(from.x, to.x, -most, static_cast<double>(columns_) * cellPx + most);
  const auto down = within(from.y, to.y, -most, static_cast<double>(rows_) * cellPx + most);
  if (!across || !down) return;
  const double first = std::max(across->first, down->first);
  const double last = std::min(across->second, down->second);
  if (first > last) return;
  const double length = std::hypot(to.x - from.x, to.y - from.y) * (last - first);
  const auto steps = static_cast<int>(std::ceil(length / cellPx)) + 1;
  for (int step = 0; step <= steps; ++step) {
    const double part = first + (last - first) * step / steps;
    const Point at{from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
    take(Box{at.x, at.y, at.x, at.y}.grownBy(halfWidth));
  }
}

}  // namespace tern::picture
