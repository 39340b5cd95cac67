// What is asked and answered stands in the *.txt files beside this one; a line begins with
//
//   #       a comment
//   venue   the venue that is asked from here on, fresh; see AnswerVenues.hpp
//   >       a request
//   <       its answer, byte for byte
//
// To add one, write the request and an empty answer, and take the answer that the test then shows.
#include "TernCoreKit/answers/TernAnswers.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/answers/AnswerVenues.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/Paths.hpp"

namespace tern {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> dataFiles() {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(test::sourcePath("tests/answers"))) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path().string());
  }
  std::ranges::sort(files);
  return files;
}

// The lines of one file, in their order.
class Script {
 public:
  explicit Script(const std::string& file) : file_(file) {}

  void run() {
    std::ifstream lines(file_, std::ios::binary);
    for (std::string line; std::getline(lines, line);) {
      ++number_;
      if (!line.empty() && !line.starts_with('#')) take(line);
    }
    EXPECT_FALSE(answer_) << "the last request lacks its answer";
    EXPECT_GT(number_, 0) << "nothing to be read";
  }

 private:
  void take(const std::string& line) {
    if (line.starts_with("venue ")) {
      answers_.emplace(test::answersOf(line.substr(6)));
    } else if (line.starts_with("> ") && answers_ && !answer_) {
      answer_ = answers_->answerText(line.substr(2));
    } else if (line.starts_with("<") && answer_) {
      if (line != "< " + *answer_) ADD_FAILURE_AT(file_.c_str(), number_) << "< " << *answer_;
      answer_.reset();
    } else {
      ADD_FAILURE_AT(file_.c_str(), number_) << "not what stands here: " << line;
    }
  }

  std::string file_;
  int number_ = 0;
  std::optional<TernAnswers> answers_;
  // Of the request that has not met its line yet.
  std::optional<std::string> answer_;
};

class AnswerFiles : public testing::TestWithParam<std::string> {
 protected:
  AnswerFiles() {
    setLogSink([](std::string_view) {});
  }
  ~AnswerFiles() override { setLogSink({}); }
};

TEST_P(AnswerFiles, hold) { Script(GetParam()).run(); }

INSTANTIATE_TEST_SUITE_P(TernAnswers, AnswerFiles, testing::ValuesIn(dataFiles()),
                         [](const auto& file) {
                           return std::filesystem::path(file.param).stem().string();
                         });

TEST(TernAnswers, everyOperationIsAskedInTheFiles) {
  std::set<std::string> asked;
  for (const std::string& file : dataFiles()) {
    std::ifstream lines(file, std::ios::binary);
    std::string request;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("> ")) request = line.substr(2);
      const bool isRefused = line.find("\"code\":\"TN006\"") != std::string::npos;
      if (!line.starts_with("< ") || isRefused) continue;
      asked.emplace(decodeJson(request).value["op"].text());
    }
  }
  std::set<std::string> known;
  for (const detail::Operation& operation : detail::operations()) known.emplace(operation.name);
  EXPECT_EQ(asked, known);
}

class TernAnswersTest : public testing::Test {
 protected:
  TernAnswersTest() {
    setLogSink([](std::string_view) {});
  }
  ~TernAnswersTest() override { setLogSink({}); }
};

TEST_F(TernAnswersTest, textOfAnyBytesIsAnswered) {
  TernAnswers answers = test::answersOf("small");
  for (const auto* text : {"", "\xFF", "{\"op\":\"\xC3\"}", "\xEF\xBB\xBF"}) {
    EXPECT_THAT(answers.answerText(text),
                StartsWith(R"({"error":{"code":"TN006","message":"not JSON: )"));
  }
  EXPECT_THAT(answers.answerText(std::string(100'000, '[')), HasSubstr("not JSON: "));
  EXPECT_THAT(answers.answerText(R"({"op":")" + std::string(1000, 'x') + "\"}"),
              HasSubstr(std::string(40, 'x') + "...\\\", which"));
  EXPECT_EQ(
      answers.answerText(std::string("{\"op\":\"neighbors\",\"node\":10,\"id\":\"a\\u0000\"}")),
      R"({"id":"a\u0000","neighbors":[]})");
}

TEST_F(TernAnswersTest, answerAsValueIsThatOfTheText) {
  TernAnswers answers = test::answersOf("small");
  const Value request = Value::map({{"op", "route"}, {"from", 1}, {"to", 7}, {"id", 1.5}});
  EXPECT_EQ(encodeJson(answers.answer(request), JsonLayout::compact),
            answers.answerText(encodeJson(request, JsonLayout::compact)));
  EXPECT_THAT(std::string(answers.answer(Value())["error"]["message"].text()),
              StartsWith("a request is a JSON object"));
}

// Every request of the files that sets no block, to the sample, from several threads at once.
using TernAnswersConcurrentTest = TernAnswersTest;

std::vector<std::string> questions() {
  std::vector<std::string> requests;
  for (const std::string& file : dataFiles()) {
    std::ifstream lines(file, std::ios::binary);
    for (std::string line; std::getline(lines, line);) {
      const bool isQuestion = line.starts_with("> ") && line.find("block") == std::string::npos;
      if (isQuestion) requests.push_back(line.substr(2));
    }
  }
  return requests;
}

std::vector<std::string> answersTo(const std::vector<std::string>& requests,
                                   const TernAnswers& answers) {
  std::vector<std::string> all;
  for (const std::string& request : requests) all.push_back(answers.answerText(request));
  return all;
}

TEST_F(TernAnswersConcurrentTest, answersAreThoseOfOneThread) {
  const TernAnswers answers = test::answersOf("plaza");
  const std::vector<std::string> requests = questions();
  ASSERT_GT(requests.size(), 50U);
  const std::vector<std::string> expected = answersTo(requests, answers);
  std::vector<std::vector<std::string>> found(4);
  std::vector<std::thread> threads;
  for (auto& own : found) {
    threads.emplace_back([&] { own = answersTo(requests, answers); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const auto& own : found) EXPECT_EQ(own, expected);
}

// Searches, alternatives, tours, nearest places and the rest: an answer or an error each time, and
// the same answers afterwards.
class TernAnswersFailing : public testing::TestWithParam<std::string> {};

TEST_P(TernAnswersFailing, answersOrSaysSoWhateverAllocationFails) {
  setLogSink([](std::string_view) {});
  const TernAnswers answers = test::answersOf("small");
  const std::string request = GetParam();
  const std::string answer = answers.answerText(request);
  std::string text;
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread, [&] { text = answers.answerText(request); },
      [&] {
        const bool isError = text.empty() || text.find("out of memory") != text.npos ||
                             text == R"({"legs":[],"destinations":[]})" ||
                             text == R"({"tour":[0],"cost":null})";
        ASSERT_TRUE(text == answer || isError) << text;
        text.clear();
        ASSERT_EQ(answers.answerText(request), answer);
      },
      test::Throwing::badAlloc);
  EXPECT_GT(failed, 10);
  setLogSink({});
}

INSTANTIATE_TEST_SUITE_P(
    Each, TernAnswersFailing,
    testing::Values(R"({"op":"route","from":1,"to":7})",
                    R"({"op":"routeToAny","from":1,"to":[7,4]})",
                    R"({"op":"alternatives","from":1,"to":7})",
                    R"({"op":"tour","from":1,"destinations":[7,9,12]})",
                    R"({"op":"nearest","map":1,"at":[0,0],"amenity":7})",
                    R"({"op":"nearestOnMap","from":1,"toMap":2,"destinations":[9,10]})",
                    R"({"op":"closestByRoute","candidates":[2,3],"to":7})",
                    R"({"op":"solve","matrix":[[0,1,2],[1,0,3],[2,3,0]]})",
                    R"({"op":"directions","from":1,"to":7,"language":"fr"})",
                    R"({"op":"nearestByWalk","from":1,"destinations":[9,12]})",
                    R"({"op":"matrix","from":[1],"to":[7,4]})",
                    R"({"op":"reach","from":1,"metres":20})", R"({"op":"places","text":"toilets"})",
                    R"({"op":"neighbors","node":2})"));

TEST_F(TernAnswersTest, withoutAVenueThereIsAnError) {
  TernAnswers answers{std::shared_ptr<TernActiveVenue>()};
  EXPECT_THAT(answers.answerText(R"({"op":"center"})"), StartsWith(R"({"error":{"code":"TN007")"));
}

}  // namespace
}  // namespace tern
