#include "TernCoreKit/platform/detail/common/LargeMemory.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace tern::detail {
namespace {

TEST(LargeMemory, canBeWrittenFromEndToEnd) {
  for (const std::size_t bytes :
       {std::size_t{64}, std::size_t{2'097'152}, std::size_t{5'000'000}}) {
    const auto memory = largeMemory(bytes);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory.get()) % 64, 0U);
    auto* const at = static_cast<unsigned char*>(memory.get());
    std::memset(at, 7, bytes);
    EXPECT_EQ(at[0] + at[bytes - 1], 14);
  }
}

}  // namespace
}  // namespace tern::detail
