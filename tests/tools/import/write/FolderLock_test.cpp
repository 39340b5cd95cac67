#include "tools/import/write/FolderLock.hpp"

#include <gtest/gtest.h>

#include <future>
#include <optional>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

using std::chrono::milliseconds;
constexpr std::chrono::minutes longestWait(5);

TEST(FolderLock, isHeldByOne) {
  const test::TemporaryFolder folder;
  std::optional<FolderLock> first(std::in_place);
  ASSERT_TRUE(first->take(folder.path(), milliseconds(0)));
  FolderLock second;
  EXPECT_FALSE(second.take(folder.path(), milliseconds(0)));
  first.reset();
  FolderLock third;
  EXPECT_TRUE(third.take(folder.path(), milliseconds(0)));
}

TEST(FolderLock, isWaitedFor) {
  const test::TemporaryFolder folder;
  std::optional<FolderLock> first(std::in_place);
  ASSERT_TRUE(first->take(folder.path(), milliseconds(0)));
  auto second = std::async(std::launch::async, [&] {
    FolderLock lock;
    return lock.take(folder.path(), longestWait);
  });
  first.reset();
  EXPECT_TRUE(second.get());
}

TEST(FolderLock, ofAFolderThatIsMissingIsNobodys) {
  const test::TemporaryFolder folder;
  FolderLock lock;
  EXPECT_TRUE(lock.take(folder.at("missing"), milliseconds(0)));
}

}  // namespace
}  // namespace tern::imports
