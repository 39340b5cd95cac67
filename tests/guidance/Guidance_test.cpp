// What holds for the steps of every route: held against the routes themselves, on the sample venue.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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
#include "tests/support/Paths.hpp"
#include "tools/tern/VenueFolder.hpp"

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

class StepLaws : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    venue = std::get<std::shared_ptr<TernActiveVenue>>(
        command::loadVenue(test::samplePath(), std::nullopt, std::nullopt));
  }
  static void TearDownTestSuite() { venue.reset(); }

  static double scaleOf(std::int64_t mapId) {
    return venue->maps->getById(mapId)->mmPerPixel.number();
  }
  static TernCoordinate metresOf(const TernASNode& node) {
    const double scale = scaleOf(node.mapId()) / 1000;
    return {node.x() * scale, node.y() * scale};
  }

  static std::vector<Walked> walkedOf(const TernRoute& route) {
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

  struct Told {
    TernRoute route;
    std::vector<Walked> walked;
    std::vector<TernStep> steps;
    // Where each step is on the route.
    std::vector<std::size_t> at;
  };

  // Calls the check with many routes, always the same.
  template <class Check>
  static void forRoutes(int count, Check check) {
    const auto waypoints = venue->maps->getAllWaypoints();
    const TernGuidance guidance({venue}, venue->globalASGrid());
    std::mt19937 random(7);  // NOLINT: always the same
    const auto any = [&] { return waypoints[random() % waypoints.size()]; };
    int checked = 0;
    while (checked < count) {
      Told told;
      told.route = venue->wayfind(any(), any(), random() % 2 == 0 ? 100 : 0);
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

  static inline std::shared_ptr<TernActiveVenue> venue;
};

TEST_F(StepLaws, theyBeginWithADepartureAndEndWithAnArrival) {
  forRoutes(200, [](const Told& told) {
    ASSERT_EQ(told.steps.front().kind, Kind::depart);
    ASSERT_EQ(told.steps.back().kind, Kind::arrive);
    for (std::size_t i = 1; i + 1 < told.steps.size(); ++i) {
      ASSERT_NE(told.steps[i].kind, Kind::depart);
      ASSERT_NE(told.steps[i].kind, Kind::arrive);
    }
    for (const TernStep& step : told.steps) ASSERT_FALSE(step.text.empty());
  });
}

TEST_F(StepLaws, theirWalksAddUpToTheRoutes) {
  forRoutes(200, [](const Told& told) {
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

TEST_F(StepLaws, everyRideIsOneStep) {
  forRoutes(200, [](const Told& told) {
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

TEST_F(StepLaws, noneIsShorterThanAPersonTellsApart) {
  forRoutes(200, [](const Told& told) {
    for (std::size_t s = 1; s + 1 < told.steps.size(); ++s) {
      if (told.steps[s].kind == Kind::mover) continue;
      ASSERT_GE(told.steps[s].mm, 2999.9) << told.steps[s].text;
    }
  });
}

TEST_F(StepLaws, noLandmarkComesTwiceInARowOrFromAnotherFloor) {
  forRoutes(200, [](const Told& told) {
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

// What was bent from the step on: as far as a corner goes, and not what is told with the next one.
double bentAt(const std::vector<Walked>& walked, std::size_t at, std::size_t next) {
  double bent = 0;
  for (std::size_t i = std::max<std::size_t>(at, 1); i < next; ++i) {
    if (walked[i].mm - walked[at].mm > 8'000) break;
    if (i > at && walked[next].mm - walked[i].mm < 3'000) break;
    if (walked[i - 1].mapId != walked[i].mapId || walked[i + 1].mapId != walked[i].mapId) continue;
    const auto before = wayTo(walked[i - 1].at, walked[i].at);
    const auto after = wayTo(walked[i].at, walked[i + 1].at);
    if (lengthOf(before) > 0 && lengthOf(after) > 0) bent += degrees(before, after);
  }
  return bent;
}

TEST_F(StepLaws, aStartWithoutANameIsCalledByTheLandmarkNearIt) {
  int withoutAName = 0;
  forRoutes(300, [&](const Told& told) {
    const std::string& text = told.steps.front().text;
    const auto start = venue->globalASGrid()->getWPById(told.steps.front().at);
    const auto near = landmarkNear(*venue, *start);
    if (text.find("a place ") == std::string::npos) return;
    ASSERT_NE(near, nullptr) << text;
    EXPECT_NE(text.find("a place near " + std::string(near->name.text())), std::string::npos);
    ++withoutAName;
  });
  EXPECT_GT(withoutAName, 0);
}

TEST_F(StepLaws, theSideOfATurnAgreesWithTheDrawnLine) {
  int turns = 0;
  forRoutes(200, [&](const Told& told) {
    for (std::size_t s = 0; s + 1 < told.steps.size(); ++s) {
      if (told.steps[s].kind != Kind::turn) continue;
      const int side = sideOf(told.steps[s].direction);
      if (side == 0) continue;
      ASSERT_GT(side * bentAt(told.walked, told.at[s], told.at[s + 1]), 0)
          << told.steps[s].text << "\n"
          << shown(told);
      ++turns;
    }
  });
  EXPECT_GT(turns, 400);
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

TEST_F(StepLaws, whoFollowsThemArrives) {
  Follower follower(*venue);
  forRoutes(200,
            [&](const Told& told) { ASSERT_TRUE(follower.arrives(told.steps)) << shown(told); });
}

}  // namespace
}  // namespace tern
