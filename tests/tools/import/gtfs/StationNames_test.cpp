#include "tools/import/gtfs/StationNames.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

struct Stop {
  std::string name = {};
  std::string description = {};
  std::string platformName = {};
  std::string platformCode = {};
};

std::string nameOf(const Stop& said, bool isShared, std::string_view language = "en") {
  GtfsStop station;
  station.name = "Mill";
  GtfsStop stop;
  stop.name = said.name;
  stop.description = said.description;
  stop.platformName = said.platformName;
  stop.platformCode = said.platformCode;
  return std::string(nameIn(placeNames(GtfsFeed(), station, stop, isShared), language));
}

TEST(StationNames, nameOfItsOwnIsKept) {
  EXPECT_EQ(nameOf({.name = "Track 4", .description = "Track 4 - north"}, false), "Track 4");
}

TEST(StationNames, platformCalledLikeItsStationIsToldFromTheOthers) {
  EXPECT_EQ(nameOf({.name = "Mill", .description = "Mill - Red Line - North"}, true),
            "Red Line - North");
  EXPECT_EQ(nameOf({.name = "Mill", .description = "By the river", .platformName = "North"}, true),
            "North");
  EXPECT_EQ(nameOf({.name = "Mill", .platformCode = "3"}, true), "Platform 3");
  EXPECT_EQ(nameOf({.name = "Mill", .platformCode = "3"}, true, "de"), "Gleis 3");
  EXPECT_EQ(nameOf({.name = "Mill"}, true), "Mill");
}

TEST(StationNames, namesakesAreToldByTheirCodes) {
  EXPECT_EQ(nameOf({.name = "Bus stop", .platformCode = "B"}, true), "Bus stop B");
  EXPECT_EQ(nameOf({.name = "Bus stop", .platformCode = "B"}, false), "Bus stop");
}

TEST(StationNames, placeWithoutAnyNameHasNone) { EXPECT_EQ(nameOf({}, false), ""); }

}  // namespace
}  // namespace tern::imports
