#include "tests/tools/import/ways/MadeArea.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

namespace {

constexpr double roomMetres = 6;

class AreaMaker {
 public:
  AreaMaker(std::uint64_t seed, int rooms) : random_(seed), rooms_(rooms) {}

  MadeArea make(std::size_t places) {
    Shapes whole = joined(roomShapes(), {});
    whole = repaired(cut(whole, things()));
    MadeArea made;
    made.area = *std::ranges::max_element(whole, {}, areaOf);
    for (std::size_t i = 0; i < places / 4 + 2; ++i) made.doors.push_back(onEdge(made.area));
    while (made.places.size() < places) made.places.push_back(within(made.area));
    return made;
  }

 private:
  double number(double least, double most) {
    const double part = static_cast<double>(random_() >> 11U) * 0x1p-53;
    return least + (most - least) * part;
  }
  int whole(int below) { return static_cast<int>(number(0, below)); }

  Point corner(int column, int row) {
    const auto [known, isNew] = corners_.try_emplace({column, row});
    if (isNew) {
      const double most = roomMetres * 0.3;
      known->second = {column * roomMetres + number(-most, most),
                       row * roomMetres + number(-most, most)};
    }
    return known->second;
  }

  Shapes roomShapes() {
    Shapes shapes;
    for (int row = 0; row < rooms_; ++row) {
      for (int column = 0; column < rooms_; ++column) {
        if (number(0, 1) < 0.15) continue;
        shapes.push_back({{{corner(column, row), corner(column + 1, row),
                            corner(column + 1, row + 1), corner(column, row + 1)}}});
      }
    }
    if (shapes.empty()) {
      shapes.push_back({{{corner(0, 0), corner(1, 0), corner(1, 1), corner(0, 1)}}});
    }
    return repaired(shapes);
  }

  // Walls with a gap, and pillars.
  Shapes things() {
    Shapes shapes;
    for (int row = 0; row < rooms_; ++row) {
      for (int column = 0; column < rooms_; ++column) {
        if (number(0, 1) < 0.5) addWall(shapes, corner(column, row), corner(column + 1, row));
        if (number(0, 1) < 0.5) addWall(shapes, corner(column, row), corner(column, row + 1));
        if (number(0, 1) < 0.4) addPillar(shapes, corner(column, row));
      }
    }
    return shapes.empty() ? shapes : repaired(shapes);
  }

  void addWall(Shapes& shapes, Point a, Point b) {
    constexpr double gaps[] = {0.001, 0.05, 0.3, 0.6, 0.9, 1.5, 3};
    const double gap = gaps[static_cast<std::size_t>(whole(7))] / apart(a, b);
    const double middle = number(0.2, 0.8);
    addBar(shapes, a, between(a, b, middle - gap / 2));
    addBar(shapes, between(a, b, middle + gap / 2), b);
  }

  void addBar(Shapes& shapes, Point a, Point b) {
    const Point way = b - a;
    const Point side = Point{-way.y, way.x} * (0.05 / lengthOf(way));
    shapes.push_back({{{a + side, b + side, b - side, a - side}}});
  }

  void addPillar(Shapes& shapes, Point near) {
    const Point middle = near + Point{number(-2, 2), number(-2, 2)};
    const double size = number(0.1, 0.6);
    const int sides = 3 + whole(6);
    const double turn = number(0, 6);
    Line ring;
    for (int i = 0; i < sides; ++i) {
      const double angle = turn + i * 2 * M_PI / sides;
      ring.push_back(middle + Point{std::cos(angle), std::sin(angle)} * size);
    }
    shapes.push_back({{ring}});
  }

  Point onEdge(const Polygon& area) {
    const Line& ring =
        area.rings[static_cast<std::size_t>(whole(static_cast<int>(area.rings.size())))];
    const auto at = static_cast<std::size_t>(whole(static_cast<int>(ring.size())));
    return between(ring[at], ring[(at + 1) % ring.size()], number(0.1, 0.9));
  }

  Point within(const Polygon& area) {
    const double most = (rooms_ + 1) * roomMetres;
    while (true) {
      const Point at{number(-roomMetres, most), number(-roomMetres, most)};
      if (holds(area, at)) return at;
    }
  }

  std::mt19937_64 random_;
  int rooms_;
  std::map<std::pair<int, int>, Point> corners_;
};

}  // namespace

MadeArea madeArea(std::uint64_t seed, int rooms, std::size_t places) {
  return AreaMaker(seed, rooms).make(places);
}

}  // namespace tern::imports
