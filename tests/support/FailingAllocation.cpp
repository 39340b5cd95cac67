#include "tests/support/FailingAllocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string_view>

#include "tests/support/Countdown.hpp"

namespace {

using tern::test::Countdown;

constinit thread_local Countdown ofThread;
constinit Countdown ofProcess;
constinit thread_local bool isSpared = false;

bool fails() { return ofThread.fails() || (!isSpared && ofProcess.fails()); }

void* allocate(std::size_t size) {
  if (fails()) return nullptr;
  return std::malloc(size > 0 ? size : 1);
}

void* allocate(std::size_t size, std::align_val_t alignment) {
  if (fails()) return nullptr;
  const auto step = static_cast<std::size_t>(alignment);
  return std::aligned_alloc(step, (size + step - 1) / step * step);
}

void* orThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

// These replace the program's own, all of them, so that memory goes back to where it came from.
void* operator new(std::size_t size) { return orThrow(allocate(size)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return orThrow(allocate(size, alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size) { return orThrow(allocate(size)); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace tern::test {

namespace {

Countdown& countdown(FailingAllocation::Reach reach) {
  return reach == FailingAllocation::Reach::thread ? ofThread : ofProcess;
}

// What a work makes differs from time to time where threads meet; a few more are tried.
constexpr std::size_t sampled = 40;

}  // namespace

FailingAllocation::FailingAllocation(std::size_t nth, Reach reach, Times times) : reach_(reach) {
  countdown(reach_).start(nth, times == Times::always);
}

FailingAllocation::~FailingAllocation() { countdown(reach_).stop(); }

bool FailingAllocation::hasFailed() const { return countdown(reach_).hasFailed(); }

std::size_t countAllocations(FailingAllocation::Reach reach, const std::function<void()>& work) {
  const FailingAllocation last(Countdown::never - 1, reach);
  work();
  return Countdown::never - 1 - countdown(reach).left();
}

int forFailingAllocations(FailingAllocation::Reach reach, const std::function<void()>& work,
                          const std::function<void()>& check, Throwing throwing) {
  const std::size_t count = countAllocations(reach, work);
  check();
  const std::size_t step = isEveryFailureWanted() ? 1 : std::max<std::size_t>(1, count / sampled);
  int failed = 0;
  for (std::size_t nth = 0; nth < count; nth += step) {
    for (const auto times : {FailingAllocation::Times::once, FailingAllocation::Times::always}) {
      bool hasThrown = false;
      {
        const FailingAllocation failing(nth, reach, times);
        try {
          work();
        } catch (const std::bad_alloc&) {
          hasThrown = true;
        }
        failed += failing.hasFailed() ? 1 : 0;
      }
      EXPECT_FALSE(hasThrown && throwing == Throwing::never) << "by allocation " << nth;
      check();
    }
  }
  return failed;
}

void spareThisThread() { isSpared = true; }

bool isThisThreadSpared() { return isSpared; }

bool isEveryFailureWanted() {
  const char* const wanted = std::getenv("TERN_TEST_FAILURES");
  return wanted != nullptr && std::string_view(wanted) == "all";
}

}  // namespace tern::test
