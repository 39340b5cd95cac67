#include "tools/tern/Output.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <thread>

#include "tests/support/MemoryFile.hpp"

namespace tern::command {
namespace {

using test::MemoryFile;

TEST(Output, gathersUntilItIsFlushed) {
  const MemoryFile file;
  Output output(file.descriptor());
  output.write("a");
  output.write("b\n");
  EXPECT_EQ(file.text(), "");
  output.flush();
  EXPECT_EQ(file.text(), "ab\n");
}

TEST(Output, handsOverMuchTextByItself) {
  const MemoryFile file;
  Output output(file.descriptor());
  const std::string much(200'000, 'x');
  output.write(much);
  EXPECT_EQ(file.text(), much);
}

TEST(Output, handsOverTheRestAtItsEnd) {
  const MemoryFile file;
  { Output(file.descriptor()).write("rest"); }
  EXPECT_EQ(file.text(), "rest");
}

TEST(Output, fullDeviceIsAnErrorThatStays) {
  const int full = open("/dev/full", O_WRONLY);
  ASSERT_GE(full, 0);
  Output output(full);
  output.write("a");
  EXPECT_EQ(output.error(), 0);
  output.flush();
  EXPECT_EQ(output.error(), ENOSPC);
  output.write("b");
  output.flush();
  EXPECT_EQ(output.error(), ENOSPC);
  close(full);
}

TEST(Output, waitsForAFullPipeThatDoesNotBlock) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  const std::string much(500'000, 'x');
  std::thread writer([&] {
    Output(ends[1]).write(much);
    close(ends[1]);
  });
  std::string got;
  char buffer[4096];
  for (;;) {
    const ssize_t count = read(ends[0], buffer, sizeof buffer);
    if (count == 0) break;
    if (count > 0) got.append(buffer, static_cast<std::size_t>(count));
  }
  writer.join();
  close(ends[0]);
  EXPECT_EQ(got, much);
}

}  // namespace
}  // namespace tern::command
