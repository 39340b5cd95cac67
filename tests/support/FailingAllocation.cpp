#include "tests/support/FailingAllocation.hpp"

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t never = static_cast<std::size_t>(-1);

// How many allocations of this thread succeed before one fails.
thread_local std::size_t allocationsLeft = never;

}  // namespace

// These replace the program's own, all of them, so that memory goes back to where it came from.
void* operator new(std::size_t size) {
  if (allocationsLeft != never && allocationsLeft-- == 0) throw std::bad_alloc();
  if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size > 0 ? size : 1);
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return operator new(size, std::nothrow);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace tern::test {

FailingAllocation::FailingAllocation(std::size_t nth) { allocationsLeft = nth; }
FailingAllocation::~FailingAllocation() { allocationsLeft = never; }

bool FailingAllocation::hasFailed() const { return allocationsLeft == never; }

}  // namespace tern::test
