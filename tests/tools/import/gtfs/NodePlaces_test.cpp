#include "tools/import/gtfs/NodePlaces.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tern::imports {
namespace {

double metresBetween(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

PlacedNode at(double x, double y, std::size_t floor = 0) { return {Point{x, y}, floor, {}}; }
PlacedNode unplaced(std::size_t floor = 0) { return {std::nullopt, floor, {5, 5}}; }

TEST(NodePlaces, whatIsSaidStays) {
  const std::vector<PlacedNode> nodes{at(1, 2), at(1, 2)};
  const auto places = placesOf(nodes, {});
  EXPECT_EQ(places[0], (Point{1, 2}));
  EXPECT_EQ(places[1], (Point{1, 2}));
}

TEST(NodePlaces, nodesLieBetweenTheirNeighboursByLength) {
  const std::vector<PlacedNode> nodes{at(0, 0), unplaced(), unplaced(), at(100, 0)};
  const auto places = placesOf(nodes, std::vector<PlacedLink>{{0, 1, 10}, {1, 2, 30}, {2, 3, 60}});
  EXPECT_NEAR(metresBetween(places[1], {10, 0}), 0, 0.1);
  EXPECT_NEAR(metresBetween(places[2], {40, 0}), 0, 0.1);
}

TEST(NodePlaces, whatHangsAtAnEndIsAsFarAsItsPathwayIsLong) {
  const std::vector<PlacedNode> nodes{at(0, 0), at(20, 0), unplaced(), unplaced()};
  const auto places = placesOf(nodes, std::vector<PlacedLink>{{0, 1, 20}, {1, 2, 7}, {2, 3, 4}});
  EXPECT_NEAR(metresBetween(places[1], places[2]), 7, 1e-6);
  EXPECT_NEAR(metresBetween(places[2], places[3]), 4, 1e-6);
  EXPECT_GT(places[2].x, 20);
}

TEST(NodePlaces, liftStandsOverItself) {
  const std::vector<PlacedNode> nodes{at(3, 4, 0), unplaced(1)};
  EXPECT_NEAR(metresBetween(placesOf(nodes, std::vector<PlacedLink>{{0, 1, 2}})[1], {3, 4}), 0,
              1e-6);
}

TEST(NodePlaces, neverTwoAtOnePoint) {
  std::vector<PlacedNode> nodes{at(0, 0), at(10, 0)};
  std::vector<PlacedLink> links;
  for (std::size_t i = 0; i < 60; ++i) {
    links.push_back({0, nodes.size(), 3});
    if (i % 2 == 0) links.push_back({nodes.size(), 1, 3});
    nodes.push_back(unplaced());
  }
  const auto places = placesOf(nodes, links);
  for (std::size_t i = 0; i < places.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j)
      EXPECT_GT(metresBetween(places[i], places[j]), 0.3) << i << " " << j;
  }
}

TEST(NodePlaces, partWithoutAnyPlaceLiesAboutItsFallback) {
  const std::vector<PlacedNode> nodes{unplaced(), unplaced()};
  const auto places = placesOf(nodes, std::vector<PlacedLink>{{0, 1, 6}});
  EXPECT_EQ(places[0], (Point{5, 5}));
  EXPECT_NEAR(metresBetween(places[0], places[1]), 6, 1e-6);
}

}  // namespace
}  // namespace tern::imports
