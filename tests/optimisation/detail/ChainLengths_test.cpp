#include "TernCoreKit/optimisation/detail/ChainLengths.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ChainLengthsTest : public testing::Test {
 protected:
  // The legs that are stored are those between neighbours in each of the words.
  const TernTSP::Matrix& measure(const std::string& chain, const std::string& stored) {
    for (std::size_t i = 1; i < stored.size(); ++i) {
      if (stored[i] == ' ' || stored[i - 1] == ' ') continue;
      const auto route = venue_->wayfind(at(stored[i - 1]), at(stored[i]), 100);
      tables_.dictOfTernPathPerFloor.store(idOf(stored[i - 1]), idOf(stored[i]), route);
    }
    std::vector<std::shared_ptr<TernWaypoint>> stops;
    for (const char letter : chain) stops.push_back(at(letter));
    detail::ChainLengths(tables_).measure(stops);
    return tables_.costToPathGraph;
  }
  std::shared_ptr<TernWaypoint> at(char letter) const { return waypointAt(*venue_, letter); }

  // Ten units a character: B is 10 from A, C 30, D 60.
  std::shared_ptr<TernActiveVenue> venue_ =
      loadDrawnVenue({.floors = {{.lines = {"AB C  D"}}}, .paths = {"A-B", "B-C", "C-D"}});
  detail::TourTables tables_;
};

TEST_F(ChainLengthsTest, addsUpAlongTheChain) {
  EXPECT_THAT(measure("ABCD", "ABCD"),
              ElementsAre(ElementsAre(0, 10, 30, 60), ElementsAre(10, 0, 20, 50),
                          ElementsAre(30, 20, 0, 30), ElementsAre(60, 50, 30, 0)));
}

TEST_F(ChainLengthsTest, placePassedTwiceKeepsItsFirstLength) {
  // From B over A and B again to D: D lies 60 behind A, which lies 10 behind B, but B's own place
  // is first reached on the way back from A, at 20.
  EXPECT_THAT(measure("BAD", "BAD"),
              ElementsAre(ElementsAre(0, 10, 70), ElementsAre(10, 0, 60), ElementsAre(70, 60, 0)));
  // From C to B and back over C to D.
  EXPECT_THAT(measure("CBD", "CBD"),
              ElementsAre(ElementsAre(0, 20, 70), ElementsAre(20, 0, 50), ElementsAre(70, 50, 0)));
}

TEST_F(ChainLengthsTest, storedLegCountsBeforeTheChain) {
  EXPECT_THAT(measure("BAD", "BAD BD")[0], ElementsAre(0, 10, 50));
}

TEST_F(ChainLengthsTest, gapIsMinusOne) {
  EXPECT_THAT(measure("ABCD", "AB CD"),
              ElementsAre(ElementsAre(0, 10, -1, 30), ElementsAre(10, 0, -1, 30),
                          ElementsAre(-1, -1, 0, 30), ElementsAre(30, 30, 30, 0)));
}

TEST_F(ChainLengthsTest, chainThatNobodySolvesIsNotMeasured) {
  EXPECT_THAT(measure(std::string(23, 'A'), ""), AllOf(SizeIs(23), Each(IsEmpty())));
}

}  // namespace
}  // namespace tern::test
