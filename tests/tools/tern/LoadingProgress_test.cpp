#include "tools/tern/LoadingProgress.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <optional>
#include <string>

#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/MemoryFile.hpp"

namespace tern::command {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

// Reads until the text has come.
std::string readUntil(int descriptor, std::string_view text) {
  std::string read;
  char byte = 0;
  while (read.find(text) == std::string::npos && ::read(descriptor, &byte, 1) == 1) read += byte;
  return read;
}

TEST(LoadingProgress, countsOnATerminalAndErasesItselfConcurrently) {
  int screen = -1;
  int terminal = -1;
  ASSERT_EQ(openpty(&screen, &terminal, nullptr, nullptr, nullptr), 0);
  std::optional<LoadingProgress> progress(std::in_place, terminal, std::chrono::milliseconds(1));
  EXPECT_THAT(readUntil(screen, "Loading, 0 s"), HasSubstr("\r\x1B[KLoading"));
  progress.reset();
  ASSERT_EQ(write(terminal, "!", 1), 1);
  EXPECT_THAT(readUntil(screen, "!"), EndsWith("\r\x1B[K!"));
  close(screen);
  close(terminal);
}

TEST(LoadingProgress, saysNothingToAFile) {
  const test::MemoryFile file;
  { LoadingProgress progress(file.descriptor(), std::chrono::milliseconds(0)); }
  EXPECT_EQ(file.text(), "");
}

TEST(LoadingProgress, whereNoThreadIsToBeHadNothingIsShown) {
  int screen = -1;
  int terminal = -1;
  ASSERT_EQ(openpty(&screen, &terminal, nullptr, nullptr, nullptr), 0);
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::thread,
      [&] { LoadingProgress progress(terminal, std::chrono::hours(1)); }, [] {});
  EXPECT_GE(failed, 1);
  close(screen);
  close(terminal);
}

}  // namespace
}  // namespace tern::command
