#include "tools/tern/VenueCommands.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

TEST(VenueCommands, venuesAreListedInTheirOrder) {
  TernVenueCollection venues;
  venues.createBatch(Value::map(
      {{"items", Value::list({Value::map({{"id", 2}, {"externalId", "h"}, {"name", "Harbour"}}),
                              Value::map({{"id", 1}})})}}));
  EXPECT_EQ(listVenues(venues, true).text,
            R"({"venues":[{"id":2,"externalId":"h","name":"Harbour"},)"
            R"({"id":1,"externalId":"","name":""}]})"
            "\n");
  EXPECT_EQ(listVenues(venues, false).text, "2       Harbour (h)\n1       \n");
}

TEST(VenueCommands, noVenueIsAnEmptyList) {
  EXPECT_EQ(listVenues(TernVenueCollection(), true).text, "{\"venues\":[]}\n");
  EXPECT_EQ(listVenues(TernVenueCollection(), false).text, "");
}

TEST(VenueCommands, everythingIsCounted) {
  const auto venue = TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
  addBuilding(*venue, 1, test::twoFloorsBuildingDocument());
  attachWaypoints(*venue);
  venue->loadGridData();
  EXPECT_EQ(describeVenue(*venue, true).text,
            R"({"venue":{"id":1,"name":"drawn"},"buildings":1,"floors":2,"maps":2,"waypoints":5,)"
            R"("paths":4,"destinations":1,"amenities":1,"pathTypes":3,"links":8})"
            "\n");
  EXPECT_EQ(describeVenue(*venue, false).text,
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

TEST(VenueCommands, countsOfWhatIsMissingAreZero) {
  const auto venue = TernActiveVenue::initWithDictionary(Value::map({{"id", 1}}));
  venue->loadGridData();
  EXPECT_EQ(describeVenue(*venue, true).text,
            R"({"venue":{"id":1,"name":""},"buildings":0,"floors":0,"maps":0,"waypoints":0,)"
            R"("paths":0,"destinations":0,"amenities":0,"pathTypes":0,"links":0})"
            "\n");
}

}  // namespace
}  // namespace tern::command
