#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::picture {
namespace {

TEST(RoutePictureHtml, pageFitsAPhoneAndForbidsLoading) {
  const PictureVenue venue{{.id = 1}};
  const auto markup =
      scanned(routePictureHtml({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}}));
  const auto contents = markup.valuesOf("content");
  ASSERT_EQ(contents.size(), 2U);
  EXPECT_EQ(contents[0], "default-src 'none'; style-src 'unsafe-inline'; img-src data:");
  EXPECT_EQ(contents[1], "width=device-width, initial-scale=1");
}

TEST(RoutePictureHtml, printKeepsEachHeadingWithItsMapOnWhite) {
  const PictureVenue venue{{.id = 1}};
  const std::string page =
      routePictureHtml({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}});
  const std::size_t start = page.find("@media print {");
  ASSERT_NE(start, std::string::npos);
  const std::string print = page.substr(start, page.find("</style>") - start);
  for (const char* rule : {"--page: #fff;", "h2 + .quiet { break-inside: avoid; break-after: avoid",
                           "li { break-inside: avoid; }"}) {
    EXPECT_NE(print.find(rule), std::string::npos) << rule;
  }
  // A screen that is dark has no say on paper.
  EXPECT_EQ(page.find("@media (prefers-color-scheme"), std::string::npos);
}

TEST(RoutePictureHtml, darkScreenHasATwinOfEveryColourAndOfTheDrawing) {
  const PictureVenue venue{{.id = 1}};
  const std::string page =
      routePictureHtml({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}});
  const std::size_t start = page.find("@media screen and (prefers-color-scheme: dark) {");
  ASSERT_NE(start, std::string::npos);
  for (const auto& [light, dark] : palette::twins) {
    const std::string rule = "[fill=\"" + std::string(light) + "\"] { fill: " + std::string(dark);
    EXPECT_NE(page.find(rule, start), std::string::npos) << rule;
  }
  EXPECT_NE(page.find(".drawing-1 { filter: url(#drawing-1-dark)", start), std::string::npos);
  EXPECT_NE(page.find("<g class=\"drawing-1\""), std::string::npos);
  EXPECT_NE(page.find("<filter id=\"drawing-1-dark\""), std::string::npos);
}

TEST(RoutePictureHtml, everyMapIsLabelledByItsOwnWords) {
  const PictureVenue venue{{.id = 1}, {.id = 2}};
  const auto markup =
      scanned(routePictureHtml({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}}));
  const auto ids = markup.valuesOf("id");
  const auto labels = markup.valuesOf("aria-labelledby");
  ASSERT_EQ(labels.size(), 3U);
  for (const std::string& label : labels) {
    const std::size_t blank = label.find(' ');
    EXPECT_EQ(std::count(ids.begin(), ids.end(), label.substr(0, blank)), 1) << label;
    EXPECT_EQ(std::count(ids.begin(), ids.end(), label.substr(blank + 1)), 1) << label;
  }
}

}  // namespace
}  // namespace tern::picture
