// Whatever the service sends: the library gives what it can of it and never falls over.
#include "tests/support/Mutations.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/Paths.hpp"

namespace tern::test {
namespace {

struct Documents {
  Value venue;
  std::vector<Value> buildings;
};

Value readDocument(const std::string& path) {
  std::ifstream file(samplePath() + "/" + path);
  std::stringstream text;
  text << file.rdbuf();
  JsonResult result = decodeJson(std::move(text).str());
  EXPECT_FALSE(result.error) << path << ": " << *result.error;
  return std::move(result.value);
}

const Documents& sample() {
  static const Documents documents{
      readDocument("venue/1/full.json"),
      {readDocument("venue/1/building/1/full.json"), readDocument("venue/1/building/2/full.json")}};
  return documents;
}

std::shared_ptr<TernActiveVenue> assemble(Documents documents) {
  auto venue = TernActiveVenue::initWithDictionary(std::move(documents.venue));
  std::int64_t id = 0;
  for (Value& building : documents.buildings) addBuilding(*venue, ++id, std::move(building));
  attachWaypoints(*venue);
  venue->loadGridData();
  return venue;
}

// Damaged documents are expected to be logged; what is logged is not looked at here.
class Mutation : public testing::Test {
 protected:
  void SetUp() override {
    setLogSink([](std::string_view) {});
  }
  void TearDown() override { setLogSink({}); }
};

std::shared_ptr<TernWaypoint> anyWaypoint(const TernASGrid& grid, Mutations& random) {
  return grid.waypoints().empty() ? nullptr
                                  : grid.waypoints()[random.below(grid.waypoints().size())];
}

void expectSoundRoute(const TernRoute& route) {
  for (const TernPathPerFloor& segment : route) {
    EXPECT_FALSE(segment.points.empty());
    EXPECT_EQ(segment.points.size(), segment.mapPoints.size());
    for (const TernASNode& node : segment.points) EXPECT_EQ(node.mapId(), segment.mapId);
  }
  for (std::size_t i = 1; i < route.size(); ++i) EXPECT_NE(route[i - 1].mapId, route[i].mapId);
}

void walkAbout(TernActiveVenue& venue, Mutations& random) {
  const auto grid = venue.globalASGrid();
  for (int i = 0; i < 6; ++i) {
    const auto from = anyWaypoint(*grid, random);
    const auto to = anyWaypoint(*grid, random);
    if (from == nullptr) return;
    const TernRoute route = venue.wayfind(from, to, static_cast<std::uint32_t>(random.below(101)));
    expectSoundRoute(route);
    for (const TernPathPerFloor& segment : route) {
      EXPECT_EQ(segment.copyWithZone().points.size(), segment.points.size());
    }
    if (const auto node = grid->getNodeById(from->id.integer())) {
      grid->shouldBlockEntryToNode(*node, i % 2 == 0);
      grid->shouldBlockExitFromNode(*node, i % 3 == 0);
      const auto neighbors = node->neighbors();
      // A damaged path may have given it thousands.
      for (const TernNeighbor& neighbor :
           std::span(neighbors).first(std::min<std::size_t>(neighbors.size(), 8))) {
        const auto next = grid->getNeighborNodeObject(neighbor.neighborId.integer());
        if (next) grid->shouldBlockEdgeBetweenNode(*node, *next, i % 2 == 1);
      }
    }
    venue.getClosestWaypointInArray({from, to}, to, 100);
  }
}

template <class Collection>
void expectSoundCollection(const Nested<Collection>& collection) {
  if (!collection) return;
  const auto all = collection->getAll();
  for (const auto& record : all) {
    ASSERT_NE(record, nullptr);
    EXPECT_NE(record->copyWithZone(), nullptr);
  }
  if (collection->plainItems().isAbsent()) {
    EXPECT_EQ(all.size(), collection->getCount());
  }
}

void askMap(TernActiveVenue& venue, const std::shared_ptr<TernMap>& map) {
  expectSoundCollection(map->waypoints);
  expectSoundCollection(map->paths);
  expectSoundCollection(map->uris);
  TernActiveVenue::getClosestWaypointToCoordinateOnMap(map, {10, 20});
  if (venue.amenities) venue.amenities->getByMap(map);
  if (venue.destinations) venue.destinations->getByMap(map);
  if (venue.mapLabels) venue.mapLabels->getByMap(map);
  if (venue.buildings) venue.buildings->getByMap(map);
}

void askBuilding(TernActiveVenue& venue, const std::shared_ptr<TernBuilding>& building) {
  if (building->floors) {
    building->floors->getDefault();
    EXPECT_EQ(building->floors->getAllSortedByLevel().size(), building->floors->getAll().size());
    EXPECT_EQ(building->floors->getAllSortedByPreference().size(),
              building->floors->getAll().size());
  }
  venue.maps->getWaypointsByBuilding(building);
  if (venue.amenities) venue.amenities->getByBuilding(building);
  if (venue.destinations) venue.destinations->getByBuilding(building);
}

void askEverything(TernActiveVenue& venue) {
  expectSoundCollection(venue.buildings);
  expectSoundCollection(venue.destinations);
  expectSoundCollection(venue.amenities);
  expectSoundCollection(venue.pathTypes);
  expectSoundCollection(venue.mapLabels);
  for (const auto& map : venue.maps->getAll()) askMap(venue, map);
  if (venue.buildings) {
    for (const auto& building : venue.buildings->getAll()) askBuilding(venue, building);
  }
  if (venue.destinations) {
    for (const auto& destination : venue.destinations->getAll()) {
      venue.maps->getWaypointsByDestination(destination);
    }
  }
  venue.getCenterCoordinates();
  EXPECT_NE(venue.copyWithZone(), nullptr);
}

TEST_F(Mutation, damagedDocumentsGiveAVenueThatAnswers) {
  for (std::uint64_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Mutations random(seed);
    Documents documents = sample();
    random.damage(documents.venue, static_cast<int>(random.below(4)));
    for (Value& building : documents.buildings) {
      random.damage(building, static_cast<int>(random.below(30)));
    }
    const auto venue = assemble(std::move(documents));
    ASSERT_NE(venue->globalASGrid(), nullptr);
    askEverything(*venue);
    walkAbout(*venue, random);
  }
}

TEST_F(Mutation, damagedDocumentsAreWrittenAndReadBackAlike) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Mutations random(seed);
    Value document = sample().venue;
    random.damage(document, 20);
    const std::string text = encodeJson(document, JsonLayout::compact);
    const JsonResult read = decodeJson(text);
    ASSERT_FALSE(read.error) << *read.error;
    EXPECT_EQ(encodeJson(read.value, JsonLayout::compact), text);
  }
}

TEST_F(Mutation, aPathOfAMillionWaypointIdsIsBorne) {
  Documents documents = sample();
  Value* floors = documents.buildings[0].find("floors")->find("items");
  Value* paths = floors->items()[0].find("map")->find("paths")->find("items");
  Value* ids = paths->items()[0].find("waypointIds");
  const Value known = *ids;
  for (int i = 0; i < 1'000'000; ++i) {
    ids->append(i % 3 == 0 ? known.items()[0] : Value(i % 3 == 1 ? -i : i));
  }
  const auto venue = assemble(std::move(documents));
  Mutations random(1);
  walkAbout(*venue, random);
  EXPECT_GT(venue->globalASGrid()->linkCount(), 0U);
}

}  // namespace
}  // namespace tern::test
