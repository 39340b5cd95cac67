#include "tools/tern/JoinedRouteCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/generate/GenerateVenue.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Two generated venues: map 11 and those behind it are of venue 1, 111 and those behind it of
// venue 2.
class JoinedRouteCommandTest : public testing::Test {
 protected:
  JoinedRouteCommandTest() {
    generate::GenerateOptions options;
    options.venues = 2;
    options.shops = 12;
    EXPECT_EQ(generate::generateVenueFolder(options, folder_.path()), std::nullopt);
    std::vector<std::shared_ptr<TernActiveVenue>> loaded;
    for (const std::int64_t id : {1, 2}) {
      loaded.push_back(
          std::get<std::shared_ptr<TernActiveVenue>>(loadVenue(folder_.path(), id, std::nullopt)));
    }
    venues_ = joinVenues(loaded);
  }
  ~JoinedRouteCommandTest() override { joinVenues({}); }

  Arguments callFor(std::int64_t from, std::int64_t to) const {
    Arguments call;
    call.request = Value::map({{"op", "route"}, {"from", from}, {"to", to}});
    return call;
  }
  Answer answerOf(const Arguments& call) const {
    return std::get<Answer>(answerJoinedRoute(call, venues_));
  }
  Value routeBetween(std::int64_t from, std::int64_t to) const {
    return TernAnswers(venues_).answer(callFor(from, to).request)["route"];
  }

  static constexpr std::int64_t start = 13001;
  static constexpr std::int64_t end = 123001;
  test::TemporaryFolder folder_;
  std::shared_ptr<TernMultiActiveVenues> venues_;
};

TEST_F(JoinedRouteCommandTest, generatedVenuesReachEachOther) {
  EXPECT_TRUE(venues_->venueConnections().at("1").contains("2"));
  EXPECT_TRUE(venues_->venueConnections().at("2").contains("1"));
  EXPECT_GT(routeBetween(start, end).size(), 0U);
  EXPECT_GT(routeBetween(end, start).size(), 0U);
}

TEST_F(JoinedRouteCommandTest, legsLieOnTheirVenuesMapsInMapUnits) {
  const Value route = routeBetween(start, end);
  const std::vector<VenueLeg> legs = legsOf(*venues_, route);
  ASSERT_EQ(legs.size(), 2U);
  EXPECT_EQ(legs[0].venue->id, Value(1));
  EXPECT_EQ(legs[1].venue->id, Value(2));
  EXPECT_EQ(legs[0].segments.size() + legs[1].segments.size(), route.size());
  for (const VenueLeg& leg : legs) {
    for (const TernPathPerFloor& segment : routeOf(*leg.venue, leg.segments)) {
      const TernMap& map = *leg.venue->maps->findById(segment.mapId);
      EXPECT_FLOAT_EQ(segment.mmDistance, segment.pixelDistance * 50);
      for (const TernPoint& point : segment.mapPoints) {
        EXPECT_TRUE(point.x >= 0 && point.x <= map.width.number()) << point.x;
        EXPECT_TRUE(point.y >= 0 && point.y <= map.height.number()) << point.y;
      }
    }
  }
}

TEST_F(JoinedRouteCommandTest, fromAWaypointToItselfNoWayIsNeeded) {
  Arguments call = callFor(end, end);
  EXPECT_EQ(answerOf(call).status, ExitStatus::answered);
  EXPECT_THAT(answerOf(call).text, testing::EndsWith(": you are there already\n"));
  call.request.set("to", Value::list({start, end}));
  EXPECT_EQ(answerOf(call).status, ExitStatus::answered) << "a place that one stands at a door of";
  call.json = true;
  EXPECT_EQ(answerOf(call).status, ExitStatus::answered);
  EXPECT_EQ(answerOf(call).text, "{\"route\":[]}\n");
}

TEST_F(JoinedRouteCommandTest, theRouteSaysWhereOneLeavesAndEnters) {
  const Answer answer = answerOf(callFor(start, end));
  EXPECT_EQ(answer.status, ExitStatus::answered);
  const std::string first(venues_->getVenueById(1)->name.text());
  const std::string second(venues_->getVenueById(2)->name.text());
  EXPECT_THAT(answer.text, StartsWith("From near Lumen Department Store (waypoint 13001)"));
  EXPECT_THAT(answer.text, HasSubstr("\n" + first + ", "));
  EXPECT_THAT(answer.text, HasSubstr(". Go on into " + second));
  EXPECT_THAT(answer.text, HasSubstr("\n" + second + ", "));
}

TEST_F(JoinedRouteCommandTest, thePictureHasALegForEachVenue) {
  Arguments call = callFor(start, end);
  call.picture = folder_.at("route.svg");
  answerOf(call);
  for (const auto& venue : venues_->activeVenues()) {
    EXPECT_THAT(folder_.read("route.svg"), HasSubstr(std::string(venue->name.text())));
  }
}

TEST_F(JoinedRouteCommandTest, ofAPlaceTheCheapestWaypointIsTheGoal) {
  Arguments call = callFor(start, end);
  call.json = true;
  const std::string single = answerOf(call).text;
  call.request.set("to", Value::list({5, 111008, end, 113001}));
  const auto costTo = [&](std::int64_t goal) {
    return routeBetween(start, goal).items().back()["cost"].number();
  };
  const std::int64_t cheapest =
      std::ranges::min({std::int64_t{111008}, end, std::int64_t{113001}}, {}, costTo);
  const Value route = routeBetween(start, cheapest);
  EXPECT_EQ(answerOf(call).text, jsonLine(Value::map({{"route", route}})));
  call.request.set("to", Value::list({5, end}));
  EXPECT_EQ(answerOf(call).text, single);
}

TEST_F(JoinedRouteCommandTest, withoutARouteThereIsNothing) {
  const Answer answer = answerOf(callFor(start, 5));
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.remark, "there is no waypoint 5 in these venues");
  Arguments call = callFor(start, end);
  call.request.set("accessibility", -1);
  EXPECT_EQ(answerOf(call).status, ExitStatus::nothingFound);
  EXPECT_THAT(answerOf(call).text,
              StartsWith("No route from near Lumen Department Store (waypoint 13001)"));
  call.json = true;
  EXPECT_EQ(answerOf(call).text, "{\"route\":[]}\n");
}

// A route from a waypoint to itself is a line in the log, which counts the searches for it.
TEST_F(JoinedRouteCommandTest, theRouteIsSearchedOnce) {
  Arguments call = callFor(start, start);
  call.json = true;
  int searches = 0;
  setLogSink([&](std::string_view line) { searches += line == "Tern SDK: NO PATH" ? 1 : 0; });
  answerOf(call);
  setLogSink({});
  EXPECT_EQ(searches, 1);
}

}  // namespace
}  // namespace tern::command
