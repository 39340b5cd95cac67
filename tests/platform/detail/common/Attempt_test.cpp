#include "TernCoreKit/platform/detail/common/Attempt.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

#include "tests/support/FailingAllocation.hpp"

namespace tern::detail {
namespace {

TEST(Attempt, saysWhetherTheSystemHadEnough) {
  EXPECT_TRUE(attempt([] {}));
  EXPECT_FALSE(attempt([] { throw std::bad_alloc(); }));
  EXPECT_FALSE(attempt([] { throw std::length_error("too long"); }));
  EXPECT_FALSE(attempt([] {
    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
  }));
  EXPECT_THROW(attempt([] { throw std::logic_error("a mistake"); }), std::logic_error);
}

TEST(Attempt, sayingThatThereIsNoMemoryTakesNone) {
  const test::FailingAllocation every(0, test::FailingAllocation::Reach::thread,
                                      test::FailingAllocation::Times::always);
  const std::string text = outOfMemory;
  EXPECT_EQ(text.size(), 13U);
  EXPECT_FALSE(every.hasFailed());
}

// What ends by a completion ends by it wherever memory runs out.
TEST(Attempt, aCompletionIsCalledOnceWhateverAllocationFails) {
  int good = 0;
  int failed = 0;
  const std::function<void()> work = [&] {
    std::function<void(bool)> completion = [&](bool isDone) { ++(isDone ? good : failed); };
    attemptWith(
        std::move(completion),
        [](const auto& kept) {
          const std::string text(100, 'x');
          kept(text.size() == 100);
        },
        [](const auto& ended) { ended(false); });
  };
  int called = 0;
  const int failures = test::forFailingAllocations(test::FailingAllocation::Reach::thread, work,
                                                   [&] { EXPECT_EQ(good + failed, ++called); });
  EXPECT_EQ(failures, 4) << "of the kept completion and of the text, once and always";
  EXPECT_EQ(failed, failures);
}

}  // namespace
}  // namespace tern::detail
