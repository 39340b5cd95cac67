#include "TernCoreKit/model/records/TernFont.hpp"

#include <gtest/gtest.h>

namespace tern::test {
namespace {

TEST(TernFont, carriesItsNameSizeAndTextColour) {
  const TernColor red{1, 0, 0, 0.5F};
  const TernFont font = TernFont::fontWithName("Sans", 12.5, red);
  EXPECT_EQ(font.name(), "Sans");
  EXPECT_EQ(font.sizePt(), 12.5);
  EXPECT_EQ(font.textColor(), red);
  EXPECT_NE(font.textColor(), TernColor{});
}

TEST(TernColor, isOpaqueBlackUnlessSaid) {
  const TernColor black;
  EXPECT_EQ(black, (TernColor{0, 0, 0, 1}));
}

}  // namespace
}  // namespace tern::test
