#include "TernCoreKit/platform/detail/common/LargeMemory.hpp"

#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace tern::inline v5::detail {

namespace {

constexpr std::size_t pageBytes = 2'097'152;
constexpr std::size_t cacheLine = 64;

}  // namespace

void FreeLargeMemory::operator()(void* memory) const noexcept {
  ::operator delete (memory, std::align_val_t{alignment});
}

std::unique_ptr<void, FreeLargeMemory> largeMemory(std::size_t bytes) {
  if (bytes < pageBytes) {
    return {::operator new (bytes, std::align_val_t{cacheLine}), FreeLargeMemory{cacheLine}};
  }
  const std::size_t pages = bytes / pageBytes + 1;
  std::unique_ptr<void, FreeLargeMemory> memory(
      ::operator new (pages* pageBytes, std::align_val_t{pageBytes}), FreeLargeMemory{pageBytes});
#if defined(__linux__)
  // Advice: when it is not taken, the pages are small.
  madvise(memory.get(), pages * pageBytes, MADV_HUGEPAGE);
#endif
  return memory;
}

}  // namespace tern::detail
