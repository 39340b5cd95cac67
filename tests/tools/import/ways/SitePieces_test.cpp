#include "tools/import/ways/SitePieces.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace tern::imports {
namespace {

SiteArea box(const char* id, std::size_t floor, Box at) {
  return {
      id,
      floor,
      LinkKind::walkway,
      false,
      {{{{{at.left, at.top}, {at.right, at.top}, {at.right, at.bottom}, {at.left, at.bottom}}}}}};
}

class SitePiecesTest : public testing::Test {
 protected:
  // The area at a place, or none.
  std::optional<std::size_t> areaAt(std::size_t floor, Point at) {
    const SitePiece* const piece = pieces.at(floor, at);
    return piece == nullptr ? std::nullopt : std::optional(piece->area);
  }

  std::vector<SiteArea> areas{box("hall", 0, {0, 0, 20, 10}), box("shop", 0, {5, 5, 10, 10}),
                              box("room", 0, {20.2, 0, 25, 10}), box("attic", 1, {0, 0, 20, 10})};
  SitePieces pieces{areas};
};

TEST_F(SitePiecesTest, ofAreasOverEachOtherTheSmallestCounts) {
  EXPECT_EQ(areaAt(0, {1, 1}), 0U);
  EXPECT_EQ(areaAt(0, {6, 6}), 1U);
  EXPECT_EQ(areaAt(1, {6, 6}), 3U);
  EXPECT_EQ(areaAt(0, {30, 30}), std::nullopt);
  EXPECT_EQ(areaAt(7, {1, 1}), std::nullopt);
}

TEST_F(SitePiecesTest, anAreaInPartsHasAPieceForEach) {
  std::vector<SiteArea> parts{box("stalls", 0, {0, 0, 1, 1})};
  parts.front().shapes.push_back(box("", 0, {5, 0, 6, 1}).shapes.front());
  SitePieces apart(parts);
  ASSERT_EQ(apart.all().size(), 2U);
  EXPECT_EQ(apart.all()[1].area, 0U);
}

TEST_F(SitePiecesTest, besideAWallDrawnAsAGapLiesWhatIsBehindIt) {
  const SitePiece* const left = pieces.beside(0, {20.1, 5}, {-1, 0}, nullptr);
  const SitePiece* const right = pieces.beside(0, {20.1, 5}, {1, 0}, left);
  ASSERT_TRUE(left && right);
  EXPECT_EQ(left->area, 0U);
  EXPECT_EQ(right->area, 2U);
  EXPECT_EQ(pieces.beside(0, {-1, 5}, {-1, 0}, nullptr), nullptr);
}

TEST_F(SitePiecesTest, aLineAmidAnAreaHasItOnBothSides) {
  EXPECT_TRUE(pieces.areOneAcross(0, {15, 5}, {1, 0}));
  EXPECT_FALSE(pieces.areOneAcross(0, {5, 7}, {1, 0}));
  EXPECT_FALSE(pieces.areOneAcross(0, {0, 5}, {1, 0}));
}

TEST_F(SitePiecesTest, theNearestIsNotFarAway) {
  const SitePiece* const near = pieces.nearest(0, {26, 5});
  ASSERT_NE(near, nullptr);
  EXPECT_EQ(near->area, 2U);
  EXPECT_EQ(pieces.nearest(0, {29, 5}), nullptr);
  EXPECT_EQ(pieces.nearest(7, {1, 1}), nullptr);
}

}  // namespace
}  // namespace tern::imports
