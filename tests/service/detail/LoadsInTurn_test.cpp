#include "TernCoreKit/service/detail/LoadsInTurn.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/WorkQueues.hpp"

namespace tern::detail {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LoadsInTurn, beginsALoadOnlyWhenTheOneBeforeHasCompleted) {
  const auto queue = std::make_shared<test::OnDemandQueue>();
  const test::ScopedBackgroundQueue scope(queue);
  std::vector<std::int64_t> begun;
  LoadNext completeLast;
  int finished = 0;
  loadInTurn(
      {3, 1, 2},
      [&](std::int64_t id, LoadNext next) {
        begun.push_back(id);
        completeLast = std::move(next);
      },
      [&] { ++finished; });
  EXPECT_THAT(begun, IsEmpty());
  queue->runAll();
  EXPECT_THAT(begun, ElementsAre(3));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(finished, 0);
    std::exchange(completeLast, nullptr)();
    queue->runAll();
  }
  EXPECT_THAT(begun, ElementsAre(3, 1, 2));
  EXPECT_EQ(finished, 1);
}

TEST(LoadsInTurn, finishesWhenThereIsNothingToLoad) {
  const test::ScopedBackgroundQueue scope(std::make_shared<test::RunNowQueue>());
  int finished = 0;
  loadInTurn({}, nullptr, [&] { ++finished; });
  EXPECT_EQ(finished, 1);
}

}  // namespace
}  // namespace tern::detail
