#include "TernCoreKit/guidance/detail/StepPlan.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TernCoreKit/guidance/detail/MapPlaces.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern::detail {
namespace {

using test::Drawing;

// The letters of the nodes where another way goes straighter on. A character is a metre.
std::string partingsOn(const Drawing& drawing, char from, char to) {
  const auto venue = test::loadDrawnVenue(drawing);
  const TernRoute way =
      venue->wayfind(test::waypointAt(*venue, from), test::waypointAt(*venue, to), 100);
  const std::vector<std::shared_ptr<const TernVenueData>> venues{venue};
  MapPlaces places(venues);
  const WalkedRoute route = walkedRoute(way, places);
  std::string letters;
  for (const std::size_t i : partings(route, *venue->globalASGrid(), places)) {
    letters += static_cast<char>('A' + route.nodes[i].id - 1);
  }
  return letters;
}

const Drawing fork{.floors = {{.lines = {"A   B   C   D", "", "", "            E"}}},
                   .paths = {"A-B", "B-C", "C-D", "C-E"}};

TEST(StepPlan, whereAnotherWayGoesStraighterOnWaysPart) {
  EXPECT_EQ(partingsOn(fork, 'A', 'E'), "C");
}

TEST(StepPlan, whoGoesStraightOnPartsFromNothing) { EXPECT_EQ(partingsOn(fork, 'A', 'D'), ""); }

TEST(StepPlan, whatIsBehindOneOnAnotherFloorIsNotLookedAt) {
  // From B, seen on one plane, the way to F is straight and that to E bends.
  const Drawing floors{
      .floors = {{.lines = {"    B     A"}},
                 {.lines = {"", "", "", "       CD   E", "", "", "            F"}}},
      .paths = {"A-B", "B-C lift", "C-D", "D-E", "D-F"},
      .pathTypes = {{.name = "lift", .weight = 5}},
      .connectors = {{2, "B C"}}};
  EXPECT_EQ(partingsOn(floors, 'A', 'F'), "D");
}

}  // namespace
}  // namespace tern::detail
