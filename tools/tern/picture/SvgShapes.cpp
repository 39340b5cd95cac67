#include "tools/tern/picture/SvgShapes.hpp"

#include <array>
#include <cctype>
#include <cmath>
#include <numbers>

#include "tools/tern/picture/SvgNumbers.hpp"

namespace tern::picture {

namespace {

// One of the functions of a transform, such as "rotate", of so many numbers.
Affine functionOf(std::string_view name, const std::array<double, 6>& numbers, std::size_t count) {
  const auto& [p, q, r, s, t, u] = numbers;
  if (name == "matrix" && count == 6) return {p, q, r, s, t, u};
  if (name == "translate") return {1, 0, 0, 1, p, q};
  if (name == "scale") return {p, 0, 0, count > 1 ? q : p, 0, 0};
  const double angle = p * std::numbers::pi / 180;
  if (name == "skewX") return {1, 0, std::tan(angle), 1, 0, 0};
  if (name == "skewY") return {1, std::tan(angle), 0, 1, 0, 0};
  if (name != "rotate") return {};
  const Affine turn{std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
  return Affine{1, 0, 0, 1, q, r}.after(turn).after({1, 0, 0, 1, -q, -r});
}

// Grows as points are added.
class Bounds {
 public:
  explicit Bounds(const Affine& transform) : transform_(transform) {}

  void add(Point point) {
    const Point at = transform_(point);
    if (!std::isfinite(at.x) || !std::isfinite(at.y)) return;
    const Box box{at.x, at.y, at.x, at.y};
    box_ = box_ ? box_->with(box) : box;
  }
  const std::optional<Box>& box() const { return box_; }

 private:
  Affine transform_;
  std::optional<Box> box_;
};

// Follows the commands of a path from point to point.
class PathReader {
 public:
  PathReader(std::string_view commands, Bounds& bounds) : rest_(commands), bounds_(bounds) {}

  void read() {
    char command = 0;
    while (true) {
      rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n,"), rest_.size()));
      if (rest_.empty()) return;
      if (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) {
        command = rest_.front();
        isBegun_ = false;
        rest_.remove_prefix(1);
      } else if (command == 0 || !follow(command)) {
        return;
      }
      if (command == 'z' || command == 'Z') at_ = start_;
    }
  }

 private:
  std::optional<Point> takePoint(bool isRelative) {
    const auto x = takeNumber(rest_);
    const auto y = x ? takeNumber(rest_) : std::nullopt;
    if (!y) return std::nullopt;
    return isRelative ? Point{at_.x + *x, at_.y + *y} : Point{*x, *y};
  }

  bool goTo(const std::optional<Point>& point) {
    if (!point) return false;
    bounds_.add(*point);
    at_ = *point;
    return true;
  }

  // Further points behind the first are lines.
  bool begin(bool isRelative) {
    if (!goTo(takePoint(isRelative))) return false;
    if (!isBegun_) start_ = at_;
    isBegun_ = true;
    return true;
  }

  bool goAlong(double Point::*axis, bool isRelative) {
    const auto number = takeNumber(rest_);
    if (!number) return false;
    Point point = at_;
    point.*axis = isRelative ? at_.*axis + *number : *number;
    return goTo(point);
  }

  // The points that bend the curve, then its end.
  bool curve(int bends, bool isRelative) {
    for (; bends > 0; --bends) {
      const auto bend = takePoint(isRelative);
      if (!bend) return false;
      bounds_.add(*bend);
    }
    return goTo(takePoint(isRelative));
  }

  // Its two flags may stand without anything between them and the number behind.
  bool arc(bool isRelative) {
    for (int i = 0; i < 3; ++i) {
      if (!takeNumber(rest_)) return false;
    }
    for (int i = 0; i < 2; ++i) {
      const std::size_t flag = rest_.find_first_not_of(" \t\r\n,");
      if (flag == nowhere) return false;
      rest_.remove_prefix(flag + 1);
    }
    return goTo(takePoint(isRelative));
  }

  bool follow(char command) {
    const bool isRelative = std::islower(static_cast<unsigned char>(command)) != 0;
    switch (std::tolower(static_cast<unsigned char>(command))) {
      case 'm':
        return begin(isRelative);
      case 'l':
      case 't':
        return goTo(takePoint(isRelative));
      case 'h':
        return goAlong(&Point::x, isRelative);
      case 'v':
        return goAlong(&Point::y, isRelative);
      case 'c':
        return curve(2, isRelative);
      case 's':
      case 'q':
        return curve(1, isRelative);
      case 'a':
        return arc(isRelative);
      default:
        return false;
    }
  }

  std::string_view rest_;
  Bounds& bounds_;
  Point at_;
  Point start_;
  // Whether the command at hand has had a point.
  bool isBegun_ = false;
};

void addAround(Bounds& bounds, Point middle, double across, double down) {
  for (const double x : {middle.x - across, middle.x + across}) {
    for (const double y : {middle.y - down, middle.y + down}) bounds.add({x, y});
  }
}

}  // namespace

Affine Affine::after(const Affine& inner) const {
  return {a * inner.a + c * inner.b, b * inner.a + d * inner.b,     a * inner.c + c * inner.d,
          b * inner.c + d * inner.d, a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
}

double Affine::scale() const { return std::sqrt(std::abs(a * d - b * c)); }

Affine readTransform(std::string_view text) {
  Affine whole;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,"), text.size()));
    const std::size_t open = text.find('(');
    const std::size_t close = text.find(')');
    if (open == nowhere || close == nowhere || close < open) return whole;
    std::string_view inner = text.substr(open + 1, close - open - 1);
    std::array<double, 6> numbers{};
    std::size_t count = 0;
    while (count < numbers.size()) {
      const auto number = takeNumber(inner);
      if (!number) break;
      numbers[count++] = *number;
    }
    const std::string_view name = text.substr(0, text.find_first_of(" \t\r\n("));
    whole = whole.after(functionOf(name, numbers, count));
    text.remove_prefix(close + 1);
  }
}

Box movedBy(const Affine& transform, const Box& box) {
  Bounds bounds(transform);
  const Point middle = box.centre();
  addAround(bounds, middle, box.width() / 2, box.height() / 2);
  return bounds.box().value_or(Box{});
}

std::optional<Box> boxOfShape(const SvgTags& tag, const Affine& transform) {
  Bounds bounds(transform);
  const auto number = [&](std::string_view name) { return numberIn(tag.valueOf(name)); };
  const std::string_view name = tag.name();
  if (name == "rect") {
    const double across = number("width") / 2;
    const double down = number("height") / 2;
    addAround(bounds, {number("x") + across, number("y") + down}, across, down);
  } else if (name == "circle") {
    addAround(bounds, {number("cx"), number("cy")}, number("r"), number("r"));
  } else if (name == "ellipse") {
    addAround(bounds, {number("cx"), number("cy")}, number("rx"), number("ry"));
  } else if (name == "line") {
    bounds.add({number("x1"), number("y1")});
    bounds.add({number("x2"), number("y2")});
  } else if (name == "polygon" || name == "polyline") {
    std::string_view points = tag.valueOf("points");
    while (const auto x = takeNumber(points)) bounds.add({*x, takeNumber(points).value_or(0)});
  } else if (name == "path") {
    PathReader(tag.valueOf("d"), bounds).read();
  }
  const auto box = bounds.box();
  return box && box->width() + box->height() > 0 ? box : std::nullopt;
}

}  // namespace tern::picture
