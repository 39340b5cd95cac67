#include "tests/answers/AnswerVenues.hpp"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/optimisation/TourVenue.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/JoinedVenues.hpp"
#include "tests/support/Paths.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::test {

namespace {

const TourScene smallScene{
    .drawing = {.floors = {{.lines = {"A  B  C  D", "", "J"}}, {.lines = {"E  F  G     H"}}},
                .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "B-F Lift", "D-G Stairs"},
                .pathTypes = {{.name = "Lift", .weight = 5},
                              {.name = "Stairs", .weight = 5, .accessibility = 2}}},
    .destinations = {{7, {{1, "D"}}},
                     {8, {{1, "A"}}},
                     {9, {{2, "G"}}},
                     {10, {{2, "H"}}},
                     {11, {{3, "H"}}},
                     {12, {{1, "C"}, {2, "E"}}}},
    .connectors = {{2, {{1, "B"}, {2, "F"}}}, {3, {{1, "D"}, {2, "G"}}}}};

const Drawing detour{
    .floors = {{.lines = {"A--B--C--D--E", "   |     |   ", "   F--G--H   ", "J            "}}},
    .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "H-D"}};

Value amenity(const Placed& placed, std::string_view name) {
  return Value::map({{"id", placed.id}, {"name", name}, {"locations", locationsOf(placed)}});
}

std::shared_ptr<TernActiveVenue> unbuiltVenue() {
  Value document = tourVenueDocument(smallScene);
  document.set("coordinates", Value::map({{"topLeft", Value::list({10, 0})},
                                          {"bottomRight", Value::list({0, 10})}}));
  Value amenities =
      Value::list({amenity({7, {{2, "F"}}}, "Toilets"), amenity({8, {{1, "J"}}}, "Bench")});
  document.set("amenities", Value::map({{"items", std::move(amenities)}}));
  Value building = drawBuildingDocument(smallScene.drawing);
  for (Value& floor : building.find("floors")->find("items")->items()) {
    floor.find("map")->set("width", 1000);
    floor.find("map")->set("height", 1000);
  }
  auto venue = TernActiveVenue::initWithDictionary(std::move(document));
  addBuilding(*venue, 1, std::move(building));
  attachWaypoints(*venue);
  return venue;
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
  return command::joinVenues(
      {built(rowVenue(1, {{103, "2:201"}})), built(rowVenue(2, {{201, "1:103"}}))});
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
