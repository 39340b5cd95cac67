#include "tools/import/network/NetworkReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/DrawnDraft.hpp"
#include "tests/tools/import/DrawnNetwork.hpp"

namespace tern::imports {
namespace {

using test::DrawnNetwork;
using testing::ElementsAre;
using testing::IsEmpty;

Draft draftOf(const DrawnNetwork& network) {
  return test::drawnDraft(network, "site", readNetwork);
}

std::vector<std::string> kindsTold(const Draft& draft) {
  std::vector<std::string> kinds;
  for (const Oddity& oddity : draft.oddities.told()) kinds.emplace_back(oddity.kind);
  return kinds;
}

// Two nodes on the ground and one above.
DrawnNetwork house() {
  DrawnNetwork network;
  network.node("a", 0, {0, 0}).node("b", 0, {30, 0}).node("c", 1, {30, 8});
  return network.link("ab", "a", "b").link("bc", "b", "c", {{"route_type", "6"}});
}

TEST(NetworkReader, nodesAndLinksComeThrough) {
  const Draft draft = draftOf(house());
  ASSERT_EQ(draft.nodes.size(), 3U);
  ASSERT_EQ(draft.links.size(), 2U);
  EXPECT_EQ(draft.links[1].kind, LinkKind::stairs);
  EXPECT_EQ(draft.links[1].id, "bc");
  EXPECT_THAT(kindsTold(draft), IsEmpty());
}

TEST(NetworkReader, metresAreTrue) {
  const Draft draft = draftOf(house());
  EXPECT_NEAR(draft.nodes[1].at.x - draft.nodes[0].at.x, 30, 1e-3);
  EXPECT_NEAR(draft.nodes[2].at.y - draft.nodes[0].at.y, 8, 1e-3);
}

TEST(NetworkReader, nodesThatAllLieFarFromOneAnotherAreNoNetwork) {
  DrawnNetwork network;
  network.node("a", 0, {0, 0}).node("b", 0, {1e5, 2e5}).node("c", 0, {2e5, 1e5});
  const test::TemporaryFolder folder;
  network.writeTo(folder.at("site"));
  const ReadDraft read = readNetwork(openSource(folder.at("site")).files);
  EXPECT_EQ(read.error, "no node of the network lies near the others");
}

TEST(NetworkReader, ordinalsAreFloorsHalfOnesToo) {
  const Draft draft = draftOf(house().node("d", -0.5, {0, 5}).node("e", 0, {9, 9}));
  ASSERT_EQ(draft.floors.size(), 3U);
  EXPECT_EQ(draft.floors[0].ordinal, -0.5);
  EXPECT_EQ(nameIn(draft.floors[0].names, "ja"), "-0.5");
  EXPECT_EQ(draft.nodes[3].floor, 0U);
  EXPECT_EQ(draft.nodes[4].floor, 1U);
}

TEST(NetworkReader, ordinalMayBeATextAndMinusZeroIsZero) {
  DrawnNetwork network = house();
  network.point("Node", {5, 5}, {{"node_id", "d"}, {"ordinal", "1.0"}});
  network.point("Node", {6, 5}, {{"node_id", "e"}, {"ordinal", -0.0}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.floors.size(), 2U);
  EXPECT_EQ(draft.nodes[3].floor, 1U);
}

TEST(NetworkReader, aNodeWithoutAnOrdinalLiesOnTheStoreyThatItSays) {
  DrawnNetwork network = house();
  network.point("Node", {5, 5}, {{"node_id", "d"}, {"floor", "B1"}});
  network.point("Node", {6, 5}, {{"node_id", "e"}, {"floor", 2}});
  network.point("Node", {7, 5}, {{"node_id", "f"}, {"ordinal", 0}, {"floor", 9}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.nodes.size(), 6U);
  EXPECT_EQ(draft.floors[draft.nodes[3].floor].ordinal, -1);
  EXPECT_EQ(draft.floors[draft.nodes[4].floor].ordinal, 1);
  EXPECT_EQ(draft.floors[draft.nodes[5].floor].ordinal, 0);
}

TEST(NetworkReader, aNodeWithoutAShapeLiesWhereItsColumnsSay) {
  DrawnNetwork network = house();
  const LonLat at = DrawnNetwork::globe({12, 5});
  // A point off the globe is none.
  network.point("Node", {1e9, 0},
                {{"node_id", "d"}, {"ordinal", 0}, {"lon", at.longitude}, {"lat", at.latitude}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.nodes.size(), 4U);
  EXPECT_NEAR(draft.nodes[3].at.x - draft.nodes[0].at.x, 12, 1e-3);
}

TEST(NetworkReader, aNetworkOfStreetsLiesOnTheGround) {
  DrawnNetwork network;
  network.point("Node", {0, 0}, {{"node_id", "a"}}).point("Node", {9, 0}, {{"node_id", "b"}});
  network.line("Link", {0, 0}, {9, 0},
               {{"link_id", "ab"}, {"start_id", "a"}, {"end_id", "b"}, {"route_type", 1}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.links.size(), 1U);
  ASSERT_EQ(draft.floors.size(), 1U);
  EXPECT_EQ(draft.floors[0].ordinal, 0);
  EXPECT_THAT(kindsTold(draft), ElementsAre("noLevels"));
}

TEST(NetworkReader, aNetworkOfWhichNoNodeCountsSaysWhy) {
  DrawnNetwork network;
  network.point("Node", {5, 5}, {{"node_id", "d"}, {"ordinal", "roof"}});
  const test::TemporaryFolder folder;
  network.writeTo(folder.at("site"));
  EXPECT_EQ(readNetwork(openSource(folder.at("site")).files).error,
            "no node of the network has a floor and a place; d: The node has no ordinal.");
}

TEST(NetworkReader, partsWithOneOrdinalAreOneFloor) {
  DrawnNetwork network = house();
  network.area("Floor", {0, 0, 20, 20},
               {{"id", "f1"}, {"ordinal", 0}, {"name", "地上"}, {"short_name", "GF"}});
  network.area("Floor", {20, 0, 40, 20}, {{"id", "f2"}, {"ordinal", 0}, {"name", nullptr}});
  network.area("Space", {22, 2, 30, 9}, {{"id", "s"}, {"floor_id", "f2"}, {"category", "B001"}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.floors.size(), 2U);
  EXPECT_EQ(draft.floors[0].shapes.size(), 2U);
  EXPECT_EQ(draft.floors[0].id, "f1");
  EXPECT_EQ(nameIn(draft.floors[0].names, "ja"), "地上");
  EXPECT_EQ(nameIn(draft.floors[0].shortNames, "ja"), "GF");
  ASSERT_EQ(draft.areas.size(), 1U);
  EXPECT_EQ(draft.areas[0].floor, 0U);
}

TEST(NetworkReader, entranceIsWhereInsideAndOutsideMeet) {
  const Draft draft = draftOf(house().node("d", 0, {1, 1}, {{"in_out", "2"}}));
  EXPECT_FALSE(draft.nodes[0].isEntrance);
  EXPECT_TRUE(draft.nodes[3].isEntrance);
}

TEST(NetworkReader, bendsAreThePointsBetween) {
  DrawnNetwork network = house();
  network.link("curve", "a", "b", {}, {{10, 5}, {20, 5}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.links.back().bends.size(), 2U);
  EXPECT_NEAR(draft.links.back().bends[0].x - draft.nodes[0].at.x, 10, 1e-3);
}

TEST(NetworkReader, linkWithoutItsNodesIsToldOf) {
  DrawnNetwork network = house();
  network.line("Link", {0, 0}, {1, 1},
               {{"link_id", "bad"}, {"start_id", "a"}, {"end_id", "nobody"}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.links.size(), 2U);
  ASSERT_EQ(draft.oddities.told().size(), 1U);
  EXPECT_EQ(draft.oddities.told()[0].id, "bad");
  EXPECT_EQ(draft.oddities.told()[0].kind, "dangling");
}

TEST(NetworkReader, whatIsThereTwiceCountsOnce) {
  DrawnNetwork network = house();
  network.node("a", 1, {50, 50}).link("ab", "b", "a");
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.nodes.size(), 3U);
  EXPECT_EQ(draft.links.size(), 2U);
  EXPECT_THAT(kindsTold(draft), ElementsAre("repeated", "repeated"));
}

TEST(NetworkReader, nodesWithoutAFloorOrAPlaceAreToldOf) {
  DrawnNetwork network = house();
  network.point("Node", {5, 5}, {{"node_id", "d"}, {"ordinal", nullptr}});
  network.line("Node", {5, 5}, {6, 6}, {{"node_id", "e"}, {"ordinal", 0}});
  network.node("f", 0, {5e5, 0});
  network.node("g", 1e9, {5, 0});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.nodes.size(), 3U);
  EXPECT_THAT(kindsTold(draft), ElementsAre("noFloor", "noPlace", "noFloor", "far"));
}

TEST(NetworkReader, linkFromANodeToItselfIsToldOf) {
  DrawnNetwork network = house();
  network.link("aa", "a", "a");
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.links.size(), 2U);
  EXPECT_THAT(kindsTold(draft), ElementsAre("zeroLength"));
}

TEST(NetworkReader, lineThatEndsBesideItsNodeIsToldOf) {
  DrawnNetwork network = house();
  network.line("Link", {0, 3}, {30, 0},
               {{"link_id", "loose"}, {"start_id", "a"}, {"end_id", "b"}, {"route_type", "1"}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.links.size(), 3U);
  EXPECT_THAT(kindsTold(draft), ElementsAre("looseEnd"));
}

TEST(NetworkReader, wayOfUnknownKindIsToldOf) {
  DrawnNetwork network = house();
  network.link("bus", "a", "b", {{"route_type", "99"}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(draft.links.back().kind, LinkKind::unknown);
  EXPECT_THAT(kindsTold(draft), ElementsAre("unknownKind"));
}

TEST(NetworkReader, liftsAreStepFreeWhereTheirLandingsSaySo) {
  DrawnNetwork network = house();
  network.node("cabin", 0, {2, 0}).node("cabin up", 1, {2, 0});
  network.link("in", "a", "cabin", {{"route_type", "4"}, {"elevator", "3"}});
  network.link("shaft", "cabin", "cabin up", {{"route_type", "4"}, {"elevator", "1"}});
  network.link("out", "cabin up", "c", {{"route_type", "4"}, {"elevator", "5"}});
  const Draft draft = draftOf(network);
  for (std::size_t i = 2; i < 5; ++i) EXPECT_EQ(draft.links[i].kind, LinkKind::stepFreeLift);
}

// A plan of the ground floor.
DrawnNetwork planned() {
  DrawnNetwork network = house();
  network.area("Floor", {-10, -10, 50, 40}, {{"id", "f"}, {"ordinal", 0}});
  return network;
}

TEST(NetworkReader, facilitiesAreAmenitiesAtTheNearestNode) {
  DrawnNetwork network = planned();
  network.point("Facility", {28, 2}, {{"id", "wc"}, {"floor_id", "f"}, {"category", "F001"}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.places.size(), 1U);
  EXPECT_TRUE(draft.places[0].names.empty());
  EXPECT_THAT(draft.places[0].nodes, ElementsAre(1U));
  EXPECT_EQ(draft.categories[draft.places[0].category].id, "toilets");
}

TEST(NetworkReader, namedFacilityIsADestinationToo) {
  DrawnNetwork network = planned();
  network.point("Facility", {1, 2},
                {{"id", "x"}, {"floor_id", "f"}, {"category", "F108"}, {"name", "3A"}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.places.size(), 2U);
  EXPECT_EQ(draft.places[1].names.front().text, "出口3A");
  EXPECT_EQ(draft.places[1].names.front().language, "ja");
}

TEST(NetworkReader, namedRoomsAndOpeningsAreDestinations) {
  DrawnNetwork network = planned();
  network.area("Space", {20, 2, 30, 9},
               {{"id", "s"}, {"floor_id", "f"}, {"category", "B001"}, {"name", "喫茶店"}});
  network.area("Space", {5, 2, 9, 9},
               {{"id", "t"}, {"floor_id", "f"}, {"category", "B021"}, {"name", "中央階段"}});
  network.line("Opening", {0, 1}, {1, 1}, {{"id", "o"}, {"floor_id", "f"}, {"name", "東口"}});
  network.line("Opening", {3, 1}, {4, 1}, {{"id", "p"}, {"floor_id", "f"}, {"name", nullptr}});
  const Draft draft = draftOf(network);
  ASSERT_EQ(draft.places.size(), 2U);
  EXPECT_EQ(draft.places[0].id, "s");
  EXPECT_EQ(draft.places[1].id, "o");
  EXPECT_EQ(draft.doors.size(), 2U);
  EXPECT_EQ(draft.areas.size(), 2U);
}

TEST(NetworkReader, placeFarFromEveryWayIsToldOf) {
  DrawnNetwork network = planned();
  network.point("Facility", {-40, 0}, {{"id", "wc"}, {"floor_id", "f"}, {"category", "F001"}});
  const Draft draft = draftOf(network);
  EXPECT_TRUE(draft.places.empty());
  EXPECT_THAT(kindsTold(draft), ElementsAre("unreached"));
}

TEST(NetworkReader, recordsThatAreNotUnderstoodAreToldOf) {
  DrawnNetwork network = planned();
  network.point("Facility", {1, 1}, {{"id", "1"}, {"floor_id", "f"}, {"category", "F999"}});
  network.point("Facility", {1, 1}, {{"id", "2"}, {"floor_id", "g"}, {"category", "F001"}});
  network.point("Space", {1, 1}, {{"id", "3"}, {"floor_id", "f"}, {"category", "B001"}});
  network.point("TWSI_Point", {1, 1}, {{"id", "4"}, {"floor_id", "f"}});
  const Draft draft = draftOf(network);
  EXPECT_THAT(kindsTold(draft), ElementsAre("noShape", "unknownKind", "dangling", "notRead"));
}

TEST(NetworkReader, siteOrBuildingGivesNameAndAddress) {
  DrawnNetwork network = planned();
  network.area("Site", {0, 0, 9, 9},
               {{"id", "1"}, {"name", "港の駅"}, {"city", "港市"}, {"address1", "一番"}});
  const Draft draft = draftOf(network);
  EXPECT_EQ(nameIn(draft.names, "ja"), "港の駅");
  EXPECT_EQ(draft.buildings.front().address, "港市一番");
  EXPECT_EQ(nameIn(draftOf(planned()).names, "ja"), "site");
}

TEST(NetworkReader, networkWithoutNodesIsNone) {
  const test::TemporaryFolder folder;
  folder.write("site/node.geojson", R"({"features":[{"properties":{"node_id":"a"}}]})");
  EXPECT_TRUE(readNetwork(openSource(folder.at("site")).files).error);
}

TEST(NetworkReader, moreFloorsThanABuildingHasAreRefused) {
  DrawnNetwork network;
  for (int i = 0; i <= 500; ++i) network.node(std::to_string(i), i / 2.0, {0, 0});
  const test::TemporaryFolder folder;
  network.writeTo(folder.at("site"));
  EXPECT_TRUE(readNetwork(openSource(folder.at("site")).files).error);
}

// Whatever stands in the files, reading them ends, and what comes of it hangs together.
TEST(NetworkReader, brokenFilesDoNoHarm) {
  const test::TemporaryFolder folder;
  DrawnNetwork network = planned();
  network.area("Space", {20, 2, 30, 9}, {{"id", "s"}, {"floor_id", "f"}, {"category", "B007"}});
  network.point("Facility", {1, 2}, {{"id", "x"}, {"floor_id", "f"}, {"category", "F108"}});
  network.writeTo(folder.at("site"));
  for (const char* file : {"Node", "Link", "Floor", "Space", "Facility"}) {
    const std::string name = std::string("site/Site_") + file + ".geojson";
    const std::string whole = folder.read(name);
    for (std::size_t cut = 0; cut < whole.size(); cut += 7) {
      std::string broken = whole;
      broken[cut] = "0\"]}{[,x"[cut % 8];
      folder.write(name, broken);
      const ReadDraft read = readNetwork(openSource(folder.at("site")).files);
      for (const DraftNode& node : read.draft.nodes) {
        ASSERT_LT(node.floor, read.draft.floors.size());
        ASSERT_LE(std::hypot(node.at.x, node.at.y), 30'000);
      }
      for (const DraftLink& link : read.draft.links) {
        ASSERT_LT(std::max(link.from, link.to), read.draft.nodes.size());
      }
      for (const DraftPlace& place : read.draft.places) {
        ASSERT_LT(place.nodes.front(), read.draft.nodes.size());
      }
    }
    folder.write(name, whole);
  }
}

}  // namespace
}  // namespace tern::imports
