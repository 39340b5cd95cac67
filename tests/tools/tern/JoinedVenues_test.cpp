#include "tools/tern/JoinedVenues.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/generate/GenerateVenue.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Two generated venues: map 11 and those behind it are of venue 1, 111 and those behind it of
// venue 2.
class JoinedVenuesTest : public testing::Test {
 protected:
  JoinedVenuesTest() {
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
  ~JoinedVenuesTest() override { joinVenues({}); }

  Arguments callFor(std::int64_t from, std::int64_t to) const {
    Arguments call;
    call.command = "route";
    call.request = Value::map({{"op", "route"}, {"from", from}, {"to", to}});
    return call;
  }
  Answer answerOf(const Arguments& call) const {
    return std::get<Answer>(answerJoinedRoute(call, venues_));
  }
  std::string refusal(std::string request) const {
    return std::string(Requests(venues_).answerText(std::move(request))["error"]["message"].text());
  }

  static constexpr std::int64_t start = 13001;
  static constexpr std::int64_t end = 123001;
  test::TemporaryFolder folder_;
  std::shared_ptr<TernMultiActiveVenues> venues_;
};

TEST_F(JoinedVenuesTest, generatedVenuesReachEachOther) {
  EXPECT_TRUE(venues_->venueConnections().at("1").contains("2"));
  EXPECT_TRUE(venues_->venueConnections().at("2").contains("1"));
  EXPECT_FALSE(findRoute(*venues_, start, end, everyonesLevel).empty());
  EXPECT_FALSE(findRoute(*venues_, end, start, everyonesLevel).empty());
}

TEST_F(JoinedVenuesTest, legsLieOnTheirVenuesMapsInMapUnits) {
  const TernRoute route = findRoute(*venues_, start, end, everyonesLevel);
  const std::vector<VenueLeg> legs = legsOf(*venues_, route);
  ASSERT_EQ(legs.size(), 2U);
  EXPECT_EQ(legs[0].venue->id, Value(1));
  EXPECT_EQ(legs[1].venue->id, Value(2));
  EXPECT_EQ(legs[0].route.size() + legs[1].route.size(), route.size());
  for (const VenueLeg& leg : legs) {
    for (const TernPathPerFloor& segment : leg.route) {
      const TernMap& map = *leg.venue->maps->findById(segment.mapId);
      EXPECT_FLOAT_EQ(segment.mmDistance, segment.pixelDistance * 50);
      for (const TernPoint& point : segment.mapPoints) {
        EXPECT_TRUE(point.x >= 0 && point.x <= map.width.number()) << point.x;
        EXPECT_TRUE(point.y >= 0 && point.y <= map.height.number()) << point.y;
      }
    }
  }
}

TEST_F(JoinedVenuesTest, theRouteSaysWhereOneLeavesAndEnters) {
  const Answer answer = answerOf(callFor(start, end));
  EXPECT_EQ(answer.status, ExitStatus::answered);
  const std::string first(venues_->getVenueById(1)->name.text());
  const std::string second(venues_->getVenueById(2)->name.text());
  EXPECT_THAT(answer.text, StartsWith("In " + first + "\n"));
  EXPECT_THAT(answer.text, HasSubstr("\nLeave " + first + " at waypoint "));
  EXPECT_THAT(answer.text, HasSubstr(" and enter " + second + " at waypoint "));
}

TEST_F(JoinedVenuesTest, thePictureHasALegForEachVenue) {
  Arguments call = callFor(start, end);
  call.picture = folder_.at("route.svg");
  answerOf(call);
  for (const auto& venue : venues_->activeVenues()) {
    EXPECT_THAT(folder_.read("route.svg"), HasSubstr(std::string(venue->name.text())));
  }
}

TEST_F(JoinedVenuesTest, withoutARouteThereIsNothing) {
  const Answer answer = answerOf(callFor(start, 5));
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.remark, "there is no waypoint 5 in these venues");
  Arguments call = callFor(start, start);
  EXPECT_THAT(answerOf(call).text, StartsWith("No route from waypoint 13001"));
  call.json = true;
  EXPECT_EQ(answerOf(call).text, "{\"route\":[]}\n");
}

TEST_F(JoinedVenuesTest, requestsButRoutesNameTheirVenue) {
  Requests requests(venues_);
  const auto ask = [&](std::string request) {
    return encodeJson(requests.answerText(std::move(request)), JsonLayout::compact);
  };
  EXPECT_THAT(ask(R"({"op":"route","from":13001,"to":123001,"id":7})"),
              StartsWith(R"({"id":7,"route":[{"mapId":13,)"));
  EXPECT_EQ(refusal(R"({"op":"center"})"), "center: \"venue\" is missing");
  EXPECT_EQ(refusal(R"({"op":"center","venue":"1"})"), "center: \"venue\" must be a whole number");
  EXPECT_EQ(refusal(R"({"op":"center","venue":3})"), "center: \"venue\" is 3, which is not loaded");
  EXPECT_THAT(refusal(R"({"op":"fly"})"), HasSubstr("\"fly\", which is not known"));
  EXPECT_EQ(refusal(R"({"op":"route","from":1})"), "route: \"to\" is missing");
  EXPECT_NE(ask(R"({"op":"center","venue":1})"), ask(R"({"op":"center","venue":2})"));
}

TEST_F(JoinedVenuesTest, blocksActOnTheVenuesOwnGraph) {
  Requests requests(venues_);
  const auto before = requests.answer(callFor(start, end).request);
  requests.answerText(R"({"op":"blockExit","venue":1,"node":13001,"blocked":true})");
  EXPECT_EQ(requests.answer(callFor(start, end).request), before);
  const auto grid = venues_->getVenueById(1)->globalASGrid();
  EXPECT_TRUE(grid->getNodeById(start)->edges().front().blocked);
}

}  // namespace
}  // namespace tern::command
