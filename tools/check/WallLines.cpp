#include "tools/check/WallLines.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <optional>
#include <string>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::check {

namespace {

// The value of an attribute of a tag; empty without it.
std::string_view attributeOf(std::string_view tag, std::string_view name) {
  const std::string start = " " + std::string(name) + "=\"";
  const std::size_t at = tag.find(start);
  if (at == tag.npos) return {};
  const std::string_view value = tag.substr(at + start.size());
  return value.substr(0, value.find('"'));
}

// Reads the data of a path, whose pen draws one line after the other.
class Pen {
 public:
  explicit Pen(std::string_view data) : rest_(data) {}

  // Nothing when there is anything else than straight lines in it.
  std::optional<std::vector<Segment>> draw() {
    while (skipBlanks()) {
      if (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) {
        command_ = rest_.front();
        rest_.remove_prefix(1);
        if (command_ == 'z' || command_ == 'Z') {
          lineTo(start_);
          continue;
        }
      }
      if (!step()) return std::nullopt;
    }
    return std::move(lines_);
  }

 private:
  // Whether anything is left.
  bool skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" ,\t\r\n"), rest_.size()));
    return !rest_.empty();
  }

  bool read(double& number) {
    if (!skipBlanks()) return false;
    const auto [end, error] = readDouble(rest_.data(), rest_.data() + rest_.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return true;
  }

  bool step() {
    const bool isRelative = std::islower(static_cast<unsigned char>(command_)) != 0;
    const Point base = isRelative ? at_ : Point{0, 0};
    Point to = at_;
    switch (std::toupper(static_cast<unsigned char>(command_))) {
      case 'M':
      case 'L':
        if (!read(to.x) || !read(to.y)) return false;
        to = {base.x + to.x, base.y + to.y};
        break;
      case 'H':
        if (!read(to.x)) return false;
        to.x += base.x;
        break;
      case 'V':
        if (!read(to.y)) return false;
        to.y += base.y;
        break;
      default:
        return false;
    }
    if (command_ != 'M' && command_ != 'm') {
      lineTo(to);
      return true;
    }
    at_ = start_ = to;
    // More pairs behind it are lines.
    command_ = isRelative ? 'l' : 'L';
    return true;
  }

  void lineTo(Point to) {
    if (to != at_) lines_.push_back({at_, to});
    at_ = to;
  }

  std::string_view rest_;
  char command_ = '\0';
  Point at_;
  Point start_;
  std::vector<Segment> lines_;
};

void add(std::vector<Segment>& lines, std::string_view data) {
  const auto drawn = Pen(data).draw();
  if (drawn) lines.insert(lines.end(), drawn->begin(), drawn->end());
}

// How much longer a map unit is than one of the drawing: that of the one group around all of it
// that scales it, where it has one. Nothing when it moves anything in another way.
std::optional<double> scaleOf(std::string_view svg) {
  constexpr std::string_view moving = "transform";
  const std::size_t first = svg.find(moving);
  if (first == svg.npos) return 1;
  constexpr std::string_view group = "><g transform=\"scale(";
  const std::size_t at = svg.find(group);
  const bool isOnlyOne = at != svg.npos && at + group.find(moving) == first &&
                         at == svg.find('>', svg.find("<svg")) &&
                         svg.find(moving, first + 1) == svg.npos;
  if (!isOnlyOne) return std::nullopt;
  const std::string_view rest = svg.substr(at + group.size());
  double scale = 0;
  const auto [end, error] = readDouble(rest.data(), rest.data() + rest.size(), scale);
  const bool isWhole = error == std::errc() &&
                       rest.substr(static_cast<std::size_t>(end - rest.data())).starts_with(")\">");
  return isWhole && scale > 0 && std::isfinite(scale) ? std::optional(scale) : std::nullopt;
}

void scaleBy(std::vector<Segment>& lines, double scale) {
  for (Segment& line : lines) {
    line = {{line.from.x * scale, line.from.y * scale}, {line.to.x * scale, line.to.y * scale}};
  }
}

}  // namespace

WallLines wallLinesOf(std::string_view svg) {
  WallLines lines;
  const bool saysWalls = svg.find("class=\"walls\"") != svg.npos;
  if (!saysWalls || svg.find("viewBox=\"0 0 ") == svg.npos) return lines;
  const auto scale = scaleOf(svg);
  if (!scale) return lines;
  constexpr std::string_view opening = "<path ";
  for (std::size_t at = svg.find(opening); at != svg.npos;) {
    const std::size_t end = std::min(svg.find('>', at), svg.size());
    const std::string_view tag = svg.substr(at, end - at);
    const std::string_view kind = attributeOf(tag, "class");
    if (kind == "walls") add(lines.walls, attributeOf(tag, "d"));
    if (kind == "doors") add(lines.doors, attributeOf(tag, "d"));
    at = svg.find(opening, end);
  }
  scaleBy(lines.walls, *scale);
  scaleBy(lines.doors, *scale);
  return lines;
}

}  // namespace tern::check
