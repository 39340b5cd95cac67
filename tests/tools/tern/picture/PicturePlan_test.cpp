#include "tools/tern/picture/PicturePlan.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tern/picture/PictureVenue.hpp"

namespace tern::picture {
namespace {

PictureVenue venueOfTwoFloors() { return {{.id = 1}, {.id = 2, .name = "First", .level = 1}}; }

TernRoute thereAndBack() {
  return {segment(1, {{10, 10}, {60, 10}}, 50, pathType("Lift")),
          segment(2, {{60, 10}, {60, 40}}, 81, pathType("Stairs")),
          segment(1, {{60, 50}, {20, 50}}, 122)};
}

TEST(PicturePlan, everyVisitOfARouteHasItsPanel) {
  const PictureVenue venue = venueOfTwoFloors();
  const PicturePlan plan =
      planOf({venue, "Plaza", RouteSet::choices, {{"", "A", "B", thereAndBack()}}});
  ASSERT_EQ(plan.routes.size(), 1U);
  ASSERT_EQ(plan.routes[0].panels.size(), 3U);
  EXPECT_EQ(plan.routes[0].panels[2].name.floor, "Ground floor");
  EXPECT_EQ(plan.routes[0].panels[1].length, "31 m");
  EXPECT_EQ(plan.routes[0].panels[1].departure->text(), "Stairs down to Ground floor");
  EXPECT_EQ(plan.summary, "122 m, 2 floors");
  EXPECT_EQ(plan.title(), "Route from A to B");
  EXPECT_EQ(
      plan.words(),
      "122 m, 2 floors Ground floor. Start at A. Walk 50 m. Lift up to First. First. Arrive from "
      "Ground floor. Walk 31 m. Stairs down to Ground floor. Ground floor. Arrive from First. "
      "Walk 41 m. Arrive at B.");
}

TEST(PicturePlan, choicesAreSummedUpByTheFirst) {
  const PictureVenue venue = venueOfTwoFloors();
  const PicturePlan plan = planOf({venue,
                                   "",
                                   RouteSet::choices,
                                   {{"Shortest", "A", "B", {segment(1, {{1, 1}, {9, 1}}, 8)}},
                                    {"Other", "A", "B", {segment(1, {{1, 1}, {9, 9}}, 12)}}}});
  EXPECT_EQ(plan.summary, "8 m, 1 floor");
  EXPECT_EQ(plan.routes[1].summary, "12 m, 1 floor");
}

TEST(PicturePlan, legsAreAddedUp) {
  const PictureVenue venue = venueOfTwoFloors();
  const PicturePlan plan = planOf({venue,
                                   "",
                                   RouteSet::legs,
                                   {{"1", "A", "B", {segment(1, {{1, 1}, {9, 1}}, 8)}},
                                    {"2", "B", "C", {segment(2, {{1, 1}, {9, 9}}, 12)}},
                                    {"3", "C", "D", {}}}});
  EXPECT_EQ(plan.summary, "20 m, 2 floors");
  EXPECT_EQ(plan.title(), "Route from A to D");
  EXPECT_EQ(plan.routes[2].summary, "No route was found.");
}

TEST(PicturePlan, routeThatIsNotThereIsSaid) {
  const PictureVenue venue = venueOfTwoFloors();
  EXPECT_EQ(planOf({venue, "", RouteSet::choices, {{"", "A", "B", {}}}}).summary,
            "No route was found.");
  EXPECT_EQ(planOf({venue, "", RouteSet::choices, {}}).title(), "Route");
}

TEST(PicturePlan, lengthBelowAMetreIsSaid) {
  const PictureVenue venue = venueOfTwoFloors();
  const auto summary = [&](std::int64_t map, float length) {
    return planOf({venue, "", RouteSet::choices, {{"", "", "", {segment(map, {{1, 1}}, length)}}}})
        .summary;
  };
  EXPECT_EQ(summary(1, 0.1F), "less than 1 m, 1 floor");
  EXPECT_EQ(summary(9, 0.1F), "no distance, 1 floor");
}

TEST(PicturePlan, pictureOfAnEndlessRouteIsBounded) {
  const PictureVenue venue = venueOfTwoFloors();
  TernRoute route;
  for (int i = 0; i < 3000; ++i) {
    route.push_back(segment(1 + i % 2, {{1, 1}, {9, 9}}, 10, pathType("Lift")));
  }
  const PicturePlan plan = planOf({venue, "", RouteSet::choices, {{"", "A", "B", route}}});
  EXPECT_EQ(plan.routes[0].panels.size(), 200U);
  EXPECT_TRUE(plan.summary.ends_with("; not all of it is drawn"));
}

}  // namespace
}  // namespace tern::picture
