// Memory of many megabytes for a short while. Asks the system for large pages, where it has them:
// touching such memory for the first time page by page can cost as much as the work done in it.
//
// Ownership: the pointer's. Threads: any. Fails: as operator new.
#pragma once

#include <cstddef>
#include <memory>

namespace tern::inline v5::detail {

struct FreeLargeMemory {
  std::size_t alignment = 1;
  void operator()(void* memory) const noexcept;
};

// Not initialised; aligned to 64 bytes at least.
std::unique_ptr<void, FreeLargeMemory> largeMemory(std::size_t bytes);

}  // namespace tern::detail
