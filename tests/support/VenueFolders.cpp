#include "tests/support/VenueFolders.hpp"

#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::test {

namespace {

const Drawing twoFloors{
    .floors = {{.lines = {"A  B  C", "", "E"}}, {.lines = {"   D"}, .mmPerPixel = 0}},
    .paths = {"A-B", "B-C", "B-D Lift", "C-D Stairs"},
    .pathTypes = {{.name = "Lift", .weight = 500},
                  {.name = "Stairs", .weight = 5, .accessibility = 2}}};

Value batchOf(Value item) { return Value::map({{"items", Value::list({std::move(item)})}}); }

Value place(std::string_view name, std::int64_t mapId, char letter) {
  const Value location =
      Value::map({{"mapId", mapId}, {"waypointIds", Value::list({idOf(letter)})}});
  return Value::map({{"id", 7}, {"name", name}, {"locations", Value::list({location})}});
}

std::string json(const Value& value) { return encodeJson(value, JsonLayout::compact); }

}  // namespace

Value twoFloorsVenueDocument() {
  Value document = drawVenueDocument(twoFloors);
  document.set("coordinates", Value::map({{"topLeft", Value::list({10, 0})},
                                          {"bottomRight", Value::list({0, 10})}}));
  document.set("destinations", batchOf(place("Bakery", 1, 'A')));
  document.set("amenities", batchOf(place("Exit", 2, 'D')));
  return document;
}

Value twoFloorsBuildingDocument() {
  Value document = drawBuildingDocument(twoFloors);
  const auto floors = document.find("floors")->find("items")->items();
  floors[0].set("name", "Ground Floor");
  floors[1].set("name", "First Floor");
  floors[0].find("map")->set("width", 1000);
  floors[0].find("map")->set("height", 1000);
  return document;
}

void writeTwoFloors(const TemporaryFolder& folder) {
  const Value venue = Value::map({{"id", 1}, {"externalId", "v1"}, {"name", "drawn"}});
  folder.write("full.json",
               json(Value::map({{"id", 1}, {"name", "c"}, {"venues", batchOf(venue)}})));
  folder.write("venue/1/full.json", json(twoFloorsVenueDocument()));
  folder.write("venue/1/building/1/full.json", json(twoFloorsBuildingDocument()));
}

}  // namespace tern::test
