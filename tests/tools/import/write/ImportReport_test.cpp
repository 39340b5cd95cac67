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
  all.told = {{"x", "dangling", "No node."}, {"y", "dangling", "No node."}};
  const Value told = reportOf(all)["told"];
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told.items()[1]["id"].text(), "y");
  EXPECT_EQ(told.items()[1]["kind"].text(), "dangling");
  EXPECT_EQ(told.items()[1]["why"].text(), "No node.");
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

TEST(ImportReport, textSaysWhenNothingIsAmiss) {
  EXPECT_THAT(reportText(written()), HasSubstr("All of the source came through as it stands.\n"));
}

}  // namespace
}  // namespace tern::imports
