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
#include "tests/guidance/Follower.hpp"
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

// In percent, as measured. In some buildings a hall is drawn as all the straight lines between its
// doors, so that dozens of ways lead straight on; the nodes of some stations are but a few.
const std::map<std::string, double> leastArriving = {
    {"sample", 100},     {"generatedMall", 100}, {"airport", 98},       {"campus", 67},
    {"fireStation", 81}, {"railwayStation", 99}, {"subwayStation", 95}, {"undergroundMall", 96}};

// All but the subway station, a diagram of rides with a few metres between them: whatever is told
// there, all is in sight.
std::vector<std::string> walkedVenues() {
  std::vector<std::string> names = test::triedVenues();
  std::erase(names, "subwayStation");
  return names;
}

// The share of routes, in percent, whose goal somebody finds who has nothing but the steps.
class FollowedSteps : public StepLaws {
 protected:
  // Of the routes whose steps the change changes. Nobody begins or ends on the stairs.
  template <class Change>
  double arriving(Change change) const {
    const test::Follower follower(*venue);
    int arrived = 0;
    int tried = 0;
    forRoutes(200, [&](const Told& told) {
      const std::int64_t start = told.walked.front().id;
      const std::int64_t goal = told.walked.back().id;
      auto steps = test::toldSteps(told.steps);
      if (!follower.isOnFoot(start) || !follower.isOnFoot(goal) || !change(told, steps)) {
        return;
      }
      ++tried;
      const auto end = follower.endOf(start, steps);
      if (end && follower.metresApart(*end, goal) < 3) ++arrived;
    });
    EXPECT_GT(tried, 30);
    return 100.0 * arrived / tried;
  }
};

TEST_P(FollowedSteps, leadThere) {
  const double share = arriving([](const Told&, auto&) { return true; });
  EXPECT_GE(share, leastArriving.at(GetParam()));
}

// That the law can fail: what is told wrong leads few there.
class MistoldSteps : public FollowedSteps {};

TEST_P(MistoldSteps, leadAstrayWithLeftAndRightExchanged) {
  const double share = arriving([](const Told&, std::vector<test::ToldStep>& steps) {
    bool isChanged = false;
    for (test::ToldStep& step : steps) {
      if (sideOf(step.direction) == 0) continue;
      step.direction = test::mirrored(*step.direction);
      isChanged = true;
    }
    return isChanged;
  });
  EXPECT_LT(share, 11);
}

TEST_P(MistoldSteps, leadAstrayWithoutTheTurnsWhereWaysPart) {
  const test::Follower follower(*venue);
  const double share = arriving([&](const Told& told, std::vector<test::ToldStep>& steps) {
    const std::size_t before = steps.size();
    for (std::size_t s = before; s-- > 1;) {
      if (steps[s].kind != Kind::turn || follower.waysFrom(told.steps[s].at) < 3) continue;
      steps[s - 1].metres += steps[s].metres;
      steps.erase(steps.begin() + static_cast<std::ptrdiff_t>(s));
    }
    return steps.size() < before;
  });
  EXPECT_LT(share, 17);
}

TEST_P(MistoldSteps, leadAstrayWithMetresThatAreAThirdMore) {
  const double share = arriving([](const Told&, std::vector<test::ToldStep>& steps) {
    for (test::ToldStep& step : steps) step.metres *= 4.0 / 3;
    return true;
  });
  EXPECT_LT(share, 25);
}

INSTANTIATE_TEST_SUITE_P(In, FollowedSteps, testing::ValuesIn(test::triedVenues()),
                         [](const auto& venue) { return venue.param; });
INSTANTIATE_TEST_SUITE_P(In, MistoldSteps, testing::ValuesIn(walkedVenues()),
                         [](const auto& venue) { return venue.param; });
INSTANTIATE_TEST_SUITE_P(In, StepLaws, testing::ValuesIn(test::triedVenues()),
                         [](const auto& venue) { return venue.param; });

}  // namespace
}  // namespace tern
