#include "TernCoreKit/service/detail/LoadsInTurn.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <numeric>
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
      [&](bool areAllBegun) { finished += areAllBegun ? 1 : 100; });
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
  loadInTurn({}, nullptr, [&](bool areAllBegun) { finished += areAllBegun ? 1 : 100; });
  EXPECT_EQ(finished, 1);
}

// A queue and loads that do all at once: nothing may lie inside the other, or the stack is full.
TEST(LoadsInTurn, loadsThatCompleteAtOnceTakeNoMoreStackThanOne) {
  const test::ScopedBackgroundQueue scope(std::make_shared<test::RunNowQueue>());
  constexpr std::int64_t count = 500'000;
  std::vector<std::int64_t> ids(count);
  std::iota(ids.begin(), ids.end(), 0);
  std::int64_t begun = 0;
  bool isFinished = false;
  loadInTurn(
      std::move(ids),
      [&](std::int64_t id, const LoadNext& next) {
        EXPECT_EQ(id, begun++);
        next();
      },
      [&](bool areAllBegun) { isFinished = areAllBegun; });
  EXPECT_TRUE(isFinished);
  EXPECT_EQ(begun, count);
}

TEST(LoadsInTurn, aLoadForWhichThereIsNoMemoryEndsTheRow) {
  const test::ScopedBackgroundQueue scope(std::make_shared<test::RunNowQueue>());
  int begun = 0;
  int finished = 0;
  loadInTurn(
      {1, 2, 3},
      [&](std::int64_t id, const LoadNext& next) {
        if (id == 2) throw std::bad_alloc();
        ++begun;
        next();
      },
      [&](bool areAllBegun) { finished += areAllBegun ? 100 : 1; });
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(finished, 1);
}

}  // namespace
}  // namespace tern::detail
