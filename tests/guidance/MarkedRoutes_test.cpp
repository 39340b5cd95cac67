// The steps of routes through real buildings, held against the turns that a person marked.
#include "tests/guidance/MarkedRoutes.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/guidance/TernGuidance.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/guidance/Bearings.hpp"
#include "tests/support/PedestrianNetwork.hpp"
#include "tests/support/RealData.hpp"

namespace tern {
namespace {

using Kind = TernStep::Kind;
using test::lengthOf;
using test::sideOf;
using test::wayTo;

struct Network {
  const char* nodes;
  const char* links;
};

Network networkOf(test::Place place) {
  switch (place) {
    case test::Place::station:
      return {"ShinyokohamaStation/ShinyokohamaSt_node.geojson",
              "ShinyokohamaStation/ShinyokohamaSt_link.geojson"};
    case test::Place::airport:
      return {"NaritaAirport/nrt_node.geojson", "NaritaAirport/nrt_link.geojson"};
    case test::Place::mall:
      break;
  }
  return {"NagoyaUnimall/UniMall_B1_Node.geojson", "NagoyaUnimall/UniMall_B1_Link.geojson"};
}

// Blocks every way but that along the nodes; what lies between two of them is a chain of bends,
// which have larger ids than all nodes.
class OnlyWay {
 public:
  OnlyWay(TernASGrid& grid, const std::vector<int>& nodes, std::int64_t lastNode)
      : grid_(grid), lastNode_(lastNode) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const std::int64_t before = i > 0 ? nodes[i - 1] + 1 : 0;
      const std::int64_t after = i + 1 < nodes.size() ? nodes[i + 1] + 1 : 0;
      const TernASNode here = *grid.getNodeById(nodes[i] + 1);
      for (const TernNeighbor& neighbor : here.neighbors()) {
        const std::int64_t end = endOfBends(here.nodeId(), neighbor.neighborId.integer());
        if (end == before || end == after) continue;
        blocked_.emplace_back(here, *grid.getNodeById(neighbor.neighborId.integer()));
        grid.shouldBlockEdgeBetweenNode(here, blocked_.back().second, true);
      }
    }
  }
  ~OnlyWay() {
    for (const auto& [from, to] : blocked_) grid_.shouldBlockEdgeBetweenNode(from, to, false);
  }
  OnlyWay(const OnlyWay&) = delete;
  OnlyWay& operator=(const OnlyWay&) = delete;

 private:
  std::int64_t endOfBends(std::int64_t from, std::int64_t id) const {
    while (id > lastNode_) {
      std::int64_t next = from;
      for (const TernNeighbor& neighbor : grid_.getNodeById(id)->neighbors()) {
        if (neighbor.neighborId.integer() != from) next = neighbor.neighborId.integer();
      }
      from = std::exchange(id, next);
      if (id == from) break;
    }
    return id;
  }

  TernASGrid& grid_;
  std::int64_t lastNode_;
  std::vector<std::pair<TernASNode, TernASNode>> blocked_;
};

char letterOf(const TernStep& step) {
  using enum TernDirection;
  const bool isAround =
      step.direction == around || step.direction == sharpLeft || step.direction == sharpRight;
  return isAround ? 'A' : sideOf(step.direction) < 0 ? 'L' : 'R';
}

// Metres from the beginning to each node, along the line that is drawn.
std::map<std::int64_t, double> metresTo(const TernRoute& route) {
  std::map<std::int64_t, double> metres;
  std::optional<TernCoordinate> last;
  double walked = 0;
  for (const TernPathPerFloor& segment : route) {
    for (const TernASNode& node : segment.points) {
      const TernCoordinate at{node.x() / 10, node.y() / 10};
      if (last) walked += lengthOf(wayTo(*last, at));
      last = at;
      metres.try_emplace(node.nodeId(), walked);
    }
  }
  return metres;
}

struct Tally {
  int asMarked = 0;
  int missed = 0;
  int unmarked = 0;
  double steps = 0;
  double kilometres = 0;
};

void compare(const test::MarkedRoute& marked, const TernRoute& route,
             const std::vector<TernStep>& steps, Tally& tally) {
  const auto metres = metresTo(route);
  std::vector<TernStep> told;
  for (const TernStep& step : steps) {
    if (step.direction && step.kind != Kind::arrive) told.push_back(step);
  }
  for (const test::MarkedTurn& turn : marked.turns) {
    const auto found = std::ranges::find_if(told, [&](const TernStep& step) {
      return std::abs(metres.at(step.at) - turn.metres) < 5 && letterOf(step) == turn.side;
    });
    ++(found != told.end() ? tally.asMarked : tally.missed);
    if (found != told.end()) told.erase(found);
  }
  // A turn that is part of a ride may be one at its landing, which nobody marked.
  std::erase_if(told, [](const TernStep& step) { return step.kind == Kind::mover; });
  tally.unmarked += static_cast<int>(told.size());
  tally.steps += static_cast<double>(steps.size());
  tally.kilometres += metres.at(steps.back().at) / 1000;
}

// The figures of docs/guidance.md.
TEST(MarkedRoutes, tellsTheTurnsThatAPersonMarkedInRealBuildings) {
  const auto data = test::realData();
  if (!data) GTEST_SKIP() << test::noRealData;
  Tally tally;
  for (const test::Place place : {test::Place::station, test::Place::airport, test::Place::mall}) {
    const Network files = networkOf(place);
    const auto building =
        test::networkVenue(*data / "network" / files.nodes, *data / "network" / files.links);
    const auto grid = building->globalASGrid();
    std::int64_t lastNode = place == test::Place::station   ? 237
                            : place == test::Place::airport ? 3581
                                                            : 376;
    for (const test::MarkedRoute& marked : test::markedRoutes) {
      if (marked.place != place) continue;
      const OnlyWay only(*grid, marked.nodes, lastNode);
      const TernRoute route = building->wayfind(grid->getWPById(marked.nodes.front() + 1),
                                                grid->getWPById(marked.nodes.back() + 1), 100);
      ASSERT_FALSE(route.empty());
      compare(marked, route, TernGuidance({building}, grid).stepsOf(route).value(), tally);
    }
  }
  EXPECT_GE(tally.asMarked, 57);
  EXPECT_LE(tally.missed, 1);
  EXPECT_LE(tally.unmarked, 1);
  EXPECT_NEAR((tally.asMarked + tally.missed) / tally.kilometres, 25.3, 0.05);
  EXPECT_NEAR(tally.steps / tally.kilometres, 43.2, 0.05);
}

}  // namespace
}  // namespace tern
