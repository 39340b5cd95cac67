#include "tools/tern/LineReader.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "tests/support/MemoryFile.hpp"

namespace tern::command {
namespace {

using test::MemoryFile;
using testing::ElementsAre;
using testing::IsEmpty;

// Every line, "<too long>" for one that is.
std::vector<std::string> linesOf(LineReader& reader) {
  std::vector<std::string> lines;
  while (const auto line = reader.next()) {
    lines.emplace_back(line->tooLong ? "<too long>" : line->text);
  }
  return lines;
}

std::vector<std::string> linesOf(std::string_view text, std::size_t longestBytes = 1000) {
  const MemoryFile file(text);
  LineReader reader(file.descriptor(), longestBytes);
  return linesOf(reader);
}

TEST(LineReader, readsLinesInOrder) {
  EXPECT_THAT(linesOf("a\nbc\n\nd\n"), ElementsAre("a", "bc", "", "d"));
}

TEST(LineReader, lastLineNeedsNoEnd) { EXPECT_THAT(linesOf("a\nb"), ElementsAre("a", "b")); }

TEST(LineReader, emptyInputHasNoLine) { EXPECT_THAT(linesOf(""), IsEmpty()); }

TEST(LineReader, carriageReturnBelongsToTheEnd) {
  EXPECT_THAT(linesOf("a\r\nb\rc\r\n\r\nd\r"), ElementsAre("a", "b\rc", "", "d"));
}

TEST(LineReader, zeroBytesAreText) {
  using namespace std::string_literals;
  EXPECT_THAT(linesOf("a\0b\nc"s), ElementsAre("a\0b"s, "c"));
}

TEST(LineReader, lineLongerThanABufferComesWhole) {
  const std::string longLine(300'000, 'x');
  EXPECT_THAT(linesOf(longLine + "\ny\n", 300'000), ElementsAre(longLine, "y"));
}

TEST(LineReader, lineOverTheLimitComesWithoutItsText) {
  const std::string text = "a\n" + std::string(11, 'x') + "\n" + std::string(10, 'y') + "\nb\n";
  EXPECT_THAT(linesOf(text, 10), ElementsAre("a", "<too long>", std::string(10, 'y'), "b"));
}

TEST(LineReader, endlessLineIsNotHeld) {
  const std::string endless(1'000'000, 'x');
  EXPECT_THAT(linesOf(endless + "\nb", 10), ElementsAre("<too long>", "b"));
  EXPECT_THAT(linesOf(endless, 10), ElementsAre("<too long>"));
}

TEST(LineReader, knowsWhetherTheNextLineIsThere) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  LineReader reader(ends[0]);
  EXPECT_FALSE(reader.hasLine());
  ASSERT_EQ(write(ends[1], "a\nb\nc", 5), 5);
  EXPECT_EQ(reader.next()->text, "a");
  EXPECT_TRUE(reader.hasLine());
  EXPECT_EQ(reader.next()->text, "b");
  EXPECT_FALSE(reader.hasLine());
  close(ends[1]);
  EXPECT_EQ(reader.next()->text, "c");
  close(ends[0]);
}

TEST(LineReader, failedReadEndsTheLinesAndIsTold) {
  const int folder = open("/", O_RDONLY);
  LineReader reader(folder);
  EXPECT_FALSE(reader.next());
  EXPECT_EQ(reader.error(), EISDIR);
  close(folder);
}

RC_GTEST_PROP(LineReader, joinedLinesAreTheInput, (const std::vector<std::string>& parts)) {
  std::string text;
  std::vector<std::string> expected;
  for (std::string part : parts) {
    std::erase_if(part, [](char byte) { return byte == '\n' || byte == '\r'; });
    text += part + "\n";
    expected.push_back(part);
  }
  RC_ASSERT(linesOf(text, 100'000) == expected);
}

}  // namespace
}  // namespace tern::command
