#include "tools/import/write/ImportReport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::imports {
namespace {

using testing::HasSubstr;

WrittenVenues written() {
  WrittenVenue venue{7, "Harbour", 2, 30, 40, 5, 1, {}, 0.25};
  venue.kinds[static_cast<std::size_t>(LinkKind::walkway)] = 38;
  venue.kinds[static_cast<std::size_t>(LinkKind::stepFreeLift)] = 1;
  WrittenVenues all;
  all.venues = {venue};
  return all;
}

TEST(ImportReport, jsonHasEveryCount) {
  EXPECT_EQ(
      encodeJson(reportOf(written()), JsonLayout::compact),
      "{\"venues\":[{\"id\":7,\"name\":\"Harbour\",\"floors\":2,\"waypoints\":30,\"paths\":40,"
      "\"destinations\":5,\"amenities\":1,\"kinds\":{\"walkway\":38,\"ramp\":0,\"stairs\":0,"
      "\"escalator\":0,\"lift\":0,\"stepFreeLift\":1,\"movingWalkway\":0,\"gate\":0,"
      "\"unknown\":0},\"residual\":0.25}],\"told\":[]}");
}

TEST(ImportReport, jsonTellsOfEveryRecord) {
  WrittenVenues all = written();
  all.told = {{"x", "dangling", "No node."}, {"y", "island", "No way.", true}};
  const Value told = reportOf(all)["told"];
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told.items()[1]["id"].text(), "y");
  EXPECT_EQ(told.items()[1]["kind"].text(), "island");
  EXPECT_EQ(told.items()[1]["why"].text(), "No way.");
  EXPECT_FALSE(told.items()[0]["cameThrough"].flag());
  EXPECT_TRUE(told.items()[1]["cameThrough"].flag());
}

TEST(ImportReport, textCountsByKindAndByReason) {
  WrittenVenues all = written();
  all.told = {{"x", "dangling", "No node."}, {"z", "far", "Far away."}, {"y", "dangling", "None."}};
  EXPECT_EQ(
      reportText(all),
      "Venue 7, Harbour: 2 floors, 30 waypoints, 40 paths, 5 destinations, 1 kind of amenity\n"
      "  38 walkways, 1 step-free lift\n"
      "3 records of the source did not come through as they stand:\n"
      "  2 dangling, as x: No node.\n"
      "  1 far, as z: Far away.\n");
}

TEST(ImportReport, aVenueWithoutPathsHasNoLineOfThem) {
  WrittenVenues all = written();
  all.venues.front().kinds = {};
  EXPECT_THAT(reportText(all), HasSubstr("1 kind of amenity\nAll of the source"));
}

TEST(ImportReport, textTellsWhatDidNotComeThroughFromWhatLooksOdd) {
  WrittenVenues all = written();
  all.told = {{"x", "dangling", "No node."}, {"y", "island", "No way.", true}};
  EXPECT_THAT(reportText(all),
              HasSubstr("1 record of the source did not come through as it stands:\n"
                        "  1 dangling, as x: No node.\n"
                        "1 record came through and looks odd:\n"
                        "  1 island, as y: No way.\n"));
  all.told = {{"y", "island", "No way.", true}, {"z", "island", "No way.", true}};
  EXPECT_THAT(reportText(all), HasSubstr("All of the source came through as it stands.\n"
                                         "2 records came through and look odd:\n"
                                         "  2 island, as y: No way.\n"));
}

TEST(ImportReport, textSaysWhenNothingIsAmiss) {
  EXPECT_THAT(reportText(written()), HasSubstr("All of the source came through as it stands.\n"));
}

}  // namespace
}  // namespace tern::imports
