#include "tools/tern/picture/DrawnNames.hpp"

#include <cmath>

namespace tern::picture {

namespace {

// Letters that are smaller cannot be read, and smaller ones yet are not even seen.
constexpr double leastReadablePx = 6.5;
constexpr double leastSeenPx = 4;

double distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

}  // namespace

DrawnNames::DrawnNames(const DrawingMarks& marks, const MapWindow& window) {
  for (const DrawnText& text : marks.texts) {
    const double sizePx = text.fontSize * window.scale();
    if (sizePx < leastSeenPx) continue;
    if (sizePx >= leastReadablePx) readable_ += text.text + " ";
    const Point from = window.toPicture({text.box.left, text.box.top});
    const Point to = window.toPicture({text.box.right, text.box.bottom});
    byText_.emplace(text.text, texts_.size());
    texts_.push_back(text.text);
    boxes_.push_back({from.x, from.y, to.x, to.y});
  }
}

bool DrawnNames::isReadable(std::string_view name) const {
  return readable_.find(" " + std::string(name) + " ") != std::string::npos;
}

// What the texts from that one on cover if together they say the name.
std::optional<Box> DrawnNames::nameFrom(std::size_t first, std::string_view name) const {
  Box box = boxes_[first];
  std::size_t said = texts_[first].size();
  for (std::size_t next = first + 1; said < name.size(); ++next) {
    const std::string_view left = name.substr(said + 1);
    if (name[said] != ' ' || next == texts_.size() || texts_[next].empty()) return std::nullopt;
    if (!left.starts_with(texts_[next])) return std::nullopt;
    said += 1 + texts_[next].size();
    box = box.with(boxes_[next]);
  }
  return box;
}

std::optional<Box> DrawnNames::nearest(std::string_view name, Point point, double atMost) const {
  std::optional<Box> nearest;
  const auto tryFrom = [&](std::string_view words) {
    const auto [first, behind] = byText_.equal_range(words);
    for (auto each = first; each != behind; ++each) {
      const auto box = nameFrom(each->second, name);
      if (!box || distance(box->centre(), point) > atMost) continue;
      if (nearest && distance(nearest->centre(), point) <= distance(box->centre(), point)) continue;
      nearest = box;
    }
  };
  tryFrom(name);
  for (std::size_t at = name.find(' '); at < name.size(); at = name.find(' ', at + 1)) {
    tryFrom(name.substr(0, at));
  }
  return nearest;
}

}  // namespace tern::picture
