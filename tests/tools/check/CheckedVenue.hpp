// Small venues for tests of the checks, and what is found in them.
//
//   Checked checked(soundDrawing());
//   checked.mapOf(0).set("mmPerPixel", 0);
//   EXPECT_THAT(checked.kinds(), ElementsAre("missingScale"));
//
// Ownership: owns the documents. Threads: one. Fails: as `drawVenue`.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ActiveVenue.hpp"
#include "tools/check/CheckVenue.hpp"

namespace tern::check {

// Nothing is wrong with it.
//
//   Ground   A  B  C        First   D  E        a lift joins B and D
inline test::Drawing soundDrawing() {
  return {
      .floors = {{.lines = {"A  B  C"}, .name = "Ground"}, {.lines = {"   D  E"}, .name = "First"}},
      .paths = {"A-B", "B-C", "B-D Lift", "D-E"},
      .pathTypes = {{.name = "Lift", .weight = 5}},
      .destinations = {{.id = 7, .at = "A", .name = "Bakery"},
                       {.id = 8, .at = "E", .name = "Shoes"}}};
}

struct Checked {
  explicit Checked(const test::Drawing& drawing)
      : document(test::drawVenueDocument(drawing)), building(test::drawBuildingDocument(drawing)) {}

  // To be changed.
  Value document;
  Value building;

  static Value& item(Value& owner, const char* batch, std::size_t place) {
    return owner.find(batch)->find("items")->items()[place];
  }
  Value& floor(std::size_t place) { return item(building, "floors", place); }
  Value& mapOf(std::size_t place) { return *floor(place).find("map"); }
  Value& waypoint(std::size_t map, std::size_t place) {
    return item(mapOf(map), "waypoints", place);
  }
  Value& path(std::size_t map, std::size_t place) { return item(mapOf(map), "paths", place); }
  Value& destination(std::size_t place) { return item(document, "destinations", place); }

  template <class Use>
  void use(Use asked) const {
    const auto venue = test::loadVenue(document, building);
    const std::vector<Value> buildings{building};
    asked(Subject(*venue, document, buildings));
  }

  Findings findings() const {
    Findings found;
    use([&](const Subject& subject) { found = checkVenue(subject); });
    return found;
  }

  std::string text() const {
    std::string text;
    use([&](const Subject& subject) { text = reportText(subject, checkVenue(subject)); });
    return text;
  }

  // Of each finding.
  std::vector<std::string> kinds() const {
    std::vector<std::string> names;
    for (const Finding& finding : findings()) names.emplace_back(textOf(finding.kind).name);
    return names;
  }
};

}  // namespace tern::check
