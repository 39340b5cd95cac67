#include "tools/generate/Icons.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tern::generate {
namespace {

TEST(Icons, everyAmenityHasAPictureOfItsOwn) {
  std::set<std::string> pictures;
  for (int i = 0; i < amenityCount; ++i) pictures.insert(iconSvg(iconOf(static_cast<Amenity>(i))));
  EXPECT_EQ(pictures.size(), static_cast<std::size_t>(amenityCount));
}

TEST(Icons, documentIsAsLargeAsTheTile) {
  EXPECT_THAT(iconSvg(Icon::lift), testing::HasSubstr("viewBox=\"0 0 64 64\""));
}

TEST(Icons, tileStandsAroundItsPoint) {
  drawing::SvgText svg(200, 200);
  drawIcon(svg, Icon::stairs, {100, 100});
  EXPECT_THAT(svg.finished(),
              testing::HasSubstr("<rect x=\"68\" y=\"68\" width=\"64\" height=\"64\""));
}

}  // namespace
}  // namespace tern::generate
