#include "TernCoreKit/wayfinding/TernNeighbor.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASEdge.hpp"

namespace tern {
namespace {

const TernASEdge edge = TernASEdge::initASEdge(17, {3, 4}, 2, 1.5, 100, 0.5, 1);

TEST(TernNeighbor, takesIdAndPlaceFromTheWaypointAndTheRestFromTheEdge) {
  TernWaypoint waypoint;
  waypoint.id = 4;
  waypoint.coordinates = Value::list({12.5, 7});
  const TernNeighbor neighbor = TernNeighbor::initNeighbor(&waypoint, edge, 3.25F, 1, 200);
  EXPECT_EQ(neighbor.neighborId, Value(4));
  EXPECT_EQ(neighbor.x, Value(12.5));
  EXPECT_EQ(neighbor.y, Value(7));
  EXPECT_EQ(neighbor.acc, Value(100));
  EXPECT_EQ(neighbor.edgeId, Value(17));
  EXPECT_EQ(neighbor.edgeTypeId, Value(2));
  EXPECT_EQ(neighbor.cost, 3.25F);
  EXPECT_EQ(neighbor.distance, 1.0F);
  EXPECT_EQ(neighbor.z, 200.0F);
}

TEST(TernNeighbor, toNoWaypointHasNeitherIdNorPlace) {
  const TernNeighbor neighbor = TernNeighbor::initNeighbor(nullptr, edge, 3.25F, 1, 0);
  EXPECT_TRUE(neighbor.neighborId.isAbsent());
  EXPECT_TRUE(neighbor.x.isAbsent());
  EXPECT_TRUE(neighbor.y.isAbsent());
  EXPECT_EQ(neighbor.edgeId, Value(17));
  EXPECT_EQ(neighbor.cost, 3.25F);
}

TEST(TernNeighbor, coordinatesThatAreMissingAreAbsent) {
  TernWaypoint waypoint;
  waypoint.id = 4;
  waypoint.coordinates = Value::list({12.5});
  const TernNeighbor neighbor = TernNeighbor::initNeighbor(&waypoint, edge, 0, 1, 0);
  EXPECT_EQ(neighbor.x, Value(12.5));
  EXPECT_TRUE(neighbor.y.isAbsent());
}

}  // namespace
}  // namespace tern
