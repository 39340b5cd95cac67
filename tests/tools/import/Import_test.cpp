#include "tools/import/Import.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <unordered_map>
#include <unordered_set>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/RealData.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/DrawnNetwork.hpp"
#include "tests/tools/import/imdf/DrawnImdf.hpp"
#include "tests/tools/import/osm/DrawnOsm.hpp"
#include "tests/tools/import/osm/WrittenPbf.hpp"
#include "tools/check/CheckVenue.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::imports {
namespace {

namespace fs = std::filesystem;

std::string stationPath() { return test::sourcePath("tests/tools/import/station"); }

TEST(Import, formatIsFoundFromTheFiles) {
  const test::TemporaryFolder folder;
  const Imported imported = importSource(stationPath(), folder.at("out"), {});
  ASSERT_FALSE(imported.failure);
  EXPECT_EQ(imported.written.venues.front().name, "station");
  EXPECT_TRUE(imported.written.told.empty());
}

TEST(Import, unitsAndOpeningsOfABuildingBecomeAVenue) {
  const test::TemporaryFolder folder;
  test::DrawnImdf building;
  building.level("ground", 0).unit("hall", "ground", "walkway", {0, 0, 20, 5});
  building.unit("shop", "ground", "retail", {0, 5, 10, 12}, {{"name", "Books"}});
  building.opening("exit", "ground", {9, 0}, {11, 0}).opening("door", "ground", {4, 5}, {5, 5});
  building.writeTo(folder.at("source"));
  for (const char* const format : {"", "imdf"}) {
    const Imported imported = importSource(folder.at("source"), folder.at("out"), {format, {}, {}});
    ASSERT_FALSE(imported.failure);
    EXPECT_EQ(imported.written.venues.front().waypoints, 5U);
    auto loaded = command::loadVenue(folder.at("out"), std::nullopt, std::nullopt);
    ASSERT_EQ(loaded.index(), 0U);
    const auto waypoints = std::get<0>(loaded)->maps->getAllWaypoints();
    EXPECT_FALSE(std::get<0>(loaded)->wayfind(waypoints.front(), waypoints.back(), 0).empty());
  }
  EXPECT_TRUE(importSource(folder.at("source"), folder.at("other"), {"network", {}, {}}).failure);
}

TEST(Import, openStreetMapIsKnownByTheNameOfItsFileOrByHowItBegins) {
  const test::TemporaryFolder folder;
  const std::string block =
      test::pbfBlock({"", "highway", "footway", "level", "0"}, 4, {1, 2, 3, 4});
  folder.write("walk.osm.pbf", test::pbfHeader() + test::pbfBlob({.data = block}));
  const Imported pbf = importSource(folder.at("walk.osm.pbf"), folder.at("pbf"), {});
  ASSERT_FALSE(pbf.failure) << pbf.failure->sentence;
  EXPECT_EQ(pbf.written.venues.front().kinds[0], 1);
  test::DrawnOsm drawn;
  drawn.line(1, {{0, 0}, {9, 0}}, {{"highway", "footway"}, {"level", "0"}});
  drawn.writeTo(folder.at("walk.osm"));
  EXPECT_FALSE(importSource(folder.at("walk.osm"), folder.at("xml"), {}).failure);
  drawn.writeTo(folder.at("walk"));
  EXPECT_FALSE(importSource(folder.at("walk"), folder.at("plain"), {}).failure);
  folder.write("packed", folder.read("walk.osm.pbf"));
  EXPECT_FALSE(importSource(folder.at("packed"), folder.at("other"), {}).failure);
}

TEST(Import, whoCannotClimbStairsTakesTheLiftThatSaysItIsStepFree) {
  const test::TemporaryFolder folder;
  test::DrawnOsm drawn;
  drawn.box(1, {0, 0, 40, 3}, {{"indoor", "corridor"}, {"level", "0"}});
  drawn.box(2, {0, 0, 40, 3}, {{"indoor", "corridor"}, {"level", "1"}});
  drawn.box(3, {0, 3, 3, 6}, {{"indoor", "room"}, {"level", "0"}, {"name", "A"}});
  drawn.box(4, {0, 3, 3, 6}, {{"indoor", "room"}, {"level", "1"}, {"name", "B"}});
  drawn.box(5, {4, 3, 7, 9}, {{"room", "stairs"}, {"level", "0;1"}});
  drawn.box(6, {36, 3, 38, 5}, {{"room", "elevator"}, {"level", "0;1"}, {"wheelchair", "yes"}});
  drawn.writeTo(folder.at("house.osm"));
  ASSERT_FALSE(importSource(folder.at("house.osm"), folder.at("out"), {}).failure);
  const auto loaded = command::loadVenue(folder.at("out"), std::nullopt, std::nullopt);
  ASSERT_EQ(loaded.index(), 0U);
  const auto& venue = std::get<0>(loaded);
  std::map<std::string, std::shared_ptr<TernWaypoint>, std::less<>> waypoints;
  for (const auto& waypoint : venue->maps->getAllWaypoints()) {
    waypoints.emplace(waypoint->externalId.text(), waypoint);
  }
  const auto goesBy = [&](unsigned level, std::string_view mover) {
    const std::int64_t id = waypoints.at(std::string(mover))->id.integer();
    for (const auto& segment :
         venue->wayfind(waypoints.at("way/3/door"), waypoints.at("way/4/door"), level)) {
      for (const auto& node : segment.points) {
        if (node.nodeId() == id) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(goesBy(100, "way/5@0"));
  EXPECT_FALSE(goesBy(0, "way/5@0"));
  EXPECT_TRUE(goesBy(0, "way/6@0"));
}

TEST(Import, sourceThatIsNoBuildingWritesNothing) {
  const test::TemporaryFolder folder;
  folder.write("source/notes.txt", "nothing");
  folder.write("nodes/node.geojson", R"({"features":[{"properties":{"node_id":"a"}}]})");
  for (const char* source : {"source", "nowhere", "nodes", "source/notes.txt"}) {
    const Imported imported = importSource(folder.at(source), folder.at("out"), {});
    ASSERT_TRUE(imported.failure) << source;
    EXPECT_EQ(imported.failure->option, "") << source;
    EXPECT_NE(imported.failure->sentence.find(folder.at(source)), std::string::npos);
    EXPECT_FALSE(fs::exists(folder.at("out"))) << source;
  }
}

TEST(Import, whyThereIsNoBuildingIsSaid) {
  const test::TemporaryFolder folder;
  folder.write("feed/stops.txt", "stop_id");
  folder.write("parts/campus.zip", "PK");
  folder.write("site.osm.gz", "x");
  folder.write("bare", "");
  folder.write("bare.osm", "");
  folder.write("odd.osm", "<osm");
  fs::create_directory(folder.at("empty"));
  for (const auto& [source, why] : {std::pair("feed", " is a transit feed without a pathways.txt"),
                                    {"parts", " holds no more than what is packed in campus.zip"},
                                    {"site.osm.gz", " is packed; unpack it before"},
                                    {"bare", " is empty"},
                                    {"bare.osm", " is empty"},
                                    {"odd.osm", ": line 1: unclosed token"},
                                    {"empty", " holds no files"}}) {
    const Imported imported = importSource(folder.at(source), folder.at("out"), {});
    ASSERT_TRUE(imported.failure) << source;
    EXPECT_TRUE(imported.failure->sentence.starts_with(folder.at(source) + why))
        << imported.failure->sentence;
  }
}

TEST(Import, venueWithinItsSourceIsRefused) {
  const test::TemporaryFolder folder;
  fs::copy(stationPath(), folder.at("site"));
  for (const char* const out : {"site/venue", "site", "site/../site/a/b"}) {
    const Imported imported = importSource(folder.at("site"), folder.at(out), {});
    ASSERT_TRUE(imported.failure) << out;
    EXPECT_EQ(imported.failure->option, "--out");
  }
  EXPECT_FALSE(importSource(folder.at("site"), folder.at("site venue"), {}).failure);
  EXPECT_FALSE(importSource(folder.at("site/"), folder.at("venue"), {}).failure);
}

TEST(Import, folderThatCannotBeWrittenIsNotTheSourcesFault) {
  const test::TemporaryFolder folder;
  folder.write("out/mine.txt", "mine");
  const Imported imported = importSource(stationPath(), folder.at("out"), {});
  ASSERT_TRUE(imported.failure);
  EXPECT_EQ(imported.failure->option, "--out");
}

check::Findings findingsIn(const fs::path& folder) {
  VenueDocuments documents;
  const auto loaded = command::loadVenue(folder, std::nullopt, std::nullopt, &documents);
  return check::checkVenue(check::Subject(*std::get<std::shared_ptr<TernActiveVenue>>(loaded),
                                          documents.venue, documents.buildings));
}

// Nodes on three floors, joined by whatever kind of way.
RC_GTEST_PROP(Import, whatACheckOfAnImportFindsWasTold, ()) {
  test::Tape tape(*test::tapes());
  const std::size_t count = 2 + tape.below(7);
  std::vector<std::size_t> floors;
  test::DrawnNetwork network;
  for (std::size_t i = 0; i < count; ++i) {
    floors.push_back(tape.below(3));
    network.node(std::to_string(i), static_cast<double>(floors[i]),
                 {static_cast<double>(i) * 7, static_cast<double>(i * i)});
  }
  for (std::size_t i = 0; i + 1 < 2 * count; ++i) {
    const std::size_t from = tape.below(count);
    const std::size_t to = (from + 1 + tape.below(count - 1)) % count;
    const bool isLevel = floors[from] == floors[to];
    network.link("link " + std::to_string(i), std::to_string(from), std::to_string(to),
                 {{"route_type", isLevel ? "1" : "5"},
                  {"direction", isLevel ? "1" : std::to_string(1 + tape.below(3))}});
  }
  const test::TemporaryFolder folder;
  network.writeTo(folder.at("site"));
  const Imported imported = importSource(folder.at("site"), folder.at("out"), {});
  RC_ASSERT(!imported.failure);
  bool hasLost = false;
  for (const Oddity& oddity : imported.written.told) {
    hasLost = hasLost || oddity.kind == "island" || oddity.kind == "deadEnd";
  }
  const bool fails = check::hasFailure(findingsIn(folder.at("out")));
  RC_ASSERT(!fails || !imported.written.told.empty());
  RC_ASSERT(fails || !hasLost);
}

struct Site {
  const char* folder;
  const char* nodes;
  const char* links;
  std::size_t nodeCount;
  std::size_t linkCount;
};

Value readFeatures(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return decodeJson(std::move(text).str()).value["features"];
}

// Real buildings, imported once for all tests.
class ImportedSite : public testing::TestWithParam<Site> {
 protected:
  void SetUp() override {
    const auto data = test::realData();
    if (!data) GTEST_SKIP() << test::noRealData;
    const fs::path source = *data / "network" / GetParam().folder;
    nodes = readFeatures(source / GetParam().nodes);
    links = readFeatures(source / GetParam().links);
    const Imported imported = importSource(source, folder.at("out"), {});
    ASSERT_FALSE(imported.failure);
    report = imported.written;
    auto loaded = command::loadVenue(folder.at("out"), std::nullopt, std::nullopt);
    ASSERT_EQ(loaded.index(), 0U);
    venue = std::get<0>(loaded);
    for (const auto& waypoint : venue->maps->getAllWaypoints()) {
      waypoints.emplace(waypoint->externalId.text(), waypoint);
    }
  }

  int levelOf(const TernPath& path) const {
    return static_cast<int>(
        venue->pathTypes->getById(path.pathTypeId.integer())->accessibility.integer());
  }

  std::vector<std::shared_ptr<TernPath>> paths() const {
    std::vector<std::shared_ptr<TernPath>> all;
    for (const auto& map : venue->maps->getAll()) {
      for (const auto& path : map->paths->getAll()) all.push_back(path);
    }
    return all;
  }

  test::TemporaryFolder folder;
  Value nodes;
  Value links;
  WrittenVenues report;
  std::shared_ptr<TernActiveVenue> venue;
  std::map<std::string, std::shared_ptr<TernWaypoint>, std::less<>> waypoints;
};

TEST_P(ImportedSite, everyNodeAndEveryLinkIsThere) {
  EXPECT_EQ(nodes.size(), GetParam().nodeCount);
  EXPECT_EQ(links.size(), GetParam().linkCount);
  for (const Value& node : nodes.items()) {
    EXPECT_TRUE(waypoints.contains(node["properties"]["node_id"].text()));
  }
  std::set<std::string, std::less<>> ids;
  for (const auto& path : paths()) ids.emplace(path->externalId.text());
  for (const Value& link : links.items()) {
    EXPECT_TRUE(ids.contains(link["properties"]["link_id"].text()));
  }
  std::size_t sum = 0;
  for (const int count : report.venues.front().kinds) sum += static_cast<std::size_t>(count);
  EXPECT_EQ(sum, GetParam().linkCount);
}

TEST_P(ImportedSite, everyRecordIsToldOfOnce) {
  std::set<std::string> told;
  for (const Oddity& oddity : report.told) EXPECT_TRUE(told.insert(oddity.id).second);
}

TEST_P(ImportedSite, whatACheckFindsWasTold) {
  std::set<std::string, std::less<>> told;
  for (const Oddity& oddity : report.told) told.insert(oddity.id);
  std::map<std::int64_t, std::string_view> sourceIds;
  for (const auto& [sourceId, waypoint] : waypoints) sourceIds[waypoint->id.integer()] = sourceId;
  for (const check::Finding& finding : findingsIn(folder.at("out"))) {
    if (!check::isFailure(finding.kind)) continue;
    for (const std::int64_t id : finding.ids) {
      const auto waypoint = sourceIds.find(id);
      ASSERT_NE(waypoint, sourceIds.end()) << finding.message;
      // Bends are those of their links.
      const bool isBend = waypoint->second.find('#') != std::string_view::npos;
      EXPECT_TRUE(isBend || told.contains(waypoint->second)) << finding.message;
    }
  }
}

TEST_P(ImportedSite, mapAndGlobeAgreeToACentimetre) {
  constexpr double centimetre = 0.01 / 111'000;  // in degrees
  EXPECT_LT(report.venues.front().residual, 0.01);
  for (const Value& node : nodes.items()) {
    const Value& properties = node["properties"];
    const auto xy = waypoints.find(properties["node_id"].text())->second->coordinates.items();
    const TernCoordinate place = TernUtils::convertToLatLongWithLocalCoordinates(
        TernCoordinate{xy[0].number(), xy[1].number()}, venue.get());
    EXPECT_NEAR(place.x, properties["lon"].number(), centimetre);
    EXPECT_NEAR(place.y, properties["lat"].number(), centimetre);
  }
}

TEST_P(ImportedSite, stairsEscalatorsAndOtherLiftsAreNotStepFree) {
  std::unordered_map<std::string_view, const Value*> sources;
  for (const Value& link : links.items()) {
    sources.emplace(link["properties"]["link_id"].text(), &link["properties"]);
  }
  for (const auto& path : paths()) {
    const std::string_view id = path->externalId.text();
    const Value& source = *sources.at(id.substr(0, id.find('#')));
    const std::string_view type = source["route_type"].text();
    const std::string_view lift = source["elevator"].text();
    const bool isOther = type == "4" && (lift == "2" || lift == "4");
    const bool hasSteps = source["lev_diff"].text() == "2";
    if (type == "5" || type == "6" || isOther || hasSteps) {
      EXPECT_GT(levelOf(*path), 0) << id;
    }
  }
}

TEST_P(ImportedSite, stepFreeRoutesUseStepFreePathsOnly) {
  std::set<std::pair<std::int64_t, std::int64_t>> stepFree;
  for (const auto& path : paths()) {
    if (levelOf(*path) > 0) continue;
    const auto ends = path->waypointIds.items();
    stepFree.insert({ends[0].integer(), ends[1].integer()});
    stepFree.insert({ends[1].integer(), ends[0].integer()});
  }
  const auto all = venue->maps->getAllWaypoints();
  std::mt19937 random(12);
  int found = 0;
  for (int i = 0; i < 200; ++i) {
    std::int64_t before = -1;
    const auto route = venue->wayfind(all[random() % all.size()], all[random() % all.size()], 0);
    if (!route.empty()) ++found;
    for (const auto& segment : route) {
      for (const auto& node : segment.points) {
        const std::int64_t id = node.nodeId();
        EXPECT_TRUE(before == -1 || stepFree.contains({before, id}));
        before = id;
      }
    }
  }
  EXPECT_GT(found, 0);
}

TEST_P(ImportedSite, everythingIsReachedByThoseWhoCanClimbStairs) {
  const auto all = venue->maps->getAllWaypoints();
  for (std::size_t i = 0; i < all.size(); i += 97) {
    if (i == 0) continue;
    EXPECT_FALSE(venue->wayfind(all[0], all[i], 100).empty()) << all[i]->externalId.text();
  }
}

INSTANTIATE_TEST_SUITE_P(Real, ImportedSite,
                         testing::Values(Site{"ShinyokohamaStation", "ShinyokohamaSt_node.geojson",
                                              "ShinyokohamaSt_link.geojson", 237, 272},
                                         Site{"NaritaAirport", "nrt_node.geojson",
                                              "nrt_link.geojson", 3581, 4127},
                                         Site{"NagoyaUnimall", "UniMall_B1_Node.geojson",
                                              "UniMall_B1_Link.geojson", 376, 386}),
                         [](const auto& site) { return std::string(site.param.folder); });

}  // namespace
}  // namespace tern::imports
