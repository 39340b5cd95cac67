#include "tests/support/VenueFolders.hpp"

#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::test {

namespace {

const Drawing writtenFloors{.floors = {{.lines = {"A  B  C", "", "E"}, .name = "Ground Floor"},
                                       {.lines = {"   D"}, .mmPerPixel = 0, .name = "First Floor"}},
                            .paths = {"A-B", "B-C", "B-D Lift", "C-D Stairs"},
                            .pathTypes = {{.name = "Lift", .weight = 500},
                                          {.name = "Stairs", .weight = 5, .accessibility = 2}},
                            .destinations = {{.id = 7, .at = "A", .name = "Bakery"}},
                            .amenities = {{.id = 7, .at = "D", .name = "Exit"}}};

Value batchOfOne(Value item) { return Value::map({{"items", Value::list({std::move(item)})}}); }

std::string json(const Value& value) { return encodeJson(value, JsonLayout::compact); }

}  // namespace

Value twoFloorsVenueDocument() {
  Value document = drawVenueDocument(writtenFloors);
  document.set("coordinates", Value::map({{"topLeft", Value::list({10, 0})},
                                          {"bottomRight", Value::list({0, 10})}}));
  return document;
}

Value twoFloorsBuildingDocument() {
  Value document = drawBuildingDocument(writtenFloors);
  Value& map = *document.find("floors")->find("items")->items()[0].find("map");
  map.set("width", 1000);
  map.set("height", 1000);
  return document;
}

void writeTwoFloors(const TemporaryFolder& folder) {
  const Value venue = Value::map({{"id", 1}, {"externalId", "v1"}, {"name", "drawn"}});
  folder.write("full.json",
               json(Value::map({{"id", 1}, {"name", "c"}, {"venues", batchOfOne(venue)}})));
  folder.write("venue/1/full.json", json(twoFloorsVenueDocument()));
  folder.write("venue/1/building/1/full.json", json(twoFloorsBuildingDocument()));
}

}  // namespace tern::test
