#include <gtest/gtest.h>

#include <string>

#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::picture {
namespace {

TEST(RoutePictureSvg, columnIsAsWideAsAPhone) {
  const PictureVenue venue{{.id = 1}, {.id = 2}};
  const auto markup =
      scanned(routePictureSvg({venue, "", RouteSet::choices, {{"", "A", "B", threeSegments()}}}));
  EXPECT_EQ(markup.valuesOf("width").front(), "390");
  for (const std::string& size : markup.valuesOf("font-size")) EXPECT_GE(std::stod(size), 12);
}

TEST(RoutePictureSvg, longNamesAreBrokenAndCut) {
  const PictureVenue venue{{.id = 1}};
  const std::string name =
      "The Very Long Name of a Shop That Sells Things Nobody Has Ever Needed at All";
  const auto markup =
      scanned(routePictureSvg({venue, "", RouteSet::choices, {{"", name, name, threeSegments()}}}));
  EXPECT_TRUE(has(markup, "\xE2\x80\xA6"));
  EXPECT_TRUE(has(markup, "Start at " + name));
}

}  // namespace
}  // namespace tern::picture
