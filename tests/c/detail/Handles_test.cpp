#include "TernCoreKit/c/detail/Handles.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

#include "TernCoreKit/c/detail/OpenVenue.hpp"
#include "TernCoreKit/c/detail/Sink.hpp"
#include "tests/support/JoiningThread.hpp"

namespace tern::detail {
namespace {

TEST(Handles, areNumbersThatNeverComeAgain) {
  Handles table;
  const auto sink = std::make_shared<Sink>(1);
  const std::uintptr_t first = table.add(sink);
  EXPECT_NE(first, 0U);
  EXPECT_EQ(table.find<Sink>(first), sink);
  EXPECT_EQ(table.take<Sink>(first), sink);
  EXPECT_EQ(table.find<Sink>(first), nullptr);
  EXPECT_EQ(table.take<Sink>(first), nullptr);
  EXPECT_GT(table.add(sink), first);
  EXPECT_EQ(table.count(), 1U);
}

TEST(Handles, areOfOneKind) {
  Handles table;
  const std::uintptr_t number = table.add(std::make_shared<Sink>(1));
  EXPECT_EQ(table.find<OpenVenue>(number), nullptr);
  EXPECT_EQ(table.take<OpenVenue>(number), nullptr);
  EXPECT_NE(table.find<Sink>(number), nullptr);
  EXPECT_EQ(table.find<Sink>(0), nullptr);
  EXPECT_EQ(table.find<Sink>(12345), nullptr);
}

TEST(HandlesConcurrentTest, areTakenByOneOfMany) {
  Handles table;
  std::atomic<int> taken = 0;
  for (int round = 0; round < 50; ++round) {
    const std::uintptr_t number = table.add(std::make_shared<Sink>(1));
    std::vector<test::JoiningThread> threads;
    for (int i = 0; i < 3; ++i) {
      threads.emplace_back([&] { taken += table.take<Sink>(number) != nullptr ? 1 : 0; });
    }
  }
  EXPECT_EQ(taken, 50);
}

}  // namespace
}  // namespace tern::detail
