#include "fuzz/SeedDocuments.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/Paths.hpp"

namespace tern::fuzz {

namespace {

Value documentsOf(const test::Drawing& drawing) {
  return Value::map({{"venue", drawVenueDocument(drawing)},
                     {"buildings", Value::map({{"1", drawBuildingDocument(drawing)}})}});
}

// The first of each list, all the way down.
void thinOut(Value& value, std::size_t most) {
  if (value.isList() && value.size() > most) {
    value = Value::listOf(value.items().first(most));
  }
  for (Value& item : value.items()) thinOut(item, most);
  for (Value::Entry& entry : value.entries()) {
    if (entry.value.isText() && entry.value.text().size() > 60) {
      entry.value = R"(<svg viewBox="0 0 800 600"></svg>)";
    }
    thinOut(entry.value, most);
  }
}

Value thinned(const std::string& file) {
  std::ifstream stream(test::samplePath() + "/" + file, std::ios::binary);
  JsonResult result = decodeJson({std::istreambuf_iterator<char>(stream), {}});
  require(!result.error, "the sample can be read");
  thinOut(result.value, 4);
  return std::move(result.value);
}

Value request(std::string_view text) { return decodeJson(std::string(text)).value; }

}  // namespace

Value smallVenue() {
  Value documents = documentsOf(
      {.floors = {{.lines = {"A  B  C  D", "", "J"}}, {.lines = {"E  F  G     H"}}},
       .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "A-J", "J-C", "B-F Lift", "D>G Stairs up"},
       .pathTypes = {{.name = "Lift", .weight = 5},
                     {.name = "Stairs", .weight = 5, .accessibility = 2}},
       .destinations = {{7, "D"}, {8, "A"}, {9, "G"}, {10, "H"}, {11}, {12, "C E"}},
       .amenities = {{7, "F", "Toilets"}, {8, "J", "Bench"}},
       .connectors = {{2, "B F"}, {3, "D G"}}});
  documents.find("venue")->set("coordinates", Value::map({{"topLeft", Value::list({10, 0})},
                                                          {"bottomRight", Value::list({0, 10})}}));
  return documents;
}

Value ringVenue() {
  return documentsOf(
      {.floors = {{.lines = {"A--B--C--D--E", "   |     |   ", "   F--G--H   ", "J            "}}},
       .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "H-D"},
       .destinations = {{1, "E"}, {2, "G"}, {3, "A"}}});
}

Value thinnedSample() {
  return Value::map({{"venue", thinned("venue/1/full.json")},
                     {"buildings", Value::map({{"1", thinned("venue/1/building/1/full.json")}})}});
}

Value exitVenue(int id, int other) {
  const int first = id * 100;
  const auto waypoint = [&](int number, std::string_view externalId) {
    return Value::map({{"id", first + number},
                       {"mapId", id * 10},
                       {"externalId", externalId},
                       {"coordinates", Value::list({id * 0.01 + number * 0.001, 50.0})}});
  };
  const auto path = [&](int number) {
    return Value::map({{"id", first + number},
                       {"pathTypeId", 1},
                       {"waypointIds", Value::list({first + number, first + number + 1})}});
  };
  const std::string way = std::to_string(other) + ":" + std::to_string(other * 100 + 3);
  Value map = Value::map(
      {{"id", id * 10},
       {"mmPerPixel", 50},
       {"waypoints", Value::map({{"items", Value::list({waypoint(1, "a"), waypoint(2, "Exit"),
                                                        waypoint(3, way)})}})},
       {"paths", Value::map({{"items", Value::list({path(1), path(2)})}})}});
  Value floor = Value::map({{"id", id}, {"level", 0}, {"map", std::move(map)}});
  Value building =
      Value::map({{"id", 1}, {"floors", Value::map({{"items", Value::list({std::move(floor)})}})}});
  Value types = Value::list({Value::map({{"id", 1}, {"weight", 1}})});
  Value venue = Value::map({{"id", id},
                            {"name", "Venue " + std::to_string(id)},
                            {"pathTypes", Value::map({{"items", std::move(types)}})}});
  return Value::map(
      {{"venue", std::move(venue)}, {"buildings", Value::map({{"1", std::move(building)}})}});
}

std::vector<Value> smallRequests() {
  std::vector<Value> requests;
  for (const std::string_view text :
       {R"({"id":1,"op":"route","from":1,"to":8})",
        R"({"op":"route","from":1,"to":7,"accessibility":0})",
        R"({"id":"a","op":"routeToAny","from":1,"to":[7,3,99]})",
        R"({"op":"alternatives","from":1,"to":4,"options":{"optimalPathMatchRatio":0.2}})",
        R"({"op":"tour","from":1,"destinations":[7,8,9,12],"accessibility":100})",
        R"({"op":"solve","matrix":[[0,1,2],[1,0,3],[2,3,0]]})",
        R"({"op":"closest","map":1,"at":[10,5]})",
        R"({"op":"closestByRoute","candidates":[2,6],"to":7})",
        R"({"op":"nearest","map":1,"at":[1,2],"destination":9})",
        R"({"op":"nearest","map":2,"at":[1,2],"amenity":8})",
        R"({"op":"nearestOnMap","from":1,"toMap":2,"destinations":[9,10],"amenities":[7]})",
        R"({"op":"nearestByWalk","from":1,"destinations":[9,10],"accessibility":1})",
        R"({"op":"matrix","from":[1,4,99],"to":[7,2],"accessibility":1})",
        R"({"op":"reach","from":[1,8],"metres":9.5,"cost":700})",
        R"({"op":"convert","point":[3,4],"from":"tern:local","to":"EPSG:4326"})",
        R"({"op":"center"})",
        R"({"op":"blockEdge","from":1,"to":2,"blocked":true})",
        R"({"op":"blockEntry","node":3,"blocked":true})",
        R"({"op":"blockExit","node":3,"blocked":false})",
        R"({"op":"neighbors","node":2})"}) {
    requests.push_back(request(text));
  }
  return requests;
}

}  // namespace tern::fuzz
