#include "TernCoreKit/platform/WorkQueue.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <new>
#include <numeric>
#include <optional>
#include <thread>
#include <vector>

#include "TernCoreKit/platform/detail/ThreadPool.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/Waiting.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern {
namespace {

using test::OnDemandQueue;
using test::RunNowQueue;
using test::ScopedBackgroundQueue;

// What every queue that runs one task at a time must keep to: `finish` waits until all have run.
void expectEachTaskRunsOnceInOrder(WorkQueue& queue, const std::function<void()>& finish) {
  std::vector<int> begun;
  for (int task = 0; task < 100; ++task) queue.run([&, task] { begun.push_back(task); });
  finish();
  std::vector<int> expected(100);
  std::iota(expected.begin(), expected.end(), 0);
  EXPECT_EQ(begun, expected);
}

void expectATaskMayRunAnother(WorkQueue& queue, const std::function<void()>& finish) {
  std::atomic<int> ran = 0;
  std::promise<void> isRun;
  queue.run([&] {
    ++ran;
    queue.run([&] {
      ++ran;
      isRun.set_value();
    });
  });
  finish();
  test::await(isRun, "the task");
  EXPECT_EQ(ran, 2);
}

// Runs a task of its own after the others and waits for it. REQUIRES: a pool of one thread.
void drain(WorkQueue& queue) {
  std::promise<void> isDrained;
  queue.run([&] { isDrained.set_value(); });
  test::await(isDrained, "the last task");
}

TEST(WorkQueueConcurrent, aPoolOfOneThreadKeepsTheContract) {
  detail::ThreadPool pool(1);
  expectEachTaskRunsOnceInOrder(pool, [&] { drain(pool); });
  expectATaskMayRunAnother(pool, [] {});
}

TEST(WorkQueueConcurrent, aPoolRunsEachTaskWhateverAllocationFails) {
  std::optional<detail::ThreadPool> pool(1);
  std::atomic<int> ran = 0;
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread, [&] { pool->run([&ran] { ++ran; }); },
      [&] {
        test::awaitUntil([&] { return ran == 1; }, "the task");
        ran = 0;
        pool.emplace(1);
      });
  EXPECT_GE(failed, 4) << "of the thread and of the task's place, once and always";
}

TEST(WorkQueueConcurrent, aTaskRunsOnItsCallersThreadWhenNoOtherIsToBeHad) {
  std::optional<detail::ThreadPool> pool(1);
  const std::thread::id caller = std::this_thread::get_id();
  std::atomic<int> ran = 0;
  int ranHere = 0;
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::thread,
      [&] {
        pool->run([&] {
          if (std::this_thread::get_id() == caller) ++ranHere;
          ++ran;
        });
      },
      [&] {
        test::awaitUntil([&] { return ran == 1; }, "the task");
        ran = 0;
        pool.emplace(1);
      });
  EXPECT_EQ(failed, 2) << "of the thread, once and always";
  EXPECT_EQ(ranHere, failed);
}

TEST(WorkQueueConcurrent, aTaskThatRunsOutOfMemoryEndsNothingElse) {
  detail::ThreadPool pool(1);
  pool.run([] { throw std::bad_alloc(); });
  drain(pool);
}

TEST(WorkQueue, fakesKeepTheContract) {
  RunNowQueue now;
  expectEachTaskRunsOnceInOrder(now, [] {});
  expectATaskMayRunAnother(now, [] {});
  OnDemandQueue onDemand;
  expectEachTaskRunsOnceInOrder(onDemand, [&] { onDemand.runAll(); });
  expectATaskMayRunAnother(onDemand, [&] { onDemand.runAll(); });
}

TEST(WorkQueue, onDemandQueueRunsOneTaskAtATime) {
  OnDemandQueue queue;
  int ran = 0;
  queue.run([&] { ++ran; });
  queue.run([&] { ++ran; });
  EXPECT_EQ(queue.waiting(), 2U);
  EXPECT_TRUE(queue.runNext());
  EXPECT_EQ(ran, 1);
  EXPECT_TRUE(queue.runNext());
  EXPECT_FALSE(queue.runNext());
}

TEST(WorkQueueConcurrent, twoTasksOfTheDefaultQueueOverlap) {
  std::promise<void> first;
  std::promise<void> second;
  std::promise<void> firstEnds;
  std::promise<void> secondEnds;
  std::atomic<int> ended = 0;
  // Each ends only when the other has begun.
  backgroundQueue()->run([&] {
    first.set_value();
    test::await(second, "the second task");
    ++ended;
    firstEnds.set_value();
  });
  backgroundQueue()->run([&] {
    second.set_value();
    test::await(first, "the first task");
    ++ended;
    secondEnds.set_value();
  });
  test::await(firstEnds, "the end of the first task");
  test::await(secondEnds, "the end of the second task");
  EXPECT_EQ(ended, 2);
}

TEST(WorkQueueConcurrent, manyCallersEachHaveTheirTasksRun) {
  std::atomic<int> ran = 0;
  std::promise<void> isComplete;
  {
    detail::ThreadPool pool(3);
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller) {
      callers.emplace_back([&] {
        for (int task = 0; task < 250; ++task) {
          pool.run([&] {
            if (++ran == 1000) isComplete.set_value();
          });
        }
      });
    }
    for (std::thread& caller : callers) caller.join();
    test::await(isComplete, "the last task");
  }
  EXPECT_EQ(ran, 1000);
}

TEST(WorkQueueConcurrent, stoppingWaitsForRunningTasksAndDropsTheOthers) {
  detail::ThreadPool pool(1);
  std::promise<void> isBegun;
  std::promise<void> mayEnd;
  const auto token = std::make_shared<int>();
  bool isEnded = false;
  bool isOtherRun = false;
  pool.run([&] {
    isBegun.set_value();
    test::await(mayEnd, "the permission to end");
    isEnded = true;
  });
  pool.run([&, token] { isOtherRun = true; });
  test::await(isBegun, "the task");
  EXPECT_EQ(token.use_count(), 2);
  std::thread stopper([&] { pool.stop(); });
  // The waiting task is given up before the running one is waited for.
  test::awaitUntil([&] { return token.use_count() == 1; }, "the release of the waiting task");
  mayEnd.set_value();
  stopper.join();
  EXPECT_TRUE(isEnded);
  EXPECT_FALSE(isOtherRun);
  pool.run([&] { isOtherRun = true; });
  EXPECT_FALSE(isOtherRun);
}

TEST(WorkQueueConcurrent, aTaskMayStopItsPool) {
  bool isEnded = false;
  {
    detail::ThreadPool pool(2);
    std::promise<void> isStopped;
    pool.run([&] {
      pool.stop();
      isStopped.set_value();
      isEnded = true;
    });
    test::await(isStopped, "the end of the pool");
  }
  EXPECT_TRUE(isEnded);
}

TEST(WorkQueueConcurrent, aTaskIsDestroyedAsSoonAsItHasRun) {
  detail::ThreadPool pool(1);
  const auto token = std::make_shared<int>();
  pool.run([token] {});
  drain(pool);
  EXPECT_EQ(token.use_count(), 1);
}

TEST(WorkQueueConcurrent, hostsMayReplaceTheBackgroundQueueAtAnyTime) {
  std::thread replacer([] {
    for (int i = 0; i < 200; ++i) {
      setBackgroundQueue(i % 2 == 0 ? std::make_shared<RunNowQueue>() : nullptr);
    }
  });
  std::atomic<int> ran = 0;
  for (int i = 0; i < 200; ++i) {
    std::promise<void> isRun;
    backgroundQueue()->run([&] {
      ++ran;
      isRun.set_value();
    });
    test::await(isRun, "the task");
  }
  replacer.join();
  setBackgroundQueue(nullptr);
  EXPECT_EQ(ran, 200);
}

TEST(WorkQueue, aHostsQueueTakesTheTasksUntilTheDefaultIsBroughtBack) {
  const auto defaultQueue = backgroundQueue();
  const auto mine = std::make_shared<OnDemandQueue>();
  {
    const ScopedBackgroundQueue scope(mine);
    EXPECT_EQ(backgroundQueue(), mine);
    backgroundQueue()->run([] {});
    EXPECT_EQ(mine->waiting(), 1U);
  }
  EXPECT_EQ(backgroundQueue(), defaultQueue);
  EXPECT_NE(defaultQueue, nullptr);
}

TEST(WorkQueueDeathTest, theEndOfTheProcessWaitsForARunningTask) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        std::promise<void> isBegun;
        backgroundQueue()->run([&] {
          isBegun.set_value();
          for (int i = 0; i < 1000; ++i) std::this_thread::yield();
          std::fputs("task ended\n", stderr);
        });
        test::await(isBegun, "the task");
        std::exit(0);
      },
      testing::ExitedWithCode(0), "task ended");
}

TEST(WorkQueueDeathTest, aTaskMayEndTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        backgroundQueue()->run([] { std::exit(7); });
        std::promise<void> end;
        test::await(end, "the end of the process");
      },
      testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace tern
