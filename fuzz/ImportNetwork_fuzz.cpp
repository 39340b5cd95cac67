// Pedestrian networks, as the files of one.
#include <array>
#include <string_view>

#include "fuzz/ImportChecks.hpp"
#include "fuzz/JsonFolder.hpp"
#include "fuzz/Target.hpp"
#include "tests/tools/import/DrawnNetwork.hpp"

namespace tern::fuzz {
namespace {

using test::DrawnNetwork;

constexpr std::array<std::string_view, 9> files{
    "Site_Node.geojson",     "Site_Link.geojson",    "Site_Floor.geojson",
    "Site_Space.geojson",    "Site_Site.geojson",    "Site_Opening.geojson",
    "Site_Facility.geojson", "Site_Drawing.geojson", "Site_Building.geojson"};

void run(const std::string& text) { checkFolderOf(text, files, checkNetwork); }

std::string seedOf(const DrawnNetwork& network) {
  const test::TemporaryFolder folder;
  network.writeTo(folder.path());
  return inputOf(folder, files);
}

std::vector<std::string> seeds() {
  DrawnNetwork walks;
  walks.node("a", 0, {0, 0}).node("b", 0, {30, 0}).node("c", 0, {30, 20}, {{"in_out", "2"}});
  walks.link("ab", "a", "b", {{"lev_diff", "2"}}).link("bc", "b", "c", {}, {{33, 5}, {33, 9}});
  DrawnNetwork house;
  house.node("a", 0, {0, 0}).node("b", 0, {40, 0}).node("c", 1, {0, 0}).node("d", 1, {40, 0});
  house.link("ab", "a", "b").link("cd", "c", "d", {{"route_type", "2"}, {"direction", "2"}});
  house.link("lift", "a", "c", {{"route_type", "4"}, {"elevator", "3"}});
  house.link("up", "b", "d", {{"route_type", "5"}, {"direction", "3"}});
  house.area("Floor", {-5, -5, 45, 15}, {{"id", "g"}, {"ordinal", 0}, {"name", "地上"}});
  house.area("Floor", {-5, -5, 45, 15}, {{"id", "f"}, {"ordinal", 1}, {"name", "二階"}});
  house.area("Space", {2, 2, 9, 9}, {{"id", "r"}, {"floor_id", "g"}, {"category", "B001"}});
  house.point("Facility", {1, 1}, {{"id", "wc"}, {"floor_id", "f"}, {"category", "F001"}});
  house.line("Opening", {39, 1}, {40, 1}, {{"id", "o"}, {"floor_id", "f"}, {"name", "東口"}});
  house.line("Drawing", {0, 1}, {40, 1}, {{"id", "w"}, {"floor_id", "f"}});
  return {seedOf(walks), seedOf(house),
          R"({"Site_Node.geojson":"{\"features\":[","Site_Link.geojson":7})"};
}

}  // namespace

extern const Target importNetworkTarget{
    .name = "import-network", .takesJson = true, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
