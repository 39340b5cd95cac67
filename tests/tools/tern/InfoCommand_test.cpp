#include <gtest/gtest.h>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

std::string told(const std::shared_ptr<TernActiveVenue>& venue, bool json) {
  const auto describe = std::get<AboutVenue>(infoCommand.about).one;
  return std::get<Answer>(describe({.json = json}, venue)).text;
}

TEST(InfoCommand, everythingIsCounted) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  attachWaypoints(*venue);
  venue->loadGridData();
  EXPECT_EQ(told(venue, true),
            R"({"venue":{"id":1,"name":"drawn"},"buildings":1,"floors":2,"maps":2,"waypoints":5,)"
            R"("paths":4,"destinations":1,"amenities":1,"pathTypes":3,"links":8})"
            "\n");
  EXPECT_EQ(told(venue, false),
            "drawn (venue 1)\n"
            "  buildings     1\n"
            "  floors        2\n"
            "  maps          2\n"
            "  waypoints     5\n"
            "  paths         4\n"
            "  destinations  1\n"
            "  amenities     1\n"
            "  path types    3\n"
            "  graph links   8\n");
}

TEST(InfoCommand, countsOfWhatIsMissingAreZero) {
  const auto venue = TernActiveVenue::initWithDictionary(Value::map({{"id", 1}}));
  venue->loadGridData();
  EXPECT_EQ(told(venue, true),
            R"({"venue":{"id":1,"name":""},"buildings":0,"floors":0,"maps":0,"waypoints":0,)"
            R"("paths":0,"destinations":0,"amenities":0,"pathTypes":0,"links":0})"
            "\n");
}

}  // namespace
}  // namespace tern::command
