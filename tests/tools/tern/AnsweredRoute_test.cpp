#include "tools/tern/AnsweredRoute.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::command {
namespace {

TEST(AnsweredRoute, isTheRouteThatWasFound) {
  const auto venue = test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}, {.lines = {"   C"}}},
                                           .paths = {"A-B", "B-C lift"},
                                           .pathTypes = {{.name = "lift", .weight = 0.1}}});
  const auto grid = venue->globalASGrid();
  const TernRoute found = venue->wayfind(grid->getWPById(1), grid->getWPById(3), 100);
  const Value request = Value::map({{"op", "route"}, {"from", 1}, {"to", 3}});
  const Value segments = TernAnswers(venue).answer(request)["route"];
  EXPECT_EQ(startOf(segments), 1);
  EXPECT_EQ(endOf(segments), 3);
  const TernRoute read = routeOf(*venue, segments);
  ASSERT_EQ(read.size(), found.size());
  for (std::size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(read[i].mapId, found[i].mapId);
    EXPECT_EQ(read[i].cost, found[i].cost);
    EXPECT_EQ(read[i].pixelDistance, found[i].pixelDistance);
    EXPECT_EQ(read[i].mmDistance, found[i].mmDistance);
    EXPECT_EQ(read[i].mover, found[i].mover);
    EXPECT_EQ(read[i].mapPoints, found[i].mapPoints);
  }
}

TEST(AnsweredRoute, nullIsANumberThatIsNotFinite) {
  const Value segment = Value::map({{"mapId", 1},
                                    {"mover", nullptr},
                                    {"pixelDistance", nullptr},
                                    {"mapPoints", Value::list({Value::list({nullptr, 2})})}});
  const TernRoute route = routeOf(TernVenueData(), Value::list({segment}));
  EXPECT_TRUE(std::isnan(route.front().pixelDistance));
  EXPECT_TRUE(std::isnan(route.front().mapPoints.front().x));
  EXPECT_EQ(route.front().mover, nullptr);
}

}  // namespace
}  // namespace tern::command
