#include "TernCoreKit/platform/detail/common/SharedWork.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <vector>

#include "tests/support/FailingAllocation.hpp"

namespace tern::detail {
namespace {

TEST(SharedWork, everyPieceIsDoneOnce) {
  for (const std::size_t count : {0U, 1U, 2U, 1000U}) {
    std::vector<std::atomic<int>> done(count);
    shareWork(count, [&](Pieces& pieces) {
      while (const auto piece = pieces.next()) ++done[*piece];
    });
    EXPECT_TRUE(std::ranges::all_of(done, [](const auto& times) { return times == 1; })) << count;
  }
}

TEST(SharedWork, noMoreThreadsWorkThanThereArePieces) {
  std::atomic<int> workers = 0;
  shareWork(1, [&](Pieces&) { ++workers; });
  EXPECT_EQ(workers, 1);
}

TEST(SharedWork, wantOfMemoryInOnePieceEndsTheWork) {
  std::atomic<int> done = 0;
  const auto work = [&](Pieces& pieces) {
    while (const auto piece = pieces.next()) {
      if (*piece == 3) throw std::bad_alloc();
      ++done;
    }
  };
  EXPECT_THROW(shareWork(1'000'000'000, work), std::bad_alloc);
  EXPECT_GE(done, 3);
}

// The caller does what nobody helps with.
TEST(SharedWork, withoutMemoryForHelpersItIsDoneAllTheSame) {
  std::vector<int> done(100);
  const test::FailingAllocation every(0, test::FailingAllocation::Reach::thread,
                                      test::FailingAllocation::Times::always);
  shareWork(done.size(), [&](Pieces& pieces) {
    while (const auto piece = pieces.next()) done[*piece] = 1;
  });
  EXPECT_EQ(std::ranges::count(done, 1), 100);
}

}  // namespace
}  // namespace tern::detail
