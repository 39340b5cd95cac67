#include "tools/import/write/Placement.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tern::imports {
namespace {

constexpr LonLat origin{139.5, 35.5};

DraftNode nodeAt(LonLat place, LonLat said) {
  DraftNode node;
  node.id = std::to_string(place.longitude) + " " + std::to_string(place.latitude);
  node.at = LocalPlane(origin).at(place);
  node.globe = said;
  return node;
}

Draft draftOf(std::vector<DraftNode> nodes) {
  Draft draft;
  draft.plane = LocalPlane(origin);
  draft.nodes = std::move(nodes);
  return draft;
}

// What the library makes of a point of the map: its frame is a box of Web Mercator.
Point mercatorOnMap(const Placement& placement, Point at) {
  const Point topLeft = mercatorOf(placement.topLeft);
  const Point bottomRight = mercatorOf(placement.bottomRight);
  const Point map = placement.onMap(at);
  return {topLeft.x + map.x / placement.widthPx * (bottomRight.x - topLeft.x),
          topLeft.y + map.y / placement.heightPx * (bottomRight.y - topLeft.y)};
}

TEST(Placement, mapAndGlobeAgree) {
  Oddities told;
  const Draft draft =
      draftOf({nodeAt({139.49, 35.48}, {139.49, 35.48}), nodeAt({139.52, 35.51}, {139.52, 35.51}),
               nodeAt({139.50, 35.52}, {139.50, 35.52})});
  const Placement placement = placementOf(draft, told);
  EXPECT_LT(placement.residual, 1e-6);
  for (const DraftNode& node : draft.nodes) {
    const Point found = mercatorOnMap(placement, node.at);
    EXPECT_NEAR(found.x, mercatorOf(*node.globe).x, 1e-6);
    EXPECT_NEAR(found.y, mercatorOf(*node.globe).y, 1e-6);
  }
}

TEST(Placement, whatNodesSayIsMetInTheMiddle) {
  // Two nodes in one place, ten centimetres to either side of it.
  const double aside = 0.1 / 5198411.206 * 180 / 3.141592653589793;
  Oddities told;
  const Placement placement =
      placementOf(draftOf({nodeAt(origin, {origin.longitude - aside, origin.latitude}),
                           nodeAt(origin, {origin.longitude + aside, origin.latitude})}),
                  told);
  EXPECT_NEAR(placement.residual, 0.1, 1e-6);
  EXPECT_NEAR(mercatorOnMap(placement, {0, 0}).x, mercatorOf(origin).x, 1e-6);
}

TEST(Placement, nodeThatNamesAnotherPlaceIsToldAndNotCounted) {
  Oddities told;
  const Draft draft = draftOf({nodeAt(origin, origin), nodeAt({139.501, 35.5}, {139.501, 35.5}),
                               nodeAt({139.502, 35.5}, {140, 36})});
  const Placement placement = placementOf(draft, told);
  EXPECT_LT(placement.residual, 1e-6);
  ASSERT_EQ(told.told().size(), 1U);
  EXPECT_EQ(told.told()[0].kind, "misplaced");
  EXPECT_EQ(told.told()[0].id, draft.nodes[2].id);
}

TEST(Placement, planeItselfSaysWhereNodesDoNot) {
  Draft draft = draftOf({nodeAt(origin, origin)});
  draft.nodes[0].globe.reset();
  Oddities told;
  const Placement placement = placementOf(draft, told);
  EXPECT_NEAR(mercatorOnMap(placement, {0, 0}).x, mercatorOf(origin).x, 1e-6);
  EXPECT_NEAR(mercatorOnMap(placement, {0, 0}).y, mercatorOf(origin).y, 1e-6);
}

TEST(Placement, mapHoldsAllThatIsDrawnWithAMargin) {
  Draft draft = draftOf({nodeAt(origin, origin)});
  draft.walls.push_back({0, {{-100, 0}, {0, 40}}});
  Oddities told;
  const Placement placement = placementOf(draft, told);
  EXPECT_EQ(placement.mmPerPixel, 50);
  EXPECT_EQ(placement.widthPx, 2200);
  EXPECT_EQ(placement.heightPx, 1000);
  EXPECT_EQ(placement.onMap({-100, 0}), (Point{100, 100}));
}

TEST(Placement, largeSitesHaveLargerMapUnits) {
  Draft draft = draftOf({nodeAt(origin, origin)});
  draft.walls.push_back({0, {{0, 0}, {2000, 0}}});
  Oddities told;
  const Placement placement = placementOf(draft, told);
  EXPECT_EQ(placement.mmPerPixel, 100);
  EXPECT_EQ(placement.widthPx, 20100);
}

}  // namespace
}  // namespace tern::imports
