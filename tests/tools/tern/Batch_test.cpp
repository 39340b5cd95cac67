#include "tools/tern/Batch.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <thread>

#include "tests/support/ActiveVenue.hpp"
#include "tests/support/MemoryFile.hpp"
#include "tests/support/RandomVenue.hpp"

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

// What several threads answer, beside what one does.
class ConcurrentBatch : public testing::Test {
 protected:
  // One venue for each, since a batch may leave blocks in it.
  static std::string answersTo(std::string_view text, unsigned jobs,
                               std::size_t longestBytes = 100'000) {
    const MemoryFile input(text);
    const MemoryFile written;
    const TernAnswers answers(test::loadDrawnVenue(drawing()));
    LineReader lines(input.descriptor(), longestBytes);
    Output output(written.descriptor());
    if (jobs == 1) {
      answerLines(lines, answers, output);
    } else {
      answerLinesSideBySide(lines, answers, output, jobs);
    }
    output.flush();
    return written.text();
  }

  static test::Drawing drawing() {
    return {.floors = {{.lines = {"A  B  C", "D  E  F", "G  H  I"}}},
            .paths = {"A-B", "B-C", "A-D", "B-E", "C-F", "D-E", "E-F", "D-G", "E-H", "F-I", "G-H",
                      "H-I"}};
  }
};

TEST_F(ConcurrentBatch, answersComeInTheOrderOfTheLines) {
  std::string requests;
  std::string answers;
  for (int id = 0; id < 2000; ++id) {
    // Now a long one, now a short one.
    requests += id % 5 == 0 ? R"({"op":"matrix","from":[100],"to":[100],"id":)"
                            : R"({"op":"neighbors","node":100,"id":)";
    requests += std::to_string(id) + "}\n";
    answers +=
        "{\"id\":" + std::to_string(id) +
        (id % 5 == 0 ? ",\"costs\":[[null]],\"mmDistances\":[[null]]}\n" : ",\"neighbors\":[]}\n");
  }
  EXPECT_EQ(answersTo(requests, 4), answers);
}

TEST_F(ConcurrentBatch, blockCountsForWhatStandsBehindItOnly) {
  const std::string routes = [] {
    std::string lines;
    for (int i = 0; i < 50; ++i) lines += "{\"op\":\"route\",\"from\":1,\"to\":2}\n";
    return lines;
  }();
  const std::string text = routes + block + "1}\n" + routes +
                           R"({"op":"blockExit","node":1,"blocked":false})" + "\n" + routes;
  const std::string answers = answersTo(text, 4);
  EXPECT_EQ(answers, answersTo(text, 1));
  const std::size_t first = answers.find("{\"route\":[]}\n{\"route\":[]}\n");
  EXPECT_LT(answers.find("{\"id\":1,\"ok\":true}"), first);
  EXPECT_LT(first, answers.find("\n{\"ok\":true}"));
}

TEST_F(ConcurrentBatch, linesThatAreNoRequestsAreAnsweredInTheirPlaces) {
  const std::string text = "\n{\n" + std::string(2000, ' ') + "\nnull\n" + block + "1}\r\n \n[]";
  EXPECT_EQ(answersTo(text, 3, 1000), answersTo(text, 1, 1000));
  EXPECT_EQ(answersTo("", 2), "");
}

TEST_F(ConcurrentBatch, endsWhenItsAnswersCannotBeWritten) {
  const int full = open("/dev/full", O_WRONLY);
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += R"({"op":"center"})"
            "\n";
  const MemoryFile input(text);
  LineReader lines(input.descriptor());
  Output output(full);
  answerLinesSideBySide(lines, TernAnswers(test::loadDrawnVenue(drawing())), output, 3);
  EXPECT_EQ(output.error(), ENOSPC);
  close(full);
}

// Whoever does not take answers is not asked for more: what is read ahead is bounded, and so is
// what is kept of it.
TEST_F(ConcurrentBatch, readsNoFurtherThanItsAnswersAreTaken) {
  int in[2];
  int out[2];
  ASSERT_EQ(pipe2(in, O_CLOEXEC | O_NONBLOCK) + pipe2(out, O_CLOEXEC), 0);
  fcntl(in[0], F_SETFL, 0);
  std::thread batch([&] {
    LineReader lines(in[0]);
    Output output(out[1]);
    answerLinesSideBySide(lines, TernAnswers(test::loadDrawnVenue(drawing())), output, 2);
    close(out[1]);
  });
  // Answers of two kilobytes, until nothing is taken for a while.
  const std::string request = R"({"op":"center","id":")" + std::string(2000, 'x') + "\"}\n";
  std::size_t sent = 0;
  pollfd writable{in[1], POLLOUT, 0};
  while (sent < 100'000'000 && poll(&writable, 1, 500) > 0) {
    const ssize_t count = write(in[1], request.data(), request.size());
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
  EXPECT_LT(sent, 20'000'000U);
  close(in[1]);
  std::string heard(1 << 20U, '\0');
  while (read(out[0], heard.data(), heard.size()) > 0) {
  }
  batch.join();
  close(in[0]);
  close(out[0]);
}

// A list of requests of all kinds, with blocks among them.
std::string randomRequests(test::Tape& tape) {
  const auto waypoint = [&] { return std::to_string(1 + tape.below(10)); };
  const auto flag = [&] { return tape.oneIn(3) ? "false" : "true"; };
  std::string text;
  const std::size_t count = tape.below(200);
  for (std::size_t id = 0; id < count; ++id) {
    const std::string ends = "\"from\":" + waypoint() + ",\"to\":" + waypoint();
    std::string request;
    switch (tape.below(8)) {
      case 0:
        request = "\"op\":\"blockEdge\"," + ends + ",\"blocked\":" + flag();
        break;
      case 1:
        request = "\"op\":\"blockEntry\",\"node\":" + waypoint() + ",\"blocked\":" + flag();
        break;
      case 2:
        request = "\"op\":\"\\u0062lockExit\",\"node\":" + waypoint() + ",\"blocked\":" + flag();
        break;
      case 3:
        request = "\"op\":\"alternatives\"," + ends;
        break;
      case 4:
        request = "\"op\":\"neighbors\",\"node\":" + waypoint();
        break;
      default:
        request = "\"op\":\"route\"," + ends;
        break;
    }
    text += "{\"id\":" + std::to_string(id) + "," + request + "}\n";
  }
  return text;
}

RC_GTEST_FIXTURE_PROP(ConcurrentBatch, answersAreThoseOfOneThread, ()) {
  test::Tape tape(*test::tapes());
  const std::string requests = randomRequests(tape);
  RC_ASSERT(answersTo(requests, 4) == answersTo(requests, 1));
}

}  // namespace
}  // namespace tern::command
