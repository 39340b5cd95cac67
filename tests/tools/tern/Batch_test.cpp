#include "tools/tern/Batch.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "tests/support/ActiveVenue.hpp"
#include "tests/support/MemoryFile.hpp"

namespace tern::command {
namespace {

using test::MemoryFile;

class BatchTest : public testing::Test {
 protected:
  std::string answersTo(std::string_view text, std::size_t longestBytes = 1000) {
    const MemoryFile input(text);
    const MemoryFile answers;
    LineReader lines(input.descriptor(), longestBytes);
    Output output(answers.descriptor());
    answerLines(lines, answers_, output);
    output.flush();
    return answers.text();
  }

  TernAnswers answers_{test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}}, .paths = {"A-B"}})};
};

constexpr const char* block = R"({"op":"blockExit","node":1,"blocked":true,"id":)";

TEST_F(BatchTest, answersEachLineInOrder) {
  EXPECT_EQ(answersTo(block + std::string("1}\n") + block + "2}\r\n" + block + "3}"),
            "{\"id\":1,\"ok\":true}\n{\"id\":2,\"ok\":true}\n{\"id\":3,\"ok\":true}\n");
}

TEST_F(BatchTest, blankLinesArePassedOver) {
  EXPECT_EQ(answersTo(" \t\n\n\r\n" + std::string(block) + "1}\n \n"), "{\"id\":1,\"ok\":true}\n");
  EXPECT_EQ(answersTo(""), "");
}

TEST_F(BatchTest, lineThatIsNoRequestDoesNotEndTheBatch) {
  const std::string answers = answersTo("{\n" + std::string(block) + "1}\n");
  EXPECT_EQ(answers.find("{\"error\":{\"code\":\"TN006\""), 0U);
  EXPECT_NE(answers.find("\n{\"id\":1,\"ok\":true}\n"), std::string::npos);
}

TEST_F(BatchTest, lineThatIsTooLongIsAnsweredAndLeft) {
  const std::string answers = answersTo(std::string(2000, ' ') + "\n" + block + "1}\n");
  EXPECT_NE(answers.find("the line is longer than 1000 bytes"), std::string::npos);
  EXPECT_NE(answers.find("\n{\"id\":1,\"ok\":true}\n"), std::string::npos);
}

TEST_F(BatchTest, blocksLastFromLineToLine) {
  EXPECT_EQ(answersTo(block + std::string("1}\n") + R"({"op":"route","from":1,"to":2})"),
            "{\"id\":1,\"ok\":true}\n{\"route\":[]}\n");
}

TEST_F(BatchTest, endsWhenItsAnswersCannotBeWritten) {
  const int full = open("/dev/full", O_WRONLY);
  const MemoryFile input(block + std::string("1}\n") + block + "2}\n");
  LineReader lines(input.descriptor());
  Output output(full);
  answerLines(lines, answers_, output);
  EXPECT_EQ(output.error(), ENOSPC);
  close(full);
}

}  // namespace
}  // namespace tern::command
