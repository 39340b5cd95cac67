#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

struct Searched {
  DrawnVenue venue = drawVenue({.floors = {{.lines = {"A--B--C"}}}, .paths = {"A-B", "B-C"}});
  TernASSearch search;

  Searched() {
    search.grid = listsOf(venue).makeGrid();
    search.maps = venue.maps;
  }
};

TEST(TernPathPerFloor, copyHasEveryField) {
  Searched searched;
  TernPathPerFloor segment = searched.search.search(1, 3, 0).value().at(0);
  segment.accessibility = 5;
  segment.obstacles = Value::list({1});
  segment.waypoints = {searched.venue.waypoint('A')};
  const TernPathPerFloor copy = segment.copyWithZone();
  EXPECT_EQ(copy.cost, 60);
  EXPECT_EQ(copy.mapId, 1);
  EXPECT_EQ(copy.mover, segment.mover);
  EXPECT_EQ(copy.pixelDistance, 60);
  EXPECT_EQ(copy.mmDistance, 6000);
  EXPECT_EQ(copy.accessibility, 5);
  EXPECT_EQ(copy.obstacles, Value::list({1}));
  EXPECT_EQ(copy.mapPoints, segment.mapPoints);
  EXPECT_EQ(copy.waypoints, segment.waypoints);
  EXPECT_EQ(lettersOf({copy}), "ABC");
}

TEST(TernPathPerFloor, copyDoesNotChangeWhenTheGridIsSearchedAgain) {
  Searched searched;
  const TernPathPerFloor segment = searched.search.search(1, 3, 0).value().at(0);
  const TernPathPerFloor copy = segment.copyWithZone();
  ASSERT_TRUE(searched.search.search(3, 1, 0));
  EXPECT_EQ(segment.points.at(1).f(), 30);
  EXPECT_EQ(segment.points.at(0).f(), 60) << "the route's own nodes are the grid's";
  EXPECT_EQ(copy.points.at(0).f(), 0);
  EXPECT_EQ(copy.points.at(1).distance(), 30.0F);
  EXPECT_EQ(copy.points.at(2).f(), 60);
}

TEST(TernPathPerFloor, copyOutlivesItsGrid) {
  TernPathPerFloor copy;
  {
    Searched searched;
    copy = searched.search.search(1, 3, 0).value().at(0).copyWithZone();
  }
  EXPECT_EQ(lettersOf({copy}), "ABC");
  EXPECT_EQ(copy.points.at(2).f(), 60);
}

TEST(TernPathPerFloor, copyOfAnEmptySegmentIsEmpty) {
  EXPECT_TRUE(TernPathPerFloor().copyWithZone().points.empty());
}

}  // namespace
}  // namespace tern::test
