#include "tools/import/gtfs/GtfsFeed.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view stops = "stop_id,stop_name,location_type,parent_station\ns,Mill,1,\n";
constexpr std::string_view pathways =
    "pathway_id,from_stop_id,to_stop_id,pathway_mode,is_bidirectional,length,signposted_as\n"
    "w,a,b,5,0,12.5,Trains\n";

class Feed {
 public:
  Feed(std::string_view stopRows, std::string_view pathwayRows) {
    folder.write("stops.txt", stopRows);
    folder.write("pathways.txt", pathwayRows);
  }
  std::optional<std::string> read() { return feed.read(openSource(folder.path()).files); }
  std::vector<std::string> told() const {
    std::vector<std::string> told;
    for (const Oddity& oddity : feed.told().told()) {
      told.push_back(oddity.id + " " + std::string(oddity.kind));
    }
    return told;
  }

  TemporaryFolder folder;
  GtfsFeed feed;
};

TEST(GtfsFeed, rowsComeThrough) {
  Feed feed(stops, pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_EQ(feed.feed.stops()[*feed.feed.stopOf("s")].name, "Mill");
  ASSERT_EQ(feed.feed.pathways().size(), 1U);
  const GtfsPathway& way = feed.feed.pathways()[0];
  EXPECT_EQ(way.mode, PathwayMode::elevator);
  EXPECT_FALSE(way.isBothWays);
  EXPECT_EQ(way.length, 12.5);
  EXPECT_EQ(way.steps, std::nullopt);
  EXPECT_EQ(way.signpostedAs, "Trains");
  EXPECT_THAT(feed.told(), IsEmpty());
}

TEST(GtfsFeed, bytesThatAreNotUtf8AreLettersOfWindowsAndTold) {
  Feed feed(
      "stop_id,stop_name,location_type\ns,S\xFC"
      "d,1\n",
      pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_EQ(feed.feed.stops()[0].name, "Süd");
  EXPECT_THAT(feed.told(), ElementsAre("stops.txt encoding"));
}

TEST(GtfsFeed, aTableInUtf16IsSaidToBe) {
  Feed feed(std::string_view("\xFF\xFEs\0", 4), pathways);
  EXPECT_EQ(feed.read(), "stops.txt is written in UTF-16, not in UTF-8");
}

TEST(GtfsFeed, feedMayLieInAFolderOfItsOwn) {
  const TemporaryFolder folder;
  folder.write("town/stops.txt", stops);
  folder.write("town/pathways.txt", pathways);
  const SourceFiles files = openSource(folder.path()).files;
  EXPECT_TRUE(GtfsFeed::isIn(files));
  GtfsFeed feed;
  EXPECT_EQ(feed.read(files), std::nullopt);
  EXPECT_EQ(feed.stops().size(), 1U);
}

TEST(GtfsFeed, otherFeedsOfASourceAreTold) {
  Feed feed(stops, pathways);
  feed.folder.write("other/stops.txt", stops);
  feed.folder.write("other/pathways.txt", pathways);
  EXPECT_EQ(feed.read(), std::nullopt);
  EXPECT_THAT(feed.told(), ElementsAre("other/stops.txt notRead"));
}

TEST(GtfsFeed, withoutItsColumnsThereIsNoFeed) {
  EXPECT_THAT(*Feed("stop_name\nMill\n", pathways).read(), HasSubstr("no column stop_id"));
  EXPECT_THAT(*Feed(stops, "pathway_id\nw\n").read(), HasSubstr("no column from_stop_id"));
  const TemporaryFolder folder;
  folder.write("stops.txt", stops);
  EXPECT_FALSE(GtfsFeed::isIn(openSource(folder.path()).files));
}

TEST(GtfsFeed, columnsThatAreNotReadAreTold) {
  Feed feed("stop_id,colour\ns,red\n", pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_THAT(feed.told(), ElementsAre("stops.txt: colour notRead"));
}

TEST(GtfsFeed, repeatedAndNamelessRowsAreTold) {
  Feed feed("stop_id,location_type\ns,1\ns,0\n,0\nx,7\n", pathways);
  feed.folder.write("levels.txt", "level_id,level_index\nl,1\nl,2\nm,up\n");
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_EQ(feed.feed.stops().size(), 1U);
  EXPECT_EQ(feed.feed.level("l")->index, 1);
  EXPECT_THAT(feed.told(), ElementsAre("levels.txt#2 repeated", "m noFloor", "stops.txt#2 repeated",
                                       "stops.txt#3 unknownKind", "x unknownKind"));
}

TEST(GtfsFeed, raggedRowsAreMarked) {
  Feed feed("stop_id,stop_name\ns\n", pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_TRUE(feed.feed.stops()[0].isRagged);
}

TEST(GtfsFeed, zeroAndWhatIsNotOnTheGlobeAreNoPlace) {
  Feed feed("stop_id,stop_lat,stop_lon\na,0,0\nb,99,5\nc,x,5\nd,42.5,-71\n", pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_FALSE(feed.feed.stops()[i].place) << i;
  EXPECT_EQ(feed.feed.stops()[3].place->latitude, 42.5);
}

TEST(GtfsFeed, translationsAreByIdOrByText) {
  Feed feed("stop_id,stop_name\na,Bahnhof\nb,Markt\n", pathways);
  feed.folder.write("feed_info.txt", "feed_publisher_name,feed_lang\nX,de\n");
  feed.folder.write("translations.txt",
                    "table_name,field_name,language,translation,record_id,field_value\n"
                    "stops,stop_name,en,Station,a,\nstops,stop_name,en,Market,,Markt\n"
                    "routes,route_long_name,en,Line,a,\n");
  ASSERT_EQ(feed.read(), std::nullopt);
  EXPECT_EQ(feed.feed.language(), "de");
  EXPECT_EQ(nameIn(feed.feed.stopNames(feed.feed.stops()[0]), "de"), "Bahnhof");
  EXPECT_EQ(nameIn(feed.feed.stopNames(feed.feed.stops()[0]), "en"), "Station");
  EXPECT_EQ(nameIn(feed.feed.stopNames(feed.feed.stops()[1]), "en"), "Market");
}

TEST(GtfsFeed, everyChangeOfAFileChangesTheStamp) {
  Feed feed(stops, pathways);
  ASSERT_EQ(feed.read(), std::nullopt);
  Feed other(stops, std::string(pathways) + "v,a,b,1,1,,\n");
  ASSERT_EQ(other.read(), std::nullopt);
  EXPECT_NE(feed.feed.stamp(), other.feed.stamp());
}

}  // namespace
}  // namespace tern::imports
