#include "tools/import/osm/OsmCarving.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

Shapes shapesIn(const Box& box) {
  return {{{{{box.left, box.top},
             {box.right, box.top},
             {box.right, box.bottom},
             {box.left, box.bottom}}}}};
}

OsmArea areaOf(const std::string& id, const Box& box, const OsmTags& tags) {
  return {id, id, &tags, *osmAreaMeaning(tags), 0, shapesIn(box), {}};
}

class OsmCarving : public testing::Test {
 protected:
  CarvedAreas carve(const std::vector<OsmArea>& drawn) {
    return carved(drawn, obstacles, oddities);
  }

  static double sizeOf(const SiteArea& area) { return areaOf(area.shapes.front()); }

  const OsmTags hall{std::vector<OsmTags::Tag>{{"indoor", "corridor"}}};
  const OsmTags room{std::vector<OsmTags::Tag>{{"indoor", "room"}}};
  const OsmTags shop{std::vector<OsmTags::Tag>{{"indoor", "room"}, {"shop", "books"}}};
  const OsmTags stairs{std::vector<OsmTags::Tag>{{"room", "stairs"}}};
  OsmObstacles obstacles;
  Oddities oddities;
};

TEST_F(OsmCarving, corridorsThatTouchAreOneAndCalledLikeTheLargest) {
  const CarvedAreas made =
      carve({areaOf("a", {0, 0, 5, 4}, hall), areaOf("b", {5, 0, 20, 4}, hall)});
  ASSERT_THAT(made.areas, SizeIs(1));
  EXPECT_EQ(made.areas[0].id, "b");
  EXPECT_NEAR(sizeOf(made.areas[0]), 80, 1e-6);
  EXPECT_THAT(made.uses, ElementsAre(AreaUse::corridor));
}

TEST_F(OsmCarving, roomsAreCutOutOfCorridorsAndSmallRoomsOutOfLargeOnes) {
  const CarvedAreas made =
      carve({areaOf("hall", {0, 0, 20, 10}, hall), areaOf("large", {0, 0, 10, 10}, shop),
             areaOf("small", {2, 2, 4, 4}, room)});
  ASSERT_THAT(made.areas, SizeIs(3));
  EXPECT_NEAR(sizeOf(made.areas[0]), 4, 1e-6);
  EXPECT_NEAR(sizeOf(made.areas[1]), 96, 1e-6);
  EXPECT_NEAR(sizeOf(made.areas[2]), 100, 1e-6);
  EXPECT_THAT(made.uses, ElementsAre(AreaUse::passage, AreaUse::ownRoom, AreaUse::corridor));
}

TEST_F(OsmCarving, stairsKeepTheirPlace) {
  const CarvedAreas made =
      carve({areaOf("room", {2, 2, 4, 4}, room), areaOf("stairs", {0, 0, 10, 10}, stairs)});
  ASSERT_THAT(made.areas, SizeIs(1));
  EXPECT_EQ(made.areas[0].kind, LinkKind::stairs);
  EXPECT_EQ(oddities.told().front().kind, "covered");
}

TEST_F(OsmCarving, eachPieceIsAnAreaOfItsOwn) {
  obstacles.on[0] = shapesIn({9, -1, 11, 5});
  const CarvedAreas made = carve({areaOf("hall", {0, 0, 20, 4}, hall)});
  ASSERT_THAT(made.areas, SizeIs(2));
  EXPECT_EQ(made.areas[0].id, "hall");
  EXPECT_EQ(made.areas[1].id, "hall.2");
}

TEST_F(OsmCarving, buildingsAreCutOutOfTheGroundAlone) {
  obstacles.buildings = shapesIn({0, 0, 10, 10});
  OsmArea square = areaOf("square", {-10, 0, 20, 10}, hall);
  square.meaning.isGround = true;
  const CarvedAreas made = carve({areaOf("hall", {2, 2, 8, 8}, hall), square});
  ASSERT_THAT(made.areas, SizeIs(3));
  EXPECT_THAT(made.uses, ElementsAre(AreaUse::corridor, AreaUse::ground, AreaUse::ground));
  EXPECT_NEAR(sizeOf(made.areas[0]), 36, 1e-6);
  EXPECT_NEAR(sizeOf(made.areas[1]), 100, 1e-6);
}

}  // namespace
}  // namespace tern::imports
