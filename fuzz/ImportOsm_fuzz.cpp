// OpenStreetMap files as XML, as they come.
#include <string>
#include <vector>

#include "fuzz/ImportChecks.hpp"
#include "fuzz/Target.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/osm/DrawnOsm.hpp"

namespace tern::fuzz {
namespace {

using test::DrawnOsm;

void run(const std::string& text) {
  const test::TemporaryFolder folder;
  folder.write("site.osm", text);
  checkOsm(imports::openSource(folder.at("site.osm")).files);
}

std::vector<std::string> seeds() {
  DrawnOsm house;
  house.area(1, {{0, 0}, {20, 0}, {20, 3}, {5, 3}, {0, 3}},
             {{"indoor", "corridor"}, {"level", "0-1"}});
  house.area(2, {{0, 3}, {2, 3}, {5, 3}, {5, 8}, {0, 8}},
             {{"indoor", "room"}, {"level", "0"}, {"repeat_on", "1"}, {"name", "Shop"}});
  house.point({2, 3}, {{"door", "yes"}, {"width", "1.2"}});
  house.box(3, {10, 3, 12, 5}, {{"room", "elevator"}, {"level", "0;1"}, {"wheelchair", "yes"}});
  house.point({18, 1}, {{"amenity", "atm"}, {"level", "0"}});
  house.line(4, {{8, -1}, {8, 2}}, {{"indoor", "wall"}, {"level", "1"}});
  DrawnOsm ways;
  ways.line(1, {{0, 0}, {9, 0}, {9, 9}}, {{"highway", "footway"}, {"level", "0"}});
  ways.line(2, {{9, 9}, {20, 9}},
            {{"highway", "steps"}, {"level", "0;1"}, {"conveying", "forward"}, {"incline", "up"}});
  ways.line(3, {{20, 9}, {30, 9}}, {{"highway", "corridor"}, {"level", "1"}, {"level:ref", "A"}});
  ways.point({0, 0}, {{"highway", "elevator"}, {"level", "-1-1"}});
  DrawnOsm rings;
  rings.line(1, {{0, 0}, {30, 0}, {30, 20}}, {});
  rings.line(2, {{0, 0}, {0, 20}, {30, 20}}, {});
  rings.box(3, {2, 2, 28, 18}, {{"building", "yes"}, {"name", "Court"}});
  rings.relation(4, {{1, "outer"}, {2, "outer"}, {3, "inner"}},
                 {{"type", "multipolygon"}, {"indoor", "area"}, {"level", "0"}});
  rings.point({1, 1}, {{"shop", "books"}, {"level", "0"}, {"name", "Books"}});
  return {house.xml(), ways.xml(), rings.xml()};
}

}  // namespace

extern const Target importOsmTarget{
    .name = "import-osm", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
