#include "tools/import/write/WriteVenues.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/DrawnNetwork.hpp"
#include "tools/import/network/NetworkReader.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::imports {
namespace {

namespace fs = std::filesystem;

using test::DrawnNetwork;

// A house of two floors with a lift that is step-free, an escalator up, and stairs.
DrawnNetwork liftHouse() {
  DrawnNetwork network;
  network.node("a", 0, {0, 0},
               {{"lon", DrawnNetwork::globe({0, 0}).longitude},
                {"lat", DrawnNetwork::globe({0, 0}).latitude}});
  network.node("b", 0, {40, 0},
               {{"lon", DrawnNetwork::globe({40, 0}).longitude},
                {"lat", DrawnNetwork::globe({40, 0}).latitude}});
  network.node("c", 1, {0, 0}).node("d", 1, {40, 0});
  network.link("ab", "a", "b").link("cd", "c", "d");
  network.link("lift", "a", "c", {{"route_type", "4"}, {"elevator", "3"}});
  network.link("up", "b", "d", {{"route_type", "5"}, {"direction", "2"}});
  network.link("stairs", "b", "d", {{"route_type", "6"}});
  network.area("Floor", {-5, -5, 45, 15}, {{"id", "g"}, {"ordinal", 0}, {"name", "地上"}});
  network.area("Floor", {-5, -5, 45, 15}, {{"id", "f"}, {"ordinal", 1}, {"name", "二階"}});
  network.point("Facility", {1, 1}, {{"id", "wc"}, {"floor_id", "f"}, {"category", "F001"}});
  network.line("Opening", {39, 1}, {40, 1}, {{"id", "o"}, {"floor_id", "f"}, {"name", "東口"}});
  return network;
}

Draft houseDraft(const DrawnNetwork& network) {
  const test::TemporaryFolder folder;
  network.writeTo(folder.at("house"));
  return readNetwork(openSource(folder.at("house")).files).draft;
}

WrittenVenues writeHouse(const fs::path& folder, const VenueWishes& wishes = {}) {
  const std::vector<Draft> drafts{houseDraft(liftHouse())};
  return writeVenues(drafts, wishes, folder);
}

std::shared_ptr<TernActiveVenue> loaded(const fs::path& folder) {
  auto venue = command::loadVenue(folder, std::nullopt, std::nullopt);
  return std::get<std::shared_ptr<TernActiveVenue>>(venue);
}

std::map<std::string, std::string> contentsOf(const test::TemporaryFolder& folder,
                                              const std::string& name) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name)) {
    if (!entry.is_regular_file()) continue;
    const std::string path = entry.path().lexically_relative(folder.path() / name);
    contents[path] = folder.read(name + "/" + path);
  }
  return contents;
}

std::shared_ptr<TernWaypoint> waypointOf(const TernActiveVenue& venue,
                                         std::string_view externalId) {
  for (const auto& waypoint : venue.maps->getAllWaypoints()) {
    if (waypoint->externalId.text() == externalId) return waypoint;
  }
  ADD_FAILURE() << "no waypoint " << externalId;
  return std::make_shared<TernWaypoint>();
}

// The path types that a route takes, in their order; one after the other is told once.
std::vector<std::int64_t> moversOf(const TernActiveVenue& venue, std::string_view from,
                                   std::string_view to, unsigned accessibility) {
  std::vector<std::int64_t> movers;
  for (const auto& segment :
       venue.wayfind(waypointOf(venue, from), waypointOf(venue, to), accessibility)) {
    if (segment.mover) movers.push_back(segment.mover->id.integer());
  }
  return movers;
}

TEST(WriteVenues, libraryLoadsTheFolder) {
  const test::TemporaryFolder folder;
  const WrittenVenues written = writeHouse(folder.at("out"));
  ASSERT_EQ(written.error, std::nullopt);
  const auto venue = loaded(folder.at("out"));
  EXPECT_EQ(venue->name.text(), "house");
  EXPECT_EQ(venue->maps->getAllWaypoints().size(), 4U);
  ASSERT_EQ(written.venues.size(), 1U);
  EXPECT_EQ(written.venues[0].waypoints, 4U);
  EXPECT_EQ(written.venues[0].paths, 5U);
  EXPECT_EQ(written.venues[0].floors, 2U);
  EXPECT_EQ(written.venues[0].destinations, 1U);
  EXPECT_EQ(written.venues[0].amenities, 1U);
}

TEST(WriteVenues, stepFreeRoutesTakeNothingButTheLift) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(writeHouse(folder.at("out")).error, std::nullopt);
  const auto venue = loaded(folder.at("out"));
  constexpr std::int64_t lift = 2;
  constexpr std::int64_t escalator = 4;
  constexpr std::int64_t stairs = 5;
  EXPECT_EQ(moversOf(*venue, "b", "d", 0).front(), lift);
  EXPECT_EQ(moversOf(*venue, "b", "d", 60).front(), escalator);
  EXPECT_EQ(moversOf(*venue, "d", "b", 60).front(), lift);
  EXPECT_EQ(moversOf(*venue, "d", "b", 100).front(), stairs);
}

TEST(WriteVenues, mapAndGlobeAgree) {
  const test::TemporaryFolder folder;
  const WrittenVenues written = writeHouse(folder.at("out"));
  EXPECT_LT(written.venues[0].residual, 0.001);
  const auto venue = loaded(folder.at("out"));
  for (const auto& [id, at] : {std::pair{"a", Point{0, 0}}, {"b", {40, 0}}}) {
    const auto xy = waypointOf(*venue, id)->coordinates.items();
    const TernCoordinate place = TernUtils::convertToLatLongWithLocalCoordinates(
        {xy[0].number(), xy[1].number()}, venue.get());
    const LonLat expected = DrawnNetwork::globe(at);
    EXPECT_NEAR(place.x, expected.longitude, 1e-8);
    EXPECT_NEAR(place.y, expected.latitude, 1e-8);
  }
}

TEST(WriteVenues, sameSourceGivesTheSameBytes) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(writeHouse(folder.at("one")).error, std::nullopt);
  ASSERT_EQ(writeHouse(folder.at("two")).error, std::nullopt);
  ASSERT_EQ(writeHouse(folder.at("two")).error, std::nullopt);
  EXPECT_EQ(contentsOf(folder, "one"), contentsOf(folder, "two"));
}

TEST(WriteVenues, idsStayWhenTheSourceGrows) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(writeHouse(folder.at("out")).error, std::nullopt);
  const std::int64_t before = waypointOf(*loaded(folder.at("out")), "c")->id.integer();
  DrawnNetwork larger;
  larger.node("0", 0, {-20, 0}).node("a", 0, {0, 0}).node("c", 1, {0, 0});
  larger.link("0a", "0", "a").link("ac", "a", "c", {{"route_type", "6"}});
  const std::vector<Draft> drafts{houseDraft(larger)};
  ASSERT_EQ(writeVenues(drafts, {}, folder.at("out")).error, std::nullopt);
  EXPECT_EQ(waypointOf(*loaded(folder.at("out")), "c")->id.integer(), before);
}

// Each house a venue, in this order; their ids by the houses'.
std::map<std::string, std::int64_t> writeTown(const test::TemporaryFolder& folder,
                                              const std::vector<std::string>& houses) {
  std::vector<Draft> drafts;
  for (const std::string& id : houses) {
    drafts.push_back(houseDraft(liftHouse()));
    drafts.back().id = id;
  }
  EXPECT_EQ(writeVenues(drafts, {.customer = "Town"}, folder.at("out")).error, std::nullopt);
  std::map<std::string, std::int64_t> ids;
  const JsonResult customer = decodeJson(folder.read("out/full.json"));
  EXPECT_EQ(customer.value["name"].text(), "Town");
  for (const Value& venue : customer.value["venues"]["items"].items()) {
    ids.emplace(venue["externalId"].text(), venue["id"].integer());
  }
  return ids;
}

TEST(WriteVenues, idsOfSeveralVenuesDoNotDependOnTheirOrder) {
  const test::TemporaryFolder folder;
  const auto before = writeTown(folder, {"north", "south"});
  ASSERT_EQ(before.size(), 2U);
  EXPECT_NE(before.at("north"), before.at("south"));
  const test::TemporaryFolder elsewhere;
  const auto after = writeTown(elsewhere, {"east", "south", "north"});
  EXPECT_EQ(after.at("north"), before.at("north"));
  EXPECT_EQ(after.at("south"), before.at("south"));
}

TEST(WriteVenues, mapsOfOneVenueAreThoseOfNoOther) {
  const test::TemporaryFolder folder;
  std::set<std::int64_t> maps;
  std::size_t count = 0;
  for (const auto& [externalId, id] : writeTown(folder, {"north", "south"})) {
    const auto loaded = command::loadVenue(folder.at("out"), id, std::nullopt);
    ASSERT_EQ(loaded.index(), 0U);
    for (const auto& map : std::get<0>(loaded)->maps->getAll()) {
      maps.insert(map->id.integer());
      ++count;
    }
  }
  EXPECT_EQ(count, 4U) << "both have the same floors in their source";
  EXPECT_EQ(maps.size(), count);
}

TEST(WriteVenues, numbersOfSeveralVenuesAreKept) {
  const test::TemporaryFolder folder;
  const std::int64_t south = writeTown(folder, {"north", "south"}).at("south");
  const std::string path = "out/venue/" + std::to_string(south) + "/ids.json";
  EXPECT_EQ(decodeJson(folder.read(path)).value["venue"]["south"].integer(), south);
  folder.write(path, R"({"venue":{"south":77},"path":{"ab":12345}})");
  EXPECT_EQ(writeTown(folder, {"east", "north", "south"}).at("south"), 77);
  const JsonResult ids = decodeJson(folder.read("out/venue/77/ids.json"));
  EXPECT_EQ(ids.value["path"]["ab"].integer(), 12345);
  EXPECT_FALSE(fs::exists(folder.at(path)));
}

TEST(WriteVenues, numbersOfTheImportBeforeAreKept) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(writeHouse(folder.at("out")).error, std::nullopt);
  folder.write("out/venue/1/ids.json", R"({"waypoint":{"c":12345}})");
  ASSERT_EQ(writeHouse(folder.at("out")).error, std::nullopt);
  EXPECT_EQ(waypointOf(*loaded(folder.at("out")), "c")->id.integer(), 12345);
  const JsonResult ids = decodeJson(folder.read("out/venue/1/ids.json"));
  EXPECT_EQ(ids.value["waypoint"]["c"].integer(), 12345);
  folder.write("out/venue/1/ids.json", "no JSON");
  EXPECT_EQ(writeHouse(folder.at("out")).error, std::nullopt);
}

TEST(WriteVenues, recordsHaveTheirNamesInEveryLanguage) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(writeHouse(folder.at("out"), {.language = "en"}).error, std::nullopt);
  const auto venue = loaded(folder.at("out"));
  const auto amenities = venue->amenities->getAll();
  ASSERT_EQ(amenities.size(), 1U);
  EXPECT_EQ(amenities[0]->name.text(), "Toilets");
  EXPECT_EQ(amenities[0]->extensors["names"]["ja"].text(), "トイレ");
  const auto destinations = venue->destinations->getAll();
  ASSERT_EQ(destinations.size(), 1U);
  EXPECT_EQ(destinations[0]->name.text(), "東口");
  EXPECT_EQ(destinations[0]->waypoints.size(), 1U);
  const JsonResult locales = decodeJson(folder.read("out/locale/full.json"));
  EXPECT_EQ(locales.value["items"].size(), 5U);
}

TEST(WriteVenues, destinationsAreFoundByTheirKeywords) {
  const test::TemporaryFolder folder;
  std::vector<Draft> drafts{houseDraft(liftHouse())};
  for (DraftPlace& place : drafts.front().places) place.keywords = {"E1"};
  ASSERT_EQ(writeVenues(drafts, {}, folder.at("out")).error, std::nullopt);
  const auto found = loaded(folder.at("out"))->destinations->getByKeyword("E1");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]->name.text(), "東口");
}

TEST(WriteVenues, folderOfOtherThingsIsRefused) {
  const test::TemporaryFolder folder;
  folder.write("out/mine.txt", "mine");
  EXPECT_TRUE(writeHouse(folder.at("out")).error);
  EXPECT_EQ(folder.read("out/mine.txt"), "mine");
}

}  // namespace
}  // namespace tern::imports
