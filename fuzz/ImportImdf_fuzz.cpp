// Indoor Mapping Data Format, as the files of a building.
#include <array>
#include <string_view>

#include "fuzz/ImportChecks.hpp"
#include "fuzz/JsonFolder.hpp"
#include "fuzz/Target.hpp"
#include "tests/tools/import/imdf/DrawnImdf.hpp"

namespace tern::fuzz {
namespace {

using test::DrawnImdf;

constexpr std::array<std::string_view, 15> files{
    "venue.geojson",        "address.geojson",   "building.geojson", "level.geojson",
    "unit.geojson",         "opening.geojson",   "amenity.geojson",  "anchor.geojson",
    "occupant.geojson",     "kiosk.geojson",     "fixture.geojson",  "detail.geojson",
    "relationship.geojson", "footprint.geojson", "manifest.json"};

void run(const std::string& text) { checkFolderOf(text, files, checkImdf); }

Value reference(const char* unit) { return Value::map({{"id", unit}, {"feature_type", "unit"}}); }

DrawnImdf drawnHall() {
  DrawnImdf hall;
  hall.level("g", 0).unit("walk", "g", "walkway", {0, 0, 20, 4});
  hall.unit("shop", "g", "retail", {0, 4, 8, 12}, {{"name", DrawnImdf::label("Books")}});
  hall.unit("gap", "g", "opentobelow", {12, 1, 14, 2});
  hall.opening("door", "g", {2, 4}, {3, 4}).opening("gate", "g", {20, 0}, {20, 4});
  hall.add("anchor", "stand", DrawnImdf::point({5, 8}), {{"unit_id", "shop"}});
  hall.add("occupant", "till", Value(),
           {{"anchor_id", "stand"}, {"category", "bank"}, {"name", DrawnImdf::label("Bank")}});
  hall.add("amenity", "atm", DrawnImdf::point({17, 3}),
           {{"category", "atm"}, {"unit_ids", Value::list({"walk"})}});
  hall.add("kiosk", "map", DrawnImdf::box({9, 1, 10, 2}),
           {{"level_id", "g"}, {"name", DrawnImdf::label("Map")}});
  hall.add("detail", "line", DrawnImdf::line({0, 2}, {9, 2}), {{"level_id", "g"}});
  return hall;
}

DrawnImdf drawnHouse() {
  DrawnImdf house;
  house.add("venue", "site", DrawnImdf::box({0, 0, 30, 30}), {{"name", DrawnImdf::label("Mill")}});
  house.add("address", "road", Value(), {{"address", "1 Road"}, {"locality", "Town"}});
  house.add("building", "mill", Value(), {{"address_id", "road"}});
  for (const auto& [level, ordinal] : {std::pair("b", -1), {"g", 0}, {"u", 2}}) {
    const std::string own = level;
    house.level(own, ordinal, {{"building_ids", Value::list({"mill"})}});
    house.unit(own + " walk", own, "walkway", {0, 0, 12, 4});
    house.unit(own + " stairs", own, "stairs", {12, 0, 16, 4});
    house.opening(own + " step", own, {12, 1}, {12, 3});
    house.unit(own + " lift", own, "elevator", {0, 4, 2, 6},
               {{"accessibility", Value::list({"wheelchair"})}});
    house.opening(own + " cabin", own, {0.5, 4}, {1.5, 4});
  }
  house.unit("up", "g", "escalator", {4, 4, 6, 9}).unit("top", "u", "escalator", {4, 4, 6, 9});
  house.add("relationship", "rides", Value(),
            {{"category", "escalator"},
             {"direction", "directed"},
             {"origin", reference("up")},
             {"destination", reference("top")}});
  house.unit("wc", "u", "restroom.female", {6, 4, 9, 9});
  return house;
}

std::string seedOf(const DrawnImdf& building) {
  const test::TemporaryFolder folder;
  building.writeTo(folder.path());
  folder.write("manifest.json", R"({"version":"1.0.0","language":"en"})");
  return inputOf(folder, files);
}

std::vector<std::string> seeds() {
  return {seedOf(drawnHall()), seedOf(drawnHouse()),
          R"({"unit.geojson":"{\"features\":[","level.geojson":7})"};
}

}  // namespace

extern const Target importImdfTarget{
    .name = "import-imdf", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
