#include "TernCoreKit/service/detail/VenuesInTurn.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern::detail {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VenuesInTurn, beginsALoadOnlyWhenTheOneBeforeHasCompleted) {
  const auto queue = std::make_shared<test::OnDemandQueue>();
  const test::ScopedBackgroundQueue scope(queue);
  std::vector<std::int64_t> begun;
  VenueLoaded completeLast;
  std::vector<LoadedVenues> finished;
  loadInTurn(
      {3, 1, 2},
      [&](std::int64_t id, VenueLoaded loaded) {
        begun.push_back(id);
        completeLast = std::move(loaded);
      },
      [&](LoadedVenues venues) { finished.push_back(std::move(venues)); });
  EXPECT_THAT(begun, IsEmpty());
  queue->runAll();
  EXPECT_THAT(begun, ElementsAre(3));

  const auto first = std::make_shared<TernActiveVenue>();
  const auto last = std::make_shared<TernActiveVenue>();
  for (const auto& venue : {first, std::shared_ptr<TernActiveVenue>(), last}) {
    EXPECT_THAT(finished, IsEmpty());
    std::exchange(completeLast, nullptr)(venue);
    queue->runAll();
  }
  EXPECT_THAT(begun, ElementsAre(3, 1, 2));
  EXPECT_THAT(finished, ElementsAre(ElementsAre(first, last)));
}

TEST(VenuesInTurn, finishesWithoutVenuesWhenThereAreNone) {
  const test::ScopedBackgroundQueue scope(std::make_shared<test::RunNowQueue>());
  int finished = 0;
  loadInTurn({}, nullptr, [&](const LoadedVenues& venues) {
    EXPECT_THAT(venues, IsEmpty());
    ++finished;
  });
  EXPECT_EQ(finished, 1);
}

}  // namespace
}  // namespace tern::detail
