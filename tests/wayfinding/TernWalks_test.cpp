#include "TernCoreKit/wayfinding/TernWalks.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <string>
#include <thread>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

using Ids = std::vector<std::int64_t>;
using Rows = std::vector<TernWalks::Row>;

TernWalks walksIn(const DrawnVenue& venue) {
  TernWalks walks;
  walks.grid = listsOf(venue).makeGrid();
  walks.maps = venue.maps;
  return walks;
}

// A and B lie on one map, C and D on the next one, E on the first again; F stands alone.
const Drawing twoFloorsOfWalks{
    .floors = {{.lines = {"A  B     E  F"}, .mmPerPixel = 100},
               {.lines = {"   C  D   "}, .mmPerPixel = 50}},
    .paths = {"A-B", "B-C lift", "C-D", "D-E stairs"},
    .pathTypes = {{.name = "lift", .weight = 5, .verticalWeight = -1},
                  {.name = "stairs", .weight = 9, .accessibility = 60, .verticalWeight = -1}}};

TEST(TernWalks, aWalkAddsWhatItsSegmentsGrowByOnTheirMapsScales) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  const Rows rows =
      walks.between(Ids{idOf('A')}, Ids{idOf('B'), idOf('D'), idOf('E')}, 100).value();
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0][0], (TernWalk{30, 3000}));
  // A link of another type than the walkway is as long as one unit of the map that it leads to.
  EXPECT_EQ(rows[0][1], (TernWalk{65, 30 * 100 + 31 * 50}));
  EXPECT_EQ(rows[0][2], (TernWalk{74, 30 * 100 + 31 * 50 + 1 * 100}));
}

TEST(TernWalks, aWaypointIsNoWayFromItself) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  EXPECT_EQ(walks.between(Ids{idOf('C')}, Ids{idOf('C')}, 100).value()[0][0], TernWalk());
}

TEST(TernWalks, whereThereIsNoRouteThereIsNoWalk) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  const Rows rows =
      walks.between(Ids{idOf('A'), idOf('F'), 99}, Ids{idOf('F'), idOf('E'), 99}, 59).value();
  EXPECT_EQ(rows[0], TernWalks::Row(3));
  EXPECT_EQ(rows[1], (TernWalks::Row{TernWalk(), {}, {}}));
  EXPECT_EQ(rows[2], TernWalks::Row(3));
  EXPECT_EQ(TernWalks().between(Ids{1}, Ids{1, 2}, 100), Rows{TernWalks::Row(2)});
}

TEST(TernWalks, unknownMapsHaveTheScaleZero) {
  TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  walks.maps = nullptr;
  EXPECT_EQ(walks.between(Ids{idOf('A')}, Ids{idOf('B')}, 100).value()[0][0], (TernWalk{30, 0}));
}

TEST(TernWalks, wantOfMemoryEndsItAndTheNextCallAnswers) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  const Ids all{1, 2, 3, 4, 5, 6};
  const auto expected = walks.between(all, all, 100);
  std::optional<Rows> rows;
  const int failures = forFailingAllocations(
      FailingAllocation::Reach::process, [&] { rows = walks.between(all, all, 100); },
      [&] { EXPECT_TRUE(!rows || rows == expected); });
  EXPECT_GT(failures, 5);
  EXPECT_EQ(walks.between(all, all, 100), expected);
}

TEST(TernWalks, whatTheNodesShowOfTheLastSearchStays) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  TernASSearch search;
  search.grid = walks.grid;
  const TernRoute route = search.search(idOf('A'), idOf('C'), 100).value();
  walks.between(Ids{idOf('E')}, Ids{idOf('A')}, 100);
  EXPECT_EQ(route.back().points.back().g(), 35);
  EXPECT_EQ(search.grid->getNodeById(idOf('C'))->parent(), search.grid->getNodeById(idOf('B')));
}

TEST(TernWalks, severalThreadsMayAskOneGridConcurrently) {
  const TernWalks walks = walksIn(drawVenue(twoFloorsOfWalks));
  const Ids all{1, 2, 3, 4, 5, 6};
  const auto expected = walks.between(all, all, 100);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) EXPECT_EQ(walks.between(all, all, 100), expected);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// --- Laws ---

bool isSame(float a, float b) {
  return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

TernWalk walkAlong(const TernRoute& route, const TernMapCollection& maps) {
  TernWalk walk{route.back().cost, 0};
  float before = 0;
  for (const TernPathPerFloor& segment : route) {
    const auto map = maps.getById(segment.mapId);
    const float scale = map != nullptr ? static_cast<float>(map->mmPerPixel.number()) : 0.0F;
    walk.millimetres += (segment.pixelDistance - before) * scale;
    before = segment.pixelDistance;
  }
  return walk;
}

void blockSome(Tape& tape, TernASGrid& grid) {
  const auto nodes = grid.nodes();
  for (std::size_t i = nodes.empty() ? 0 : tape.below(8); i > 0; --i) {
    const auto& node = nodes[tape.below(std::min<std::size_t>(nodes.size(), 256))];
    const auto& other = nodes[tape.below(std::min<std::size_t>(nodes.size(), 256))];
    if (tape.oneIn(3)) {
      grid.shouldBlockEntryToNode(node, true);
    } else {
      grid.shouldBlockEdgeBetweenNode(node, other, true);
    }
  }
}

// Of venues with blocks, one-ways, levels, ties, negative costs and whatever else there may be.
RC_GTEST_PROP(TernWalks, everyWalkIsThatOfTheRouteOfThePair, ()) {
  CapturedLog log;
  Tape tape(*tapes());
  const VenueLists lists = randomVenue(tape);
  TernASSearch search;
  search.grid = lists.makeGrid();
  search.maps = collect(lists.maps);
  blockSome(tape, *search.grid);
  Ids from;
  Ids to;
  for (int i = 0; i < 6; ++i) from.push_back(randomWaypointId(tape, lists));
  for (int i = 0; i < 12; ++i) to.push_back(randomWaypointId(tape, lists));
  const std::int64_t level = randomAccessLevel(tape);
  TernWalks walks;
  walks.grid = search.grid;
  walks.maps = search.maps;
  const Rows rows = walks.between(from, to, level).value();
  for (std::size_t i = 0; i < from.size(); ++i) {
    for (std::size_t j = 0; j < to.size(); ++j) {
      if (!search.grid->getNodeById(from[i]) || !search.grid->getNodeById(to[j])) {
        RC_ASSERT(!rows[i][j]);
        continue;
      }
      const auto route = search.route(from[i], to[j], level);
      const bool isSelf = from[i] == to[j];
      RC_ASSERT(rows[i][j].has_value() == (route.has_value() || isSelf));
      if (!rows[i][j]) continue;
      const TernWalk walk = isSelf ? TernWalk() : walkAlong(*route, *search.maps);
      RC_ASSERT(isSame(rows[i][j]->cost, walk.cost));
      RC_ASSERT(isSame(rows[i][j]->millimetres, walk.millimetres));
    }
  }
  log.take();
}

}  // namespace
}  // namespace tern::test
