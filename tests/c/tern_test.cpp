#include "TernCoreKit/c/tern.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "TernCoreKit/Version.hpp"
#include "TernCoreKit/c/detail/Handles.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/c/CTexts.hpp"
#include "tests/c/FakeHost.hpp"
#include "tests/c/WholeInterface.h"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using test::answerOf;
using test::CError;
using test::errorLine;
using testing::HasSubstr;
using testing::StartsWith;

const char* const fromAToC = R"({"op":"route","from":1,"to":3})";

// The folder of two floors, and nothing left open behind a test.
class CInterface : public testing::Test {
 protected:
  CInterface() : handlesBefore_(detail::handles().count()) { test::writeTwoFloors(folder_); }
  ~CInterface() override { EXPECT_EQ(detail::handles().count(), handlesBefore_); }

  tern_venue* openFolder(const char* options = nullptr) {
    return tern_venue_open_folder(folder_.at("").c_str(), options, error_.out());
  }
  std::string errorOfFolder(const std::string& folder, const char* options = nullptr) {
    EXPECT_EQ(tern_venue_open_folder(folder.c_str(), options, error_.out()), nullptr) << folder;
    return error_.line();
  }

  const test::TemporaryFolder folder_;
  CError error_;

 private:
  const std::size_t handlesBefore_;
};

TEST_F(CInterface, versionsAreThoseOfTheLibrary) {
  EXPECT_EQ(tern_version(), version());
  EXPECT_EQ(tern_interface_version(), TERN_INTERFACE_VERSION);
}

TEST_F(CInterface, aProgramInCUsesEachFunction) {
  const char* const failure = drive_whole_interface(test::samplePath().c_str());
  EXPECT_EQ(failure, nullptr) << failure;
}

TEST_F(CInterface, answersAreThoseOfBatchToTheByte) {
  std::string requests;
  std::vector<std::string> asked;
  for (const char* file : {"tests/answers/plaza.txt", "tests/answers/directions.txt"}) {
    std::ifstream lines(test::sourcePath(file), std::ios::binary);
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("> ")) asked.push_back(line.substr(2));
    }
  }
  for (const char* bad : {"", "[]", "{\"op\":\"\xFF\"}", R"({"op":"route"})", "\xC3"}) {
    if (*bad != '\0') asked.emplace_back(bad);
  }
  for (const std::string& request : asked) requests += request + "\n";
  ASSERT_GT(asked.size(), 10U);
  const auto batch =
      test::runProcess({test::commandPath(), "batch", "--data", test::samplePath()}, requests);
  ASSERT_EQ(batch.status, 0) << batch.diagnostics;

  setLogSink([](std::string_view) {});
  tern_venue* const venue =
      tern_venue_open_folder(test::samplePath().c_str(), nullptr, error_.out());
  ASSERT_NE(venue, nullptr) << error_.text();
  std::string answers;
  for (const std::string& request : asked) answers += answerOf(venue, request.c_str()) + "\n";
  setLogSink({});
  EXPECT_EQ(answers, batch.output);
  EXPECT_TRUE(tern_venue_close(venue, error_.out()));
}

TEST_F(CInterface, aFolderThatCannotBeOpenedSaysWhy) {
  const std::string at = folder_.at("");
  EXPECT_EQ(errorOfFolder(folder_.at("nowhere")),
            "TN007 there is no folder " + folder_.at("nowhere"));
  EXPECT_THAT(errorOfFolder(at, R"({"venues":[9]})"), StartsWith("TN007 there is no venue 9 in "));
  folder_.write("venue/1/building/1/full.json", "{\"id\":");
  EXPECT_THAT(errorOfFolder(at), StartsWith("TN003 " + folder_.at("venue/1/building/1/full.json")));
  folder_.write("full.json", R"({"venues":{"items":[{"id":1},{"id":2}]}})");
  EXPECT_EQ(errorOfFolder(at), "TN006 name one of the venues 1, 2");
}

TEST_F(CInterface, optionsThatAreNotUnderstoodAreNamed) {
  const auto errorOf = [this](const char* options) {
    return errorOfFolder(folder_.at(""), options);
  };
  EXPECT_EQ(errorOf("[]"), "TN006 options are a JSON object");
  EXPECT_THAT(errorOf("{"), StartsWith("TN006 the options are not JSON: "));
  EXPECT_EQ(errorOf("\xFF"), "TN006 the text of options is not UTF-8");
  EXPECT_EQ(errorOf(R"({"venue":1})"), "TN006 \"venue\" is no option");
  for (const char* ids : {"1", "[]", "null", "[\"1\"]", "{}", "[1.5]"}) {
    const std::string options = R"({"venues":)" + std::string(ids) + "}";
    EXPECT_EQ(errorOf(options.c_str()), "TN006 \"venues\" must be a list of ids") << ids;
  }
  EXPECT_EQ(errorOf(R"({"venues":[1,1]})"), "TN006 \"venues\" names an id twice");
}

// Everything at once that a caller may get wrong in its arguments.
TEST_F(CInterface, nullGetsAnErrorEverywhere) {
  EXPECT_EQ(tern_venue_open_folder(nullptr, nullptr, error_.out()), nullptr);
  EXPECT_EQ(error_.line(), "TN006 the folder is NULL");
  EXPECT_EQ(tern_venue_open_documents(nullptr, nullptr, nullptr, error_.out()), nullptr);
  EXPECT_EQ(error_.line(), "TN006 the callback is NULL");
  EXPECT_EQ(errorLine(answerOf(nullptr, fromAToC)), "TN006 the venue is NULL");
  EXPECT_FALSE(tern_venue_close(nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the venue is NULL");
  EXPECT_EQ(tern_hub_open(nullptr, error_.out()), nullptr);
  EXPECT_EQ(error_.line(), "TN006 \"customerId\" is missing");
  EXPECT_FALSE(tern_hub_load(nullptr, nullptr, nullptr, nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the hub is NULL");
  EXPECT_FALSE(tern_hub_list(nullptr, nullptr, nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the hub is NULL");
  EXPECT_FALSE(tern_hub_close(nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the hub is NULL");
  EXPECT_FALSE(tern_give(nullptr, "x", 1, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the sink is NULL");
  EXPECT_FALSE(tern_http_complete(nullptr, nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the exchange is NULL");
  tern_text_free(nullptr);
}

TEST_F(CInterface, nobodyHasToTakeTheError) {
  EXPECT_EQ(tern_venue_open_folder(nullptr, nullptr, nullptr), nullptr);
  EXPECT_FALSE(tern_venue_close(nullptr, nullptr));
  EXPECT_FALSE(tern_hub_close(nullptr, nullptr));
}

TEST_F(CInterface, errorIsNullAfterSuccess) {
  char text = 'x';
  char* error = &text;
  tern_venue* const venue = tern_venue_open_folder(folder_.at("").c_str(), nullptr, &error);
  EXPECT_EQ(error, nullptr);
  error = &text;
  EXPECT_TRUE(tern_venue_close(venue, &error));
  EXPECT_EQ(error, nullptr);
}

TEST_F(CInterface, errorsHaveTheShapeOfTheLibrarysOwn) {
  tern_venue_close(nullptr, error_.out());
  EXPECT_EQ(
      error_.text(),
      R"({"error":{"code":"TN006","message":"the venue is NULL","description":)" +
          encodeJson(decodeJson(error_.text()).value["error"]["description"], JsonLayout::compact) +
          "}}");
}

TEST_F(CInterface, whatIsClosedGetsAnError) {
  tern_venue* const venue = openFolder();
  EXPECT_THAT(answerOf(venue, fromAToC), StartsWith(R"({"route":[{"mapId":1,)"));
  EXPECT_EQ(errorLine(answerOf(venue, nullptr)), "TN006 the request is NULL");
  EXPECT_TRUE(tern_venue_close(venue, error_.out()));
  EXPECT_EQ(errorLine(answerOf(venue, fromAToC)), "TN006 the venue is closed, or never was one");
  EXPECT_FALSE(tern_venue_close(venue, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the venue is closed, or never was one");
}

TEST_F(CInterface, aHandleIsNeverGivenAgain) {
  tern_venue* const first = openFolder();
  tern_venue_close(first, nullptr);
  tern_venue* const second = openFolder();
  EXPECT_NE(first, second);
  EXPECT_FALSE(tern_venue_close(first, nullptr));
  EXPECT_TRUE(tern_venue_close(second, nullptr));
}

TEST_F(CInterface, aHandleOfAnotherKindIsNone) {
  tern_venue* const venue = openFolder();
  EXPECT_FALSE(tern_hub_close(reinterpret_cast<tern_hub*>(venue), error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the hub is closed, or never was one");
  int local = 0;
  EXPECT_FALSE(tern_venue_close(reinterpret_cast<tern_venue*>(&local), nullptr));
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
}

TEST_F(CInterface, aFolderThatIsNotUtf8GetsAnError) {
  EXPECT_EQ(errorOfFolder("\xC3("), "TN006 the folder is not UTF-8");
  EXPECT_EQ(errorOfFolder("\xED\xA0\x80"), "TN006 the folder is not UTF-8");
  EXPECT_THAT(errorOfFolder("/no/\xC3\xA4/\xEF\xBF\xBD"), StartsWith("TN007 there is no folder"));
}

// Documents that a callback hands over.
class CDocuments : public CInterface {
 protected:
  using Give = std::function<void(const std::string& path, tern_sink* sink)>;

  CDocuments() {
    for (const char* path : {"full.json", "venue/1/full.json", "venue/1/building/1/full.json"}) {
      documents_[path] = folder_.read(path);
    }
  }
  tern_venue* open(Give give, const char* options = nullptr) {
    return tern_venue_open_documents(
        [](void* context, const char* path, tern_sink* sink) {
          (*static_cast<Give*>(context))(path, sink);
        },
        &give, options, error_.out());
  }
  // Gives what there is.
  Give all() {
    return [this](const std::string& path, tern_sink* sink) {
      const auto found = documents_.find(path);
      if (found == documents_.end()) return;
      EXPECT_TRUE(tern_give(sink, found->second.data(), found->second.size(), nullptr));
    };
  }

  std::map<std::string, std::string> documents_;
};

TEST_F(CDocuments, makeAVenue) {
  tern_venue* const venue = open(all());
  ASSERT_NE(venue, nullptr) << error_.text();
  tern_venue* const ofFolder = openFolder();
  EXPECT_EQ(answerOf(venue, fromAToC), answerOf(ofFolder, fromAToC));
  tern_venue_close(venue, nullptr);
  tern_venue_close(ofFolder, nullptr);
}

TEST_F(CDocuments, mayComeInPieces) {
  tern_venue* const venue = open([this](const std::string& path, tern_sink* sink) {
    for (const char& byte : documents_[path]) tern_give(sink, &byte, 1, nullptr);
    tern_give(sink, nullptr, 0, nullptr);
  });
  EXPECT_NE(venue, nullptr) << error_.text();
  tern_venue_close(venue, nullptr);
}

TEST_F(CDocuments, thatAreMissingAreNamed) {
  EXPECT_EQ(open([](const std::string&, tern_sink*) {}), nullptr);
  EXPECT_EQ(error_.line(), "TN007 full.json: was not given");
  documents_.erase("venue/1/building/1/full.json");
  EXPECT_EQ(open(all()), nullptr);
  EXPECT_EQ(error_.line(), "TN007 venue/1/building/1/full.json: was not given");
}

TEST_F(CDocuments, thatAreDamagedAreNamed) {
  for (const std::string path :
       {"full.json", "venue/1/full.json", "venue/1/building/1/full.json"}) {
    const std::string whole = documents_[path];
    for (const std::string& text : {std::string(), std::string("{"), whole.substr(0, 40),
                                    std::string("{\"id\":\"\xFF\"}"), std::string("{}\0", 3)}) {
      documents_[path] = text;
      EXPECT_EQ(open(all()), nullptr) << path << ": " << text;
      EXPECT_THAT(error_.line(), StartsWith("TN003 " + path + ": "));
    }
    documents_[path] = whole;
  }
}

TEST_F(CDocuments, takeNothingWhenTheCallbackHasReturned) {
  tern_sink* kept = nullptr;
  open([&](const std::string&, tern_sink* sink) { kept = sink; });
  EXPECT_FALSE(tern_give(kept, "{}", 2, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the sink is closed, or never was one");
}

TEST_F(CDocuments, ofNullBytesAreRefused) {
  std::string refused;
  open([&](const std::string&, tern_sink* sink) {
    CError error;
    EXPECT_FALSE(tern_give(sink, nullptr, 1, error.out()));
    refused = error.line();
  });
  EXPECT_EQ(refused, "TN006 the bytes are NULL");
}

TEST_F(CDocuments, mayOpenAnotherVenueMeanwhile) {
  int opened = 0;
  tern_venue* const venue = open([&](const std::string& path, tern_sink* sink) {
    CError error;
    tern_venue* const other = tern_venue_open_folder(folder_.at("").c_str(), nullptr, error.out());
    opened += tern_venue_close(other, nullptr) ? 1 : 0;
    all()(path, sink);
  });
  EXPECT_EQ(opened, 3);
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
}

// Two venues whose exits name each other.
class CJoined : public CInterface {
 protected:
  CJoined() {
    const auto result = test::runProcess({test::commandPath(), "generate", "--out", mall_.at("m"),
                                          "--venues", "2", "--shops", "4", "--floors", "2"});
    EXPECT_EQ(result.status, 0) << result.diagnostics;
  }
  tern_venue* openBoth() {
    return tern_venue_open_folder(mall_.at("m").c_str(), R"({"venues":[1,2]})", error_.out());
  }

  const test::TemporaryFolder mall_;
};

TEST_F(CJoined, answerAsBatchDoes) {
  const std::string floors = R"({"op":"places","text":"","venue":2})";
  const std::string unnamed = R"({"op":"center"})";
  const auto batch =
      test::runProcess({test::commandPath(), "batch", "--data", mall_.at("m"), "--venue", "1,2"},
                       floors + "\n" + unnamed + "\n");
  tern_venue* const venue = openBoth();
  ASSERT_NE(venue, nullptr) << error_.text();
  EXPECT_EQ(answerOf(venue, floors.c_str()) + "\n" + answerOf(venue, unnamed.c_str()) + "\n",
            batch.output);
  EXPECT_THAT(answerOf(venue, unnamed.c_str()), HasSubstr("\\\"venue\\\""));
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
}

TEST_F(CJoined, areOneSetAtATime) {
  tern_venue* const venue = openBoth();
  ASSERT_NE(venue, nullptr) << error_.text();
  EXPECT_EQ(openBoth(), nullptr);
  EXPECT_EQ(error_.line(), "TN006 joined venues are open already; close them first");
  tern_venue* const single = openFolder();
  EXPECT_NE(single, nullptr);
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
  for (int i = 0; i < 5; ++i) {
    tern_venue* const again = openBoth();
    ASSERT_NE(again, nullptr) << error_.text();
    EXPECT_TRUE(tern_venue_close(again, nullptr));
  }
  EXPECT_TRUE(tern_venue_close(single, nullptr));
}

TEST_F(CJoined, thatAreNotThereLeaveRoomForOthers) {
  EXPECT_EQ(tern_venue_open_folder(mall_.at("m").c_str(), R"({"venues":[1,9]})", error_.out()),
            nullptr);
  tern_venue* const venue = openBoth();
  EXPECT_NE(venue, nullptr) << error_.text();
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
}

using CInterfaceConcurrentTest = CInterface;

TEST_F(CInterfaceConcurrentTest, oneVenueIsAskedByAllThreadsAtOnce) {
  tern_venue* const venue = openFolder();
  const std::string expected = answerOf(venue, fromAToC);
  std::atomic<int> wrong = 0;
  {
    std::vector<test::JoiningThread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < 50; ++k) wrong += answerOf(venue, fromAToC) == expected ? 0 : 1;
      });
    }
  }
  EXPECT_EQ(wrong, 0);
  tern_venue_close(venue, nullptr);
}

TEST_F(CInterfaceConcurrentTest, aVenueIsClosedWhileItIsAsked) {
  for (int round = 0; round < 5; ++round) {
    tern_venue* const venue = openFolder();
    const std::string expected = answerOf(venue, fromAToC);
    std::atomic<int> asking = 0;
    std::atomic<int> closed = 0;
    {
      std::vector<test::JoiningThread> threads;
      for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
          ++asking;
          std::string answer;
          while ((answer = answerOf(venue, fromAToC)) == expected) {
          }
          EXPECT_EQ(errorLine(answer), "TN006 the venue is closed, or never was one");
        });
      }
      for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
          test::awaitUntil([&] { return asking == 3; }, "the threads that ask");
          closed += tern_venue_close(venue, nullptr) ? 1 : 0;
        });
      }
    }
    EXPECT_EQ(closed, 1);
  }
}

TEST_F(CInterfaceConcurrentTest, venuesAreOpenedOnSeveralThreads) {
  std::vector<test::JoiningThread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      CError error;
      tern_venue* const venue =
          tern_venue_open_folder(folder_.at("").c_str(), nullptr, error.out());
      EXPECT_NE(venue, nullptr) << error.text();
      EXPECT_TRUE(tern_venue_close(venue, nullptr));
    });
  }
}

TEST_F(CInterfaceConcurrentTest, aSlowCallbackHoldsNobodyElseUp) {
  std::promise<void> isAsked;
  std::promise<void> mayGoOn;
  struct Context {
    std::promise<void>& isAsked;
    std::promise<void>& mayGoOn;
  } context{isAsked, mayGoOn};
  test::JoiningThread slow([&] {
    tern_venue_open_documents(
        [](void* word, const char*, tern_sink*) {
          auto& own = *static_cast<Context*>(word);
          own.isAsked.set_value();
          test::await(own.mayGoOn, "leave to go on");
        },
        &context, nullptr, nullptr);
  });
  test::await(isAsked, "the question for a document");
  tern_venue* const venue = openFolder();
  EXPECT_THAT(answerOf(venue, fromAToC), StartsWith(R"({"route":)"));
  EXPECT_TRUE(tern_venue_close(venue, nullptr));
  mayGoOn.set_value();
}

// Whatever allocation fails: the function succeeds or gives an error, and works the next time.
class CInterfaceFailing : public CInterface {
 protected:
  void tryAll(const std::function<void()>& work) {
    const int failed =
        test::forFailingAllocations(test::FailingAllocation::Reach::thread, work, [] {});
    EXPECT_GT(failed, 3);
  }
};

TEST_F(CInterfaceFailing, openingAnsweringAndClosingEndWithAnErrorAtWorst) {
  const std::string folder = folder_.at("");
  tryAll([&] {
    char* error = nullptr;
    tern_venue* const venue = tern_venue_open_folder(folder.c_str(), R"({"venues":[1]})", &error);
    ASSERT_EQ(venue == nullptr, error != nullptr);
    tern_text_free(error);
    char* const answer = tern_venue_answer(venue, fromAToC);
    ASSERT_NE(answer, nullptr);
    ASSERT_EQ(*answer, '{');
    tern_text_free(answer);
    ASSERT_EQ(tern_venue_close(venue, nullptr), venue != nullptr);
  });
}

TEST_F(CInterfaceFailing, theErrorOfWantOfMemoryTakesNone) {
  const test::FailingAllocation all(0, test::FailingAllocation::Reach::thread,
                                    test::FailingAllocation::Times::always);
  char* const answer = tern_venue_answer(nullptr, fromAToC);
  const bool isIt =
      std::string_view(answer) ==
      R"({"error":{"code":"TN008","message":"out of memory","description":"out of memory"}})";
  tern_text_free(answer);
  tern_text_free(answer);
  ASSERT_TRUE(isIt);
}

TEST_F(CInterfaceFailing, aHostComesAsAWholeOrNotAtAll) {
  test::FakeHost host;
  tryAll([&] {
    const int before = host.releases();
    const bool isSet = tern_set_host(&host.callbacks(), nullptr);
    while (!tern_set_host(nullptr, nullptr)) {
    }
    ASSERT_EQ(host.releases() - before, isSet ? 1 : 0);
  });
}

}  // namespace
}  // namespace tern
