#include "tools/tern/picture/RoutePicture.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"

namespace tern::picture {
namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();

// What both kinds of file promise.
class RoutePictures : public testing::TestWithParam<std::string (*)(const RoutePicture&)> {
 protected:
  static test::ScannedMarkup scannedPicture(const RoutePicture& picture) {
    return scanned(GetParam()(picture));
  }
};

TEST_P(RoutePictures, threeSegmentsOverTwoMapsAreThreePanels) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First floor", .level = 1}};
  const auto markup = scannedPicture(
      {venue, "Harbour Plaza", RouteSet::choices, {{"", "Bakery", "North exit", threeSegments()}}});
  for (const char* text :
       {"Harbour Plaza", "Bakery", "North exit", "122 m, 2 floors", "50 m", "31 m", "41 m",
        "Lift up to First floor", "Stairs down to Ground floor"}) {
    EXPECT_TRUE(has(markup, text)) << text;
  }
  EXPECT_EQ(markup.valuesOf("clip-path").size(), 3U);
}

TEST_P(RoutePictures, wordsForThoseWhoDoNotSeeIt) {
  const PictureVenue venue{{.id = 1}};
  const auto markup = scannedPicture(
      {venue, "", RouteSet::choices, {{"", "Bakery", "Exit", {segment(1, {{1, 1}, {9, 1}}, 8)}}}});
  EXPECT_EQ(markup.valuesOf("role"), std::vector<std::string>{"img"});
  EXPECT_EQ(markup.valuesOf("lang"), std::vector<std::string>{"en"});
  EXPECT_TRUE(markup.has("title"));
  EXPECT_TRUE(markup.has("desc"));
  EXPECT_TRUE(has(markup, "Ground floor. Start at Bakery. Walk 8 m. Arrive at Exit."));
}

TEST_P(RoutePictures, namesWithMarkupAreText) {
  const std::string name = "<script>\"&'</script>";
  const PictureVenue venue{{.id = 1, .name = name}, {.id = 2, .name = name, .level = 1}};
  TernRoute route = threeSegments();
  route[0].mover = pathType("<b>");
  const auto markup = scannedPicture({venue, name, RouteSet::choices, {{name, name, name, route}}});
  EXPECT_FALSE(markup.has("script"));
  EXPECT_TRUE(has(markup, "&lt;script&gt;&quot;&amp;'"));
}

TEST_P(RoutePictures, namesThatAreNotUtf8AreRepaired) {
  const PictureVenue venue{{.id = 1}};
  scannedPicture({venue,
                  "\xFF\x01",
                  RouteSet::choices,
                  {{"\xC3", "\xED\xA0\x80", std::string(2, '\0'), threeSegments()}}});
}

TEST_P(RoutePictures, drawingsStandInAddressesOfImagesOnly) {
  const std::string hostile =
      "<svg viewBox='0 0 90 90' onload='x()'><script>x()</script><a href='javascript:x()'>"
      "<rect id='title' style='fill:url(http://example.com/a)'/></a><style>@import "
      "'http://example.com/a.css';text{display:none}</style><foreignObject><iframe "
      "src='//example.com'/></foreignObject><use href='http://example.com/b.svg#c'/></svg>";
  const std::string ending = "<svg viewBox='0 0 9 9'>\"/></image></defs></svg></html>\xFF x()";
  const PictureVenue venue{{.id = 1, .svg = std::string_view(hostile)},
                           {.id = 2, .svg = std::string_view(ending)}};
  const RoutePicture picture{venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}};
  const auto markup = scannedPicture(picture);
  std::string file = GetParam()(picture);
  for (const std::string& uri : markup.valuesOf("href")) {
    if (uri.rfind("data:", 0) != 0) continue;
    EXPECT_TRUE(drawingIn(uri).find("x()") != std::string::npos);
    file.erase(file.find(uri), uri.size());
  }
  for (const char* text : {"x()", "example.com", "data:image", "base64"}) {
    EXPECT_EQ(file.find(text), std::string::npos) << text;
  }
}

TEST_P(RoutePictures, nothingIsLoadedFromElsewhere) {
  const PictureVenue venue{{.id = 1, .svg = nullptr}, {.id = 2, .svg = nullptr}};
  std::string file = GetParam()({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}});
  const std::string space = "http://www.w3.org/2000/svg";
  if (const std::size_t at = file.find(space); at != std::string::npos)
    file.erase(at, space.size());
  for (const char* reach : {"http:", "https:", "//", "@import", "url(h", "src="}) {
    EXPECT_EQ(file.find(reach), std::string::npos) << reach;
  }
}

TEST_P(RoutePictures, drawingOfSeveralPanelsIsHeldOnce) {
  const PictureVenue venue{{.id = 1}, {.id = 2}};
  const auto markup =
      scannedPicture({venue,
                      "",
                      RouteSet::legs,
                      {{"1", "A", "B", threeSegments()}, {"2", "B", "C", threeSegments()}}});
  const auto count = [&](std::string_view element) {
    return std::count(markup.elements.begin(), markup.elements.end(), element);
  };
  EXPECT_EQ(count("image"), 2);
  EXPECT_EQ(count("use"), 6);
}

TEST_P(RoutePictures, absurdCoordinatesGiveAWholeFile) {
  const PictureVenue venue{{.id = 1, .svg = "<svg viewBox='0 0 1e308 1'/>"}, {.id = 2}};
  const auto markup =
      scannedPicture({venue,
                      "",
                      RouteSet::choices,
                      {{"",
                        "A",
                        "B",
                        {segment(1, {{noNumber, infinite}, {3e38F, -3e38F}, {1, 1}}, noNumber),
                         segment(2, {{infinite, noNumber}}, infinite), segment(3, {}, -1),
                         segment(1, {{9999999, 9999999}, {-9999999, -9999999}}, 3e38F)}}}});
  for (const auto& [name, value] : markup.attributes) {
    EXPECT_EQ(value.find("nan"), std::string::npos) << name;
    EXPECT_EQ(value.find("inf"), std::string::npos) << name;
  }
}

TEST_P(RoutePictures, noRouteIsSaid) {
  const PictureVenue venue{{.id = 1}};
  EXPECT_TRUE(has(scannedPicture({venue, "", RouteSet::choices, {{"", "A", "B", {}}}}),
                  "No route was found."));
  scannedPicture({venue, "", RouteSet::choices, {}});
}

TEST_P(RoutePictures, sameInputGivesTheSameFile) {
  const PictureVenue venue{{.id = 1}, {.id = 2}};
  const RoutePicture picture{venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}};
  EXPECT_EQ(GetParam()(picture), GetParam()(picture));
}

INSTANTIATE_TEST_SUITE_P(Html, RoutePictures, testing::Values(routePictureHtml));
INSTANTIATE_TEST_SUITE_P(Svg, RoutePictures, testing::Values(routePictureSvg));

}  // namespace
}  // namespace tern::picture
