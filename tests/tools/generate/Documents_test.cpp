#include "tools/generate/Documents.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/tools/generate/GeneratedVenue.hpp"

namespace tern::generate {
namespace {

using testing::ElementsAre;

using Keys = std::set<std::string_view>;

// The fields of each record; any other key would stop it.
const Keys venueKeys{"id",
                     "externalId",
                     "name",
                     "coordinates",
                     "buildings",
                     "destinations",
                     "amenities",
                     "maps",
                     "pathTypes",
                     "map",
                     "mapLabels",
                     "nearestElement",
                     "extensors",
                     "globalASGrid",
                     "status",
                     "customerId",
                     "mapTemplateData",
                     "defaultMapTemplateId",
                     "generatedAt",
                     "labelType",
                     "clustering"};
const Keys venueRecordKeys{"id",          "externalId", "name",   "mapId",
                           "coordinates", "bbox",       "status", "customerId"};
const Keys buildingKeys{
    "id",         "externalId",    "name",        "coordinates",    "venueId",
    "floors",     "address",       "description", "defaultFloorId", "generatedAt",
    "customerId", "recordHistory", "mapId"};
const Keys floorKeys{"id",    "externalId", "buildingId",   "map",
                     "level", "preference", "elevation",    "altitude",
                     "name",  "shortName",  "recordHistory"};
const Keys mapKeys{"id",    "externalId", "svg",    "geojson",   "mmPerPixel", "scale", "skew",
                   "trans", "width",      "height", "waypoints", "paths",      "uris"};
const Keys waypointKeys{"id",          "externalId",   "unitNumber", "mapId",
                        "coordinates", "associations", "status",     "zoneId"};
const Keys associationKeys{"id", "externalId", "destinations", "amenities"};
const Keys pathKeys{"id",        "externalId",  "pathTypeId", "name",
                    "direction", "waypointIds", "extensors",  "status"};
const Keys pathTypeKeys{"id",    "externalId", "name",   "description",    "accessibility",
                        "speed", "maxFloors",  "weight", "verticalWeight", "direction",
                        "uris",  "locations",  "svg"};
const Keys destinationKeys{"id",          "externalId", "unitNumber",  "name",
                           "description", "primaryUri", "localeCode",  "extensors",
                           "uris",        "locations",  "tags",        "keywords",
                           "categoryIds", "status",     "displayMode", "svg"};
const Keys amenityKeys{"id",     "externalId",   "customerId", "name",      "description",
                       "status", "displayOrder", "extensors",  "locations", "primaryUriId",
                       "uris",   "keywords",     "svg"};
const Keys locationKeys{"mapId", "waypointIds"};
const Keys labelKeys{"id", "externalId", "name", "mapLabelInstances", "uris", "svg", "status"};
const Keys labelInstanceKeys{"id",    "externalId", "position", "name",     "mapId",
                             "scale", "skew",       "trans",    "rotation", "allLevels"};
const Keys localeKeys{"id", "externalId", "name", "localeCode"};
const Keys positionKeys{"topLeft", "bottomRight"};

void expectKeys(const Value& record, const Keys& allowed) {
  ASSERT_TRUE(record.isMap());
  for (const Value::Entry& entry : record.entries()) {
    EXPECT_TRUE(allowed.count(entry.key.text())) << entry.key.text();
  }
}

void expectBatchKeys(const Value& batch, const Keys& allowed) {
  for (const Value& record : batch["items"].items()) expectKeys(record, allowed);
}

const GeneratedVenue& sample() {
  static const GeneratedVenue generated{GenerateOptions{}};
  return generated;
}

std::vector<const Value*> placedRecords(const Value& venue) {
  std::vector<const Value*> records;
  for (const char* kind : {"destinations", "amenities", "pathTypes"}) {
    for (const Value& record : venue[kind]["items"].items()) records.push_back(&record);
  }
  return records;
}

const Value& pathType(std::int64_t id) {
  for (const Value& type : (*sample().venue)["pathTypes"]["items"].items()) {
    if (type["id"].integer() == id) return type;
  }
  ADD_FAILURE() << "no path type " << id;
  return *sample().venue;
}

// What a link of the type between levels so far apart costs.
double costOf(std::int64_t type, int levels) {
  const Value& record = pathType(type);
  return record["weight"].number() * (1 + 100.0 * levels / (record["verticalWeight"].number() + 1));
}

TEST(GeneratedDocuments, recordsOfTheVenueDocumentHaveOnlyTheirFields) {
  const Value& venue = *sample().venue;
  expectKeys(venue, venueKeys);
  expectKeys(venue["coordinates"], positionKeys);
  expectBatchKeys(venue["buildings"], buildingKeys);
  expectBatchKeys(venue["destinations"], destinationKeys);
  expectBatchKeys(venue["amenities"], amenityKeys);
  expectBatchKeys(venue["pathTypes"], pathTypeKeys);
  expectBatchKeys(venue["mapLabels"], labelKeys);
  for (const Value& label : venue["mapLabels"]["items"].items()) {
    expectBatchKeys(label["mapLabelInstances"], labelInstanceKeys);
  }
  for (const Value* record : placedRecords(venue)) {
    for (const Value& location : (*record)["locations"].items()) expectKeys(location, locationKeys);
  }
}

TEST(GeneratedDocuments, recordsOfABuildingHaveOnlyTheirFields) {
  ASSERT_EQ(sample().buildings.size(), 2U);
  for (const Value* building : sample().buildings) expectKeys(*building, buildingKeys);
  ASSERT_EQ(sample().floors.size(), 7U);
  for (const Value* floor : sample().floors) {
    expectKeys(*floor, floorKeys);
    expectKeys((*floor)["map"], mapKeys);
  }
  for (const auto& [id, waypoint] : sample().waypoints) {
    expectKeys(*waypoint, waypointKeys);
    if (const Value* associations = waypoint->find("associations")) {
      expectKeys(*associations, associationKeys);
    }
  }
  for (const auto& [id, path] : sample().paths) expectKeys(*path, pathKeys);
}

TEST(GeneratedDocuments, recordsOfTheSmallDocumentsHaveOnlyTheirFields) {
  expectBatchKeys(sample().documents.at("full.json")["venues"], venueRecordKeys);
  expectBatchKeys(sample().documents.at("locale/full.json"), localeKeys);
  expectKeys(sample().documents.at("venue/1/destinations.json"), {"venueId", "destinations"});
}

TEST(GeneratedDocuments, sharedDestinationsAreThoseOfTheVenue) {
  EXPECT_EQ(sample().documents.at("venue/1/destinations.json")["destinations"],
            (*sample().venue)["destinations"]);
}

TEST(GeneratedDocuments, everyPathJoinsWaypointsThatExist) {
  for (const auto& [id, path] : sample().paths) {
    const auto ends = (*path)["waypointIds"].items();
    ASSERT_EQ(ends.size(), 2U);
    EXPECT_NE(ends[0].integer(), ends[1].integer());
    for (const Value& end : ends) EXPECT_TRUE(sample().waypoints.count(end.integer())) << id;
  }
}

TEST(GeneratedDocuments, everyLocationNamesWaypointsOfItsMap) {
  int seen = 0;
  for (const Value* record : placedRecords(*sample().venue)) {
    for (const Value& location : (*record)["locations"].items()) {
      for (const Value& id : location["waypointIds"].items()) {
        const auto found = sample().waypoints.find(id.integer());
        ASSERT_NE(found, sample().waypoints.end()) << id.integer();
        EXPECT_EQ((*found->second)["mapId"].integer(), location["mapId"].integer());
        ++seen;
      }
    }
  }
  EXPECT_GT(seen, 100);
}

TEST(GeneratedDocuments, locationsAndAssociationsSayTheSame) {
  using Places = std::set<std::pair<std::int64_t, std::int64_t>>;
  for (const char* kind : {"destinations", "amenities"}) {
    Places located;
    for (const Value& record : (*sample().venue)[kind]["items"].items()) {
      for (const Value& location : record["locations"].items()) {
        for (const Value& id : location["waypointIds"].items()) {
          located.emplace(record["id"].integer(), id.integer());
        }
      }
    }
    Places associated;
    for (const auto& [id, waypoint] : sample().waypoints) {
      for (const Value& element : (*waypoint)["associations"][kind].items()) {
        associated.emplace(element.integer(), id);
      }
    }
    EXPECT_EQ(located, associated) << kind;
  }
}

TEST(GeneratedDocuments, everyAmenityAndConnectorIsPlaced) {
  for (const Value* record : placedRecords(*sample().venue)) {
    if ((*record)["name"].text() == "Walking") continue;
    EXPECT_GT((*record)["locations"].size(), 0U) << (*record)["name"].text();
  }
}

TEST(GeneratedDocuments, drawingsContainEveryWaypointOfTheirMap) {
  for (const Value* floor : sample().floors) {
    const std::string_view svg = (*floor)["map"]["svg"].text();
    const std::string_view marker = "viewBox=\"0 0 ";
    const std::size_t start = svg.find("viewBox=\"");
    ASSERT_EQ(start, svg.find(marker));
    const std::string_view sizes = svg.substr(start + marker.size());
    int width = 0;
    int height = 0;
    const auto first = std::from_chars(sizes.data(), sizes.data() + sizes.size(), width);
    ASSERT_EQ(*first.ptr, ' ');
    const auto second = std::from_chars(first.ptr + 1, sizes.data() + sizes.size(), height);
    ASSERT_EQ(*second.ptr, '"');
    for (const Value& waypoint : (*floor)["map"]["waypoints"]["items"].items()) {
      const auto at = waypoint["coordinates"].items();
      ASSERT_EQ(at.size(), 2U);
      EXPECT_TRUE(at[0].number() > 0 && at[0].number() < width);
      EXPECT_TRUE(at[1].number() > 0 && at[1].number() < height);
    }
  }
}

// What a walker reaches from the first entrance, with path types up to the accessibility level.
std::set<std::int64_t> reachedFromAnEntrance(const GeneratedVenue& generated,
                                             std::int64_t accessibility) {
  std::map<std::int64_t, std::int64_t> levelOfMap;
  for (const Value* floor : generated.floors) {
    levelOfMap[(*floor)["map"]["id"].integer()] = (*floor)["level"].integer();
  }
  const auto levelOf = [&](std::int64_t id) {
    return levelOfMap[(*generated.waypoints.at(id))["mapId"].integer()];
  };
  std::map<std::int64_t, std::vector<std::int64_t>> next;
  const auto open = [&](const Value& path, std::int64_t from, std::int64_t to) {
    const std::int64_t direction = path["direction"].integer();
    if (direction == 1 && levelOf(from) > levelOf(to)) return;
    if (direction == 2 && levelOf(from) < levelOf(to)) return;
    next[from].push_back(to);
  };
  for (const auto& [id, path] : generated.paths) {
    if (pathType((*path)["pathTypeId"].integer())["accessibility"].integer() > accessibility) {
      continue;
    }
    const auto ends = (*path)["waypointIds"].items();
    open(*path, ends[0].integer(), ends[1].integer());
    open(*path, ends[1].integer(), ends[0].integer());
  }
  std::vector<std::int64_t> waiting;
  for (const auto& [id, waypoint] : generated.waypoints) {
    if ((*waypoint)["externalId"].text() == "Exit" && waiting.empty()) waiting.push_back(id);
  }
  std::set<std::int64_t> seen(waiting.begin(), waiting.end());
  while (!waiting.empty()) {
    const std::int64_t id = waiting.back();
    waiting.pop_back();
    for (std::int64_t other : next[id]) {
      if (seen.insert(other).second) waiting.push_back(other);
    }
  }
  return seen;
}

TEST(GeneratedDocuments, everyWaypointIsReachedByEverybody) {
  EXPECT_EQ(reachedFromAnEntrance(sample(), 100).size(), sample().waypoints.size());
}

TEST(GeneratedDocuments, everyShopIsReachedWithoutSteps) {
  const std::set<std::int64_t> reached = reachedFromAnEntrance(sample(), 0);
  for (const Value& shop : (*sample().venue)["destinations"]["items"].items()) {
    ASSERT_GT(shop["locations"].size(), 0U);
    for (const Value& location : shop["locations"].items()) {
      for (const Value& id : location["waypointIds"].items()) {
        EXPECT_TRUE(reached.count(id.integer())) << shop["name"].text();
      }
    }
  }
}

TEST(GeneratedDocuments, eachFloorHasToiletsAndTheGroundHasExits) {
  std::map<std::string_view, std::set<std::int64_t>> maps;
  for (const Value& amenity : (*sample().venue)["amenities"]["items"].items()) {
    for (const Value& location : amenity["locations"].items()) {
      maps[amenity["name"].text()].insert(location["mapId"].integer());
    }
  }
  EXPECT_EQ(maps["Toilets"].size(), 7U);
  EXPECT_THAT(maps["Exit"], ElementsAre(12, 22));
}

TEST(GeneratedDocuments, oneFloorUpTakesTheEscalatorAndSeveralTheLift) {
  constexpr std::int64_t lift = 2;
  constexpr std::int64_t escalator = 3;
  constexpr std::int64_t stairs = 4;
  EXPECT_LT(costOf(escalator, 1), costOf(stairs, 1));
  EXPECT_LT(costOf(stairs, 1), costOf(lift, 1));
  EXPECT_LT(costOf(lift, 4), 4 * costOf(escalator, 1));
}

TEST(GeneratedDocuments, escalatorsComeInPairsOfOpposites) {
  std::map<std::int64_t, int> directions;
  for (const auto& [id, path] : sample().paths) {
    if ((*path)["pathTypeId"].integer() == 3) ++directions[(*path)["direction"].integer()];
  }
  EXPECT_EQ(directions, (std::map<std::int64_t, int>{{1, 5}, {2, 5}}));
}

TEST(GeneratedDocuments, namesAreTranslated) {
  const Value& first = (*sample().venue)["destinations"]["items"].items()[0];
  for (std::size_t i = 1; i < locales.size(); ++i) {
    EXPECT_FALSE(first["extensors"]["names"][locales[i].code].text().empty());
  }
}

// The corners must span the site's own length and depth, in metres at that latitude.
TEST(GeneratedDocuments, cornersFitTheSizeOfTheDrawing) {
  const Value& corners = (*sample().venue)["coordinates"];
  const auto topLeft = corners["topLeft"].items();
  const auto bottomRight = corners["bottomRight"].items();
  constexpr double metresPerDegree = 6378137.0 * 3.141592653589793 / 180;
  const double south = (topLeft[0].number() - bottomRight[0].number()) * metresPerDegree;
  const double east = (bottomRight[1].number() - topLeft[1].number()) * metresPerDegree *
                      std::cos(topLeft[0].number() * 3.141592653589793 / 180);
  const PlannedVenue planned = planVenue(GenerateOptions{});
  EXPECT_NEAR(south, planned.venue.site.heightPx * mmPerPixel / 1000.0, 0.1);
  EXPECT_NEAR(east, planned.venue.site.widthPx * mmPerPixel / 1000.0, 0.1);
}

TEST(GeneratedDocuments, defaultFloorIsTheGroundFloor) {
  for (const Value* building : sample().buildings) {
    std::int64_t ground = 0;
    for (const Value& floor : (*building)["floors"]["items"].items()) {
      if (floor["level"].integer() == 0) ground = floor["id"].integer();
    }
    EXPECT_EQ((*building)["defaultFloorId"].integer(), ground);
    EXPECT_NE(ground, 0);
  }
}

TEST(GeneratedDocuments, venueNamesTheTemplateThatIsWritten) {
  const std::string path = "map-template/" +
                           std::string((*sample().venue)["defaultMapTemplateId"].text()) +
                           "/full.json";
  EXPECT_TRUE(sample().documents.count(path)) << path;
}

}  // namespace
}  // namespace tern::generate
