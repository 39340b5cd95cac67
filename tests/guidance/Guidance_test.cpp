// What holds for the steps of every route: held against the routes themselves, in venues of many
// makes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/guidance/Landmark.hpp"
#include "TernCoreKit/guidance/TernGuidance.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/guidance/Bearings.hpp"
#include "tests/support/RealData.hpp"
#include "tests/support/TriedVenues.hpp"

namespace tern {
namespace {

using Kind = TernStep::Kind;
using test::degrees;
using test::lengthOf;
using test::sideOf;
using test::wayTo;

constexpr std::int64_t walking = 1;

struct Walked {
  std::int64_t id;
  std::int64_t mapId;
  TernCoordinate at;  // metres
  double mm;          // from the start
  std::int64_t type;  // of the link that leads here
};

struct Told {
  TernRoute route;
  std::vector<Walked> walked;
  std::vector<TernStep> steps;
  // Where each step is on the route.
  std::vector<std::size_t> at;
};

class StepLaws : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    venue = test::triedVenue(GetParam());
    if (venue == nullptr) GTEST_SKIP() << test::noRealData;
  }

  double scaleOf(std::int64_t mapId) const {
    return venue->maps->getById(mapId)->mmPerPixel.number();
  }
  TernCoordinate metresOf(const TernASNode& node) const {
    const double scale = scaleOf(node.mapId()) / 1000;
    return {node.x() * scale, node.y() * scale};
  }

  std::vector<Walked> walkedOf(const TernRoute& route) const {
    std::vector<Walked> all;
    double mm = 0;
    double pixels = 0;
    for (const TernPathPerFloor& segment : route) {
      for (const TernASNode& node : segment.points) {
        const double now = node.distance().value_or(0);
        mm += (now - pixels) * scaleOf(segment.mapId);
        pixels = now;
        all.push_back({node.nodeId(), segment.mapId, metresOf(node), mm, node.usedEdgeTypeId()});
      }
    }
    return all;
  }

  // Calls the check with many routes, always the same.
  template <class Check>
  void forRoutes(int count, Check check) const {
    const auto waypoints = venue->maps->getAllWaypoints();
    const TernGuidance guidance({venue}, venue->globalASGrid());
    std::mt19937 random(7);  // NOLINT: always the same
    const auto any = [&] { return waypoints[random() % waypoints.size()]; };
    int checked = 0;
    while (checked < count) {
      Told told;
      const auto from = any();
      const auto to = any();
      told.route = venue->wayfind(from, to, random() % 2 == 0 ? 100 : 0);
      if (told.route.empty()) continue;
      told.walked = walkedOf(told.route);
      told.steps = guidance.stepsOf(told.route).value();
      ASSERT_FALSE(told.steps.empty());
      for (const TernStep& step : told.steps) {
        std::size_t i = told.at.empty() ? 0 : told.at.back();
        while (i < told.walked.size() && told.walked[i].id != step.at) ++i;
        ASSERT_LT(i, told.walked.size()) << "steps follow the route";
        told.at.push_back(i);
      }
      check(told);
      if (testing::Test::HasFatalFailure()) return;
      ++checked;
    }
  }

  static std::string shown(const Told& told) {
    std::string text;
    for (std::size_t i = 0, s = 0; i < told.walked.size(); ++i) {
      const Walked& node = told.walked[i];
      text += std::to_string(node.id) + " on " + std::to_string(node.mapId) + " at (" +
              std::to_string(node.at.x) + ", " + std::to_string(node.at.y) + ") by " +
              std::to_string(node.type);
      for (; s < told.steps.size() && told.at[s] == i; ++s) text += "  " + told.steps[s].text;
      text += "\n";
    }
    return text;
  }

  std::shared_ptr<TernActiveVenue> venue;
};

TEST_P(StepLaws, theyBeginWithADepartureAndEndWithAnArrival) {
  forRoutes(200, [&](const Told& told) {
    ASSERT_EQ(told.steps.front().kind, Kind::depart);
    ASSERT_EQ(told.steps.back().kind, Kind::arrive);
    for (std::size_t i = 1; i + 1 < told.steps.size(); ++i) {
      ASSERT_NE(told.steps[i].kind, Kind::depart);
      ASSERT_NE(told.steps[i].kind, Kind::arrive);
    }
    for (const TernStep& step : told.steps) ASSERT_FALSE(step.text.empty());
  });
}

TEST_P(StepLaws, theirWalksAddUpToTheRoutes) {
  forRoutes(200, [&](const Told& told) {
    double mm = 0;
    for (const TernStep& step : told.steps) mm += step.mm;
    double walked = 0;
    double before = 0;
    for (const TernPathPerFloor& segment : told.route) {
      walked += (segment.pixelDistance - before) * scaleOf(segment.mapId);
      before = segment.pixelDistance;
    }
    ASSERT_NEAR(mm, walked, 1e-3);
  });
}

TEST_P(StepLaws, everyRideIsOneStep) {
  forRoutes(200, [&](const Told& told) {
    for (std::size_t i = 1; i < told.walked.size(); ++i) {
      if (told.walked[i].type == walking) continue;
      int covering = 0;
      for (std::size_t s = 0; s + 1 < told.steps.size(); ++s) {
        if (told.steps[s].kind != Kind::mover || told.at[s] >= i || told.at[s + 1] < i) continue;
        ASSERT_EQ(told.steps[s].mover, told.walked[i].type);
        ++covering;
      }
      ASSERT_EQ(covering, 1) << "link to " << told.walked[i].id;
    }
    for (std::size_t s = 0; s < told.steps.size(); ++s) {
      if (told.steps[s].kind != Kind::mover) continue;
      ASSERT_NE(told.walked[told.at[s] + 1].type, walking) << "it begins where the step is";
    }
  });
}

TEST_P(StepLaws, noneIsShorterThanAPersonTellsApart) {
  forRoutes(200, [&](const Told& told) {
    for (std::size_t s = 1; s + 1 < told.steps.size(); ++s) {
      if (told.steps[s].kind == Kind::mover) continue;
      ASSERT_GE(told.steps[s].mm, 2999.9) << told.steps[s].text;
    }
  });
}

TEST_P(StepLaws, noLandmarkComesTwiceInARowOrFromAnotherFloor) {
  forRoutes(200, [&](const Told& told) {
    for (std::size_t s = 0; s < told.steps.size(); ++s) {
      const auto& landmark = told.steps[s].landmark;
      if (!landmark) continue;
      const auto destination = venue->destinations->getById(landmark->id);
      ASSERT_NE(destination, nullptr);
      bool isHere = false;
      for (const auto& door : destination->waypoints) {
        isHere = isHere || door->mapId.integer() == told.steps[s].mapId;
      }
      ASSERT_TRUE(isHere);
      if (s > 0 && told.steps[s - 1].landmark && told.steps.size() > 2) {
        ASSERT_NE(landmark, told.steps[s - 1].landmark);
      }
    }
  });
}

// Where one is that far from the beginning; between two nodes of one floor on the way between.
TernCoordinate placeAt(const std::vector<Walked>& walked, double mm) {
  const auto after =
      std::ranges::find_if(walked, [&](const Walked& node) { return node.mm >= mm; });
  if (after == walked.end()) return walked.back().at;
  if (after == walked.begin()) return after->at;
  const Walked& before = *std::prev(after);
  const double share =
      after->mapId == before.mapId ? (mm - before.mm) / (after->mm - before.mm) : 1;
  const TernCoordinate way = wayTo(before.at, after->at);
  return {before.at.x + share * way.x, before.at.y + share * way.y};
}

// From the last five metres before the step to the first eight behind it, as far as these belong
// to no other step and to the same floor; none where there are no five metres on either side.
std::optional<double> bentAt(const Told& told, std::size_t s, double leastMm) {
  const std::vector<Walked>& walked = told.walked;
  const auto isOnFloor = [&](const Walked& node) { return node.mapId == walked[told.at[s]].mapId; };
  std::size_t first = told.at[s];
  while (first > told.at[s - 1] && isOnFloor(walked[first - 1])) --first;
  std::size_t last = told.at[s];
  while (last < told.at[s + 1] && isOnFloor(walked[last + 1])) ++last;
  const double here = walked[told.at[s]].mm;
  if (std::min(here - walked[first].mm, walked[last].mm - here) < leastMm) return std::nullopt;
  const TernCoordinate from = placeAt(walked, std::max(here - 5'000, walked[first].mm));
  const TernCoordinate to = placeAt(walked, std::min(here + 8'000, walked[last].mm));
  return degrees(wayTo(from, walked[told.at[s]].at), wayTo(walked[told.at[s]].at, to));
}

TEST_P(StepLaws, aStartWithoutANameIsCalledByTheLandmarkNearIt) {
  int withoutAName = 0;
  forRoutes(300, [&](const Told& told) {
    const std::string& text = told.steps.front().text;
    const auto start = venue->globalASGrid()->getWPById(told.steps.front().at);
    const auto near = landmarkNear(*venue, *start);
    if (text.find("a place ") == std::string::npos) return;
    const std::string where = near ? "near " + std::string(near->name.text()) : "on ";
    EXPECT_NE(text.find("a place " + where), std::string::npos) << text;
    ++withoutAName;
  });
  EXPECT_GT(withoutAName, 0);
}

TEST_P(StepLaws, theSideOfATurnAgreesWithTheDrawnLine) {
  // In real networks there are steps aside, which seen from afar are straight on, and stubs at
  // doors that lead anywhere.
  const bool isDrawnPlainly = GetParam() == "sample" || GetParam() == "generatedMall";
  const double leastDegrees = isDrawnPlainly ? 0 : -10;
  const double leastMm = isDrawnPlainly ? 0 : 5'000;
  int turns = 0;
  forRoutes(200, [&](const Told& told) {
    for (std::size_t s = 0; s + 1 < told.steps.size(); ++s) {
      if (told.steps[s].kind != Kind::turn) continue;
      const int side = sideOf(told.steps[s].direction);
      const auto bent = bentAt(told, s, leastMm);
      if (side == 0 || !bent) continue;
      ASSERT_GT(side * *bent, leastDegrees) << told.steps[s].text << "\n" << shown(told);
      ++turns;
    }
  });
  EXPECT_GT(turns, 0);
}

// Somebody who has nothing but the steps: goes straight on where ways part, turns where a step says
// so, and takes the mover that it names.
class Follower {
 public:
  explicit Follower(const TernActiveVenue& venue) : grid_(*venue.globalASGrid()), venue_(venue) {}

  // Whether the steps lead from each step's place to the next one's.
  bool arrives(const std::vector<TernStep>& steps) {
    for (std::size_t s = 0; s + 1 < steps.size(); ++s) {
      goal_ = steps[s + 1].at;
      isTurnAhead_ = steps[s + 1].direction.has_value();
      seen_.clear();
      if (!walksOn(steps[s], steps[s].at, std::nullopt, 0)) return false;
    }
    return true;
  }

 private:
  struct Way {
    TernASNode to;
    std::int64_t type;
    double mm;
    TernCoordinate way;
  };

  std::vector<Way> waysFrom(const TernASNode& node) const {
    std::vector<Way> ways;
    const double scale = venue_.maps->getById(node.mapId())->mmPerPixel.number();
    for (const TernNeighbor& neighbor : node.neighbors()) {
      const auto to = grid_.getNodeById(neighbor.neighborId.integer());
      if (!to) continue;
      const double own = venue_.maps->getById(to->mapId())->mmPerPixel.number();
      ways.push_back({*to,
                      neighbor.edgeTypeId.integer(),
                      neighbor.distance * own,
                      {(to->x() - node.x()) * scale, (to->y() - node.y()) * scale}});
    }
    return ways;
  }

  // Whether somebody who comes along `before` goes on that way.
  bool isTaken(const TernStep& step, const Way& way, const std::vector<Way>& ways,
               const std::optional<TernCoordinate>& before, double walked) const {
    if (way.type != walking) return step.kind == Kind::mover && way.type == step.mover;
    if (way.to.mapId() != step.mapId && step.toMapId && *step.toMapId == way.to.mapId())
      return true;
    if (!before) return true;
    // A turn that comes shortly before the next step is told by that one.
    if (isTurnAhead_ && step.mm - walked < 3'000) return true;
    const double own = degrees(*before, way.way);
    // Where a turn is told, and along the corner that it may be.
    const int side = sideOf(step.direction);
    if (step.direction && walked < 11'000 && std::abs(own) > 8 && (side == 0 || side * own > 0)) {
      return true;
    }
    for (const Way& other : ways) {
      if (other.type != walking) continue;
      if (std::abs(degrees(*before, other.way)) + 8 < std::abs(own) && std::abs(own) >= 10) {
        return false;
      }
    }
    return true;
  }

  bool walksOn(const TernStep& step, std::int64_t id, const std::optional<TernCoordinate>& before,
               double walked) {
    if (id == goal_ && std::abs(walked - step.mm) < 1) return true;
    if (walked > step.mm + 1) return false;
    const auto node = grid_.getNodeById(id);
    if (!seen_.insert({id, std::llround(walked)}).second) return false;
    const auto ways = waysFrom(*node);
    for (const Way& way : ways) {
      if (!isTaken(step, way, ways, before, walked)) continue;
      const bool isOnFoot = way.type == walking && way.to.mapId() == node->mapId();
      if (walksOn(step, way.to.nodeId(), isOnFoot ? std::optional(way.way) : std::nullopt,
                  walked + way.mm)) {
        return true;
      }
    }
    return false;
  }

  const TernASGrid& grid_;
  const TernActiveVenue& venue_;
  std::int64_t goal_ = 0;
  bool isTurnAhead_ = false;
  std::set<std::pair<std::int64_t, long long>> seen_;
};

// Only where ways are drawn without wiggles: in real networks doors and the joints of two drawings
// bend what a person calls straight.
class FollowedSteps : public StepLaws {};

TEST_P(FollowedSteps, leadThere) {
  Follower follower(*venue);
  forRoutes(200,
            [&](const Told& told) { ASSERT_TRUE(follower.arrives(told.steps)) << shown(told); });
}

INSTANTIATE_TEST_SUITE_P(In, FollowedSteps, testing::Values("sample", "generatedMall"),
                         [](const auto& venue) { return std::string(venue.param); });
INSTANTIATE_TEST_SUITE_P(In, StepLaws, testing::ValuesIn(test::triedVenues()),
                         [](const auto& venue) { return venue.param; });

}  // namespace
}  // namespace tern
