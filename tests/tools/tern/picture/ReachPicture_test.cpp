#include "tools/tern/picture/ReachPicture.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/MetreRamp.hpp"
#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {
namespace {

ReachPicture reachOver(const PictureVenue& venue) {
  ReachPicture picture{venue, "Plaza"};
  picture.summary = "Within 50 m: 5 waypoints";
  picture.starts = {{"Bakery", 1, {10, 10}}};
  picture.links = {{1, {10, 10}, {60, 10}, 0, 9},
                   {1, {60, 10}, {60, 90}, 9, 45},
                   {2, {60, 90}, {90, 90}, 46, 50}};
  picture.arrivals = {{"", 2, {60, 90}}};
  return picture;
}

// How many strokes of that colour there are in the file.
std::size_t strokesOf(const test::ScannedMarkup& markup, std::string_view colour) {
  std::size_t count = 0;
  const auto& attributes = markup.attributes;
  for (std::size_t i = 2; i < attributes.size(); ++i) {
    if (attributes[i].first != "stroke" || attributes[i].second != colour) continue;
    const std::string& path = attributes[i - 2].second;
    count += static_cast<std::size_t>(std::ranges::count(path, 'M'));
  }
  return count;
}

TEST(ReachPicture, everyWalkedLinkIsALineInTheColourOfItsMetres) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First", .level = 1}};
  const auto markup = scanned(svgOf(planOf(reachOver(venue))));
  // Steps of 10 m: the first link lies in the first, the second goes through all of them.
  EXPECT_EQ(strokesOf(markup, palette::ramp[0]), 2U);
  EXPECT_EQ(strokesOf(markup, palette::ramp[1]), 1U);
  EXPECT_EQ(strokesOf(markup, palette::ramp[2]), 1U);
  EXPECT_EQ(strokesOf(markup, palette::ramp[3]), 1U);
  EXPECT_EQ(strokesOf(markup, palette::ramp[4]), 2U);
}

TEST(ReachPicture, bothKindsOfFileSayWhatItShows) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First", .level = 1}};
  const PicturePlan plan = planOf(reachOver(venue));
  EXPECT_EQ(plan.title(), "Reach from Bakery");
  EXPECT_EQ(plan.words(),
            "Within 50 m: 5 waypoints Colours from near to far, each for 10 m. Ground floor: up to "
            "45 m. First: up to 50 m.");
  for (const std::string& file : {svgOf(plan), htmlOf(plan)}) {
    const auto markup = scanned(file);
    for (const char* text :
         {"Bakery", "Within 50 m", "Ground floor", "First", "up to 45 m", "50 m"}) {
      EXPECT_TRUE(has(markup, text)) << text;
    }
  }
}

TEST(ReachPicture, withoutMetresThereIsNoLegend) {
  const PictureVenue venue{{.id = 1}};
  ReachPicture picture{venue, ""};
  picture.starts = {{"Bakery", 1, {10, 10}}};
  picture.links = {{1, {10, 10}, {60, 10}, 0, 0}};
  const PicturePlan plan = planOf(picture);
  EXPECT_FALSE(plan.legend);
  EXPECT_EQ(strokesOf(scanned(htmlOf(plan)), palette::ramp[0]), 1U);
}

TEST(ReachPicture, unknownMapsAndManyStartsAreBorne) {
  const PictureVenue venue{{.id = 1}};
  ReachPicture picture{venue, ""};
  for (int i = 0; i < 500; ++i)
    picture.starts.push_back({"S" + std::to_string(i), i, {1.0 * i, 2}});
  const PicturePlan plan = planOf(picture);
  EXPECT_EQ(plan.routes[0].panels.size(), 200U);
  scanned(svgOf(plan));
}

}  // namespace
}  // namespace tern::picture
