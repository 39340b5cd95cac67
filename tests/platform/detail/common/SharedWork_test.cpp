#include "TernCoreKit/platform/detail/common/SharedWork.hpp"

#include <gtest/gtest.h>
#include <sched.h>

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

#if defined(__linux__)

class OneProcessor {
 public:
  OneProcessor() {
    EXPECT_EQ(sched_getaffinity(0, sizeof before_, &before_), 0);
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<unsigned>(sched_getcpu()), &one);
    EXPECT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
  }
  ~OneProcessor() { sched_setaffinity(0, sizeof before_, &before_); }
  OneProcessor(const OneProcessor&) = delete;
  OneProcessor& operator=(const OneProcessor&) = delete;

 private:
  cpu_set_t before_;
};

// As under `taskset`, or in a container that was given a part of the machine.
TEST(SharedWork, noMoreThreadsWorkThanMayRunAtATime) {
  const OneProcessor pinned;
  std::atomic<int> workers = 0;
  shareWork(1000, [&](Pieces& pieces) {
    ++workers;
    while (pieces.next()) continue;
  });
  EXPECT_EQ(workers, 1);
}

#endif

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
