#include "tests/answers/AnswerVenues.hpp"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "TernCoreKit/loading/VenueLoading.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/JoinedVenues.hpp"
#include "tests/support/Paths.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::test {

namespace {

const Drawing small{.floors = {{.lines = {"A  B  C  D", "", "J"}}, {.lines = {"E  F  G     H"}}},
                    .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "B-F Lift", "D-G Stairs"},
                    .pathTypes = {{.name = "Lift", .weight = 5},
                                  {.name = "Stairs", .weight = 5, .accessibility = 2}},
                    .destinations = {{7, "D"}, {8, "A"}, {9, "G"}, {10, "H"}, {11}, {12, "C E"}},
                    .amenities = {{7, "F", "Toilets"}, {8, "J", "Bench"}},
                    .connectors = {{2, "B F"}, {3, "D G"}}};

const Drawing detour{
    .floors = {{.lines = {"A--B--C--D--E", "   |     |   ", "   F--G--H   ", "J            "}}},
    .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "H-D"}};

// Destination 11 is on a map that is not there.
void misplace(Value& destinations) {
  for (Value& item : destinations.find("items")->items()) {
    if (item["id"] != Value(11)) continue;
    const Value lost = Value::map({{"mapId", 3}, {"waypointIds", Value::list({idOf('H')})}});
    item.set("locations", Value::list({lost}));
  }
}

std::shared_ptr<TernActiveVenue> unbuiltVenue() {
  Value document = drawVenueDocument(small);
  document.set("coordinates", Value::map({{"topLeft", Value::list({10, 0})},
                                          {"bottomRight", Value::list({0, 10})}}));
  misplace(*document.find("destinations"));
  Value building = drawBuildingDocument(small);
  for (Value& floor : building.find("floors")->find("items")->items()) {
    floor.find("map")->set("width", 1000);
    floor.find("map")->set("height", 1000);
  }
  return assembleVenue(std::move(document), std::move(building));
}

std::shared_ptr<TernActiveVenue> built(std::shared_ptr<TernActiveVenue> venue) {
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

std::shared_ptr<TernActiveVenue> sampleVenue() {
  return std::get<std::shared_ptr<TernActiveVenue>>(
      command::loadVenue(samplePath(), std::nullopt, std::nullopt));
}

std::shared_ptr<TernMultiActiveVenues> rows() {
  return joinVenues({built(rowVenue(1, {{103, "2:201"}})), built(rowVenue(2, {{201, "1:103"}}))});
}

}  // namespace

TernAnswers answersOf(std::string_view venue) {
  if (venue == "small") return TernAnswers(built(unbuiltVenue()));
  if (venue == "detour") return TernAnswers(loadDrawnVenue(detour));
  if (venue == "plaza") return TernAnswers(sampleVenue());
  if (venue == "rows") return TernAnswers(rows());
  if (venue == "unbuilt") return TernAnswers(unbuiltVenue());
  throw std::invalid_argument("there is no venue " + std::string(venue));
}

}  // namespace tern::test
