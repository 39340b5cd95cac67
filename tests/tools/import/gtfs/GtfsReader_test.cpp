#include "tools/import/gtfs/GtfsReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/support/RealData.hpp"
#include "tests/tools/import/gtfs/DrawnFeed.hpp"
#include "tools/import/gtfs/GtfsFeed.hpp"

namespace tern::imports {
namespace {

using test::DrawnFeed;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;

ReadStations readFeed(const DrawnFeed& feed, const StationWish& wish = {}) {
  const TemporaryFolder folder;
  feed.writeTo(folder, "feed");
  return readGtfs(openSource(folder.at("feed")).files, wish);
}

std::map<std::string, std::string> toldOf(const ReadStations& read) {
  std::map<std::string, std::string> told;
  for (const Draft& draft : read.drafts) {
    for (const Oddity& oddity : draft.oddities.told()) told[oddity.id] = oddity.kind;
  }
  return told;
}

// Two stations of a door and a platform each, and a stop by the road.
DrawnFeed town() {
  DrawnFeed feed;
  feed.station("s").station("t", "Town Hall");
  feed.entrance("s-door", DrawnFeed::Metres{0, 0}).platform("s-1", DrawnFeed::Metres{9, 0});
  feed.stop("t-door", 2, DrawnFeed::Metres{500, 0}, {.name = "Door", .parent = "t"});
  feed.stop("t-1", 0, DrawnFeed::Metres{520, 0}, {.name = "Track 1", .parent = "t"});
  feed.stop("road", 0, DrawnFeed::Metres{70, 0}, {.name = "Road", .parent = {}});
  feed.way("s-w", "s-door", "s-1", 1);
  return feed.way("t-w", "t-door", "t-1", 1);
}

TEST(GtfsReader, onlyStationNeedsNoWish) {
  DrawnFeed feed;
  feed.station("s").entrance("a", DrawnFeed::Metres{0, 0}).platform("b", DrawnFeed::Metres{9, 0});
  const ReadStations read = readFeed(feed.way("w", "a", "b", 1));
  ASSERT_EQ(read.error, std::nullopt);
  ASSERT_EQ(read.drafts.size(), 1U);
  EXPECT_EQ(read.drafts[0].id, "s");
  EXPECT_EQ(nameIn(read.drafts[0].names, "en"), "Mill Street");
}

TEST(GtfsReader, ofSeveralStationsOneIsToBeNamed) {
  const ReadStations read = readFeed(town());
  EXPECT_TRUE(read.isOfWish);
  EXPECT_EQ(read.error, "there are 2 with pathways: s (Mill Street), t (Town Hall)");
  EXPECT_THAT(*readFeed(town(), {.station = "u"}).error,
              HasSubstr("there is no station u; there "));
  EXPECT_EQ(readFeed(town(), {.station = "t"}).drafts.front().id, "t");
}

TEST(GtfsReader, allStationsAreDraftsAndWhatIsInNoneIsTold) {
  const ReadStations read = readFeed(town(), {.all = true});
  ASSERT_EQ(read.drafts.size(), 2U);
  EXPECT_EQ(toldOf(read)["road"], "noStation");
  EXPECT_EQ(toldOf(readFeed(town(), {.station = "t"})).count("road"), 0U);
}

TEST(GtfsReader, stationsAreCalledByTheirPublisherElseByTheirFolder) {
  const TemporaryFolder folder;
  town().writeTo(folder, "feed");
  const auto publisher = [&] {
    return readGtfs(openSource(folder.at("feed")).files, {.all = true}).publisher;
  };
  EXPECT_EQ(publisher(), "feed");
  folder.write("feed/agency.txt", "agency_id,agency_name\n1,Mill Lines\n2,Hill Lines\n");
  EXPECT_EQ(publisher(), "Mill Lines");
  folder.write("feed/feed_info.txt", "feed_publisher_name,feed_lang\nTown Transit,en\n");
  EXPECT_EQ(publisher(), "Town Transit");
}

TEST(GtfsReader, stationWithoutPathwaysIsTold) {
  DrawnFeed feed = town().station("u");
  feed.stop("u-1", 0, DrawnFeed::Metres{}, {.name = "Track 1", .parent = "u"});
  const ReadStations read = readFeed(feed, {.all = true});
  EXPECT_EQ(read.drafts.size(), 2U);
  EXPECT_EQ(toldOf(read)["u"], "noPathways");
  EXPECT_EQ(toldOf(read)["u-1"], "noPathways");
  EXPECT_THAT(*readFeed(feed, {.station = "u"}).error, HasSubstr("no pathway leads through u"));
}

TEST(GtfsReader, pathwaysThatLeadNowhereAreTold) {
  DrawnFeed feed = town().way("a", "s-door", "gone", 1).way("b", "s-door", "t-door", 1);
  feed.way("c", "s-door", "s", 1).way("d", "s-door", "road", 1).way("e", "gone", "lost", 1);
  auto told = toldOf(readFeed(feed, {.all = true}));
  EXPECT_EQ(told["a"], "dangling");
  EXPECT_EQ(told["b"], "otherStation");
  EXPECT_EQ(told["c"], "noNode");
  EXPECT_EQ(told["d"], "noStation");
  EXPECT_EQ(told["e"], "dangling");
}

TEST(GtfsReader, entrancesAndNodesWithoutAStationBelongToThatOfTheirPathways) {
  DrawnFeed feed = town().stop("lane", 3, {}, {.parent = {}}).stop("gate", 2, {}, {.parent = {}});
  feed.way("a", "s-door", "lane", 1).way("b", "lane", "gate", 2);
  const ReadStations read = readFeed(feed, {.station = "s"});
  ASSERT_EQ(read.drafts.size(), 1U);
  const auto& nodes = read.drafts.front().nodes;
  EXPECT_TRUE(std::ranges::any_of(nodes, [](const DraftNode& n) { return n.id == "gate"; }));
  EXPECT_EQ(toldOf(read)["gate"], "noStation");
  EXPECT_EQ(toldOf(read)["lane"], "noStation");
}

TEST(GtfsReader, feedWithoutAStationIsAnError) {
  DrawnFeed feed;
  const ReadStations read = readFeed(feed);
  EXPECT_EQ(read.error, "no pathway of the feed leads through a station: there is no pathway");
  EXPECT_FALSE(read.isOfWish);
  feed.stop("a", 0, {}, {.parent = {}}).stop("b", 0, {}, {.parent = {}}).way("ab", "a", "b", 1);
  EXPECT_THAT(*readFeed(feed).error, HasSubstr("no stop is one"));
  feed.station("s");
  EXPECT_THAT(*readFeed(feed).error, HasSubstr("no stop of one belongs to a station"));
}

TEST(GtfsReader, parentsThatGoRoundAreNoStation) {
  DrawnFeed feed = town();
  feed.stop("x", 4, {}, {.parent = "y"}).stop("y", 4, {}, {.parent = "x"});
  EXPECT_EQ(toldOf(readFeed(feed, {.all = true}))["x"], "dangling");
}

// Every pathway is a link, half of one, or told of as left out.
TEST(GtfsReader, bostonComesThroughWhole) {
  const auto data = test::realData();
  if (!data) GTEST_SKIP() << test::noRealData;
  const OpenedSource opened = openSource(*data / "gtfs" / "boston");
  ASSERT_EQ(opened.error, std::nullopt);
  const ReadStations read = readGtfs(opened.files, {.all = true});
  ASSERT_EQ(read.error, std::nullopt);
  EXPECT_EQ(read.drafts.size(), 96U);
  int pathways = 0;
  std::size_t nodes = 0;
  std::map<std::string_view, int> told;
  for (const Draft& draft : read.drafts) {
    nodes += draft.nodes.size();
    for (const DraftLink& link : draft.links) pathways += link.records;
    for (const Oddity& oddity : draft.oddities.told()) ++told[oddity.kind];
  }
  EXPECT_EQ(nodes, 2515U);
  EXPECT_EQ(told["placed"], 866);
  EXPECT_EQ(told["otherStation"], 2);
  EXPECT_EQ(told["dangling"] + told["repeated"] + told["noNode"] + told["unconnected"], 0);
  EXPECT_EQ(pathways + told["otherStation"], 8759);
}

}  // namespace
}  // namespace tern::imports
