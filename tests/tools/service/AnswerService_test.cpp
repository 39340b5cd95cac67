#include "tools/service/AnswerService.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>

#include "tests/support/ActiveVenue.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::service {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::shared_ptr<TernActiveVenue> drawnVenue() {
  return test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}}, .paths = {"A-B"}});
}

VenueList drawnList() {
  return {{1}, [](std::int64_t) { return std::make_shared<TernAnswers>(drawnVenue()); }};
}

class AnswerServiceTest : public testing::Test {
 protected:
  static ServedAnswer answer(
      AnswerService& service, std::string body, std::function<void()> wake = [] {}) {
    ReceivedRequest request{.method = "POST",
                            .target = "/answer",
                            .headers = {},
                            .body = std::move(body),
                            .wake = std::move(wake)};
    return service.answer(request, "");
  }

  // All of the stream, a few bytes at a time.
  static std::string heard(AnswerService& service, std::string body, std::size_t most = 7) {
    std::atomic<int> wakes = 0;
    const ServedAnswer served = answer(service, std::move(body), [&] { ++wakes; });
    EXPECT_EQ(served.status, 200) << served.body;
    std::string all;
    std::string bytes(most, '\0');
    while (served.stream != nullptr) {
      const int before = wakes;
      const BodyStream::Piece piece = served.stream->read(bytes.data(), most);
      if (piece.isEnd) break;
      if (piece.bytes == 0) test::awaitUntil([&] { return wakes != before; }, "an answer");
      all.append(bytes, 0, piece.bytes);
    }
    return all;
  }

  static void expectRefusal(const ServedAnswer& answer, int status, const std::string& text) {
    EXPECT_EQ(answer.status, status);
    EXPECT_EQ(answer.stream, nullptr);
    EXPECT_THAT(answer.body, HasSubstr(text));
  }

  AnswerService service_{drawnList()};
};

using ConcurrentAnswerService = AnswerServiceTest;

TEST_F(ConcurrentAnswerService, answersAreThoseOfTheLinesInOrder) {
  const TernAnswers answers(drawnVenue());
  std::string body;
  std::string expected;
  for (int id = 0; id < 300; ++id) {
    const std::string request = R"({"op":"route","from":1,"to":2,"id":)" + std::to_string(id) + "}";
    body += request + (id % 2 == 0 ? "\r\n" : "\n \n");
    expected += answers.answerText(request) + "\n";
  }
  EXPECT_EQ(heard(service_, body), expected);
}

TEST_F(ConcurrentAnswerService, lastLineNeedsNoEnd) {
  EXPECT_EQ(heard(service_, R"({"op":"neighbors","node":9})"), "{\"neighbors\":[]}\n");
}

TEST_F(ConcurrentAnswerService, lineThatIsNoRequestIsAnsweredAsOne) {
  const TernAnswers answers(drawnVenue());
  EXPECT_EQ(heard(service_, "{\n[]\n"),
            answers.answerText("{") + "\n" + answers.answerText("[]") + "\n");
}

TEST_F(ConcurrentAnswerService, nobodyBlocksWhatOthersAreAnsweredAbout) {
  const std::string route = R"({"op":"route","from":1,"to":2})";
  const std::string before = heard(service_, route);
  const std::string answers =
      heard(service_, R"({"op":"blockExit","node":1,"blocked":true,"id":[5]})"
                      "\n"
                      R"({"op":"\u0062lockEdge","from":1,"to":2,"blocked":true})"
                      "\n"
                      R"({"op":"blockEntry","node":2,"blocked":true})"
                      "\n" +
                          route);
  EXPECT_THAT(answers, StartsWith(R"({"id":[5],"error":{"code":"TN006","message":"nobody may)"));
  EXPECT_THAT(answers, EndsWith("\n" + before));
  EXPECT_EQ(heard(service_, route), before);
}

TEST_F(ConcurrentAnswerService, linesThatAreTooLateAreAnsweredWithAnError) {
  AnswerService late(drawnList(), {.time = std::chrono::seconds(0)});
  EXPECT_THAT(heard(late, R"({"op":"center","id":5})"),
              StartsWith(R"({"id":5,"error":{"code":"TN008","message":"not begun within 0 sec)"));
  EXPECT_THAT(heard(late, "nonsense"), StartsWith(R"({"error":{"code":"TN008")"));
}

TEST_F(ConcurrentAnswerService, whoGoesAwayLeavesNothingBehind) {
  AnswerService service(drawnList(), {.bodies = 1});
  for (int i = 0; i < 50; ++i) {
    std::string body;
    for (int j = 0; j < 100; ++j) body += "{\"op\":\"center\"}\n";
    EXPECT_NE(answer(service, body).stream, nullptr);
  }
}

TEST_F(AnswerServiceTest, linesAreBounded) {
  AnswerService narrow(drawnList(), {.lineBytes = 30, .lines = 3});
  EXPECT_NE(answer(narrow, std::string(30, 'x') + "\n\n\nx\nx\n\n").stream, nullptr);
  expectRefusal(answer(narrow, std::string(31, 'x')), 413, "A line is longer than 30 bytes");
  expectRefusal(answer(narrow, "x\nx\nx\nx"), 413, "There are more than 3 lines");
}

TEST_F(AnswerServiceTest, bodyWithoutARequestIsRefused) {
  for (const char* const body : {"", "\n", " \r\n\t\n"}) {
    expectRefusal(answer(service_, body), 400, "The body holds no request");
  }
}

TEST_F(AnswerServiceTest, bodiesAtATimeAreBounded) {
  AnswerService narrow(drawnList(), {.bodies = 2});
  const ServedAnswer first = answer(narrow, "x");
  {
    const ServedAnswer second = answer(narrow, "x");
    EXPECT_NE(second.stream, nullptr);
    expectRefusal(answer(narrow, "x"), 503, "Too many ask at once");
  }
  EXPECT_NE(answer(narrow, "x").stream, nullptr);
}

TEST_F(AnswerServiceTest, venueThatThereIsNotIsRefused) {
  AnswerService none(VenueList{});
  expectRefusal(answer(none, "x"), 404, "There is no venue");
}

}  // namespace
}  // namespace tern::service
