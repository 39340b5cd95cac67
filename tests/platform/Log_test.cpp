#include "TernCoreKit/platform/Log.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tern {
namespace {

using testing::ElementsAre;

// Brings the default sink back, whatever a test did.
class Log : public testing::Test {
 protected:
  ~Log() override { setLogSink({}); }

  void collect() {
    setLogSink([this](std::string_view line) { lines_.emplace_back(line); });
  }

  std::vector<std::string> lines_;
};
using LogConcurrent = Log;

TEST_F(Log, handsEachLineToTheSink) {
  collect();
  logLine("one");
  logLine("");
  logLine("two");
  EXPECT_THAT(lines_, ElementsAre("one", "", "two"));
}

TEST_F(Log, putsThePrefixOfTheLibraryInFront) {
  collect();
  logSdk("map 7 has no size");
  EXPECT_THAT(lines_, ElementsAre("Tern SDK: map 7 has no size"));
}

TEST_F(Log, aLineStaysOneLineWhateverIsInIt) {
  collect();
  logSdk("key \"a\nTern SDK: forged\r\x1B[2J\x7F\"");
  logLine(std::string_view("nul\0 tab\t", 9));
  logLine("Gr\u00FC\u00DFe");
  logLine("a\u0085b\u009B2J\u00A0\u2028\xC2");
  EXPECT_THAT(lines_, ElementsAre(R"(Tern SDK: key "a\x0ATern SDK: forged\x0D\x1B[2J\x7F")",
                                  R"(nul\x00 tab\x09)", "Gr\u00FC\u00DFe",
                                  "a\\xC2\\x85b\\xC2\\x9B2J\u00A0\u2028\xC2"));
}

TEST_F(Log, writesToStandardErrorWithoutASink) {
  collect();
  setLogSink({});
  testing::internal::CaptureStderr();
  logLine("one");
  logSdk("two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\nTern SDK: two\n");
  EXPECT_TRUE(lines_.empty());
}

TEST_F(Log, letsASinkLogAndReplaceItself) {
  auto count = std::make_shared<int>(0);
  setLogSink([this, count](std::string_view line) {
    ++*count;
    if (line != "first") return;
    logLine("from the sink");
    collect();
    logLine("behind the sink");
    EXPECT_EQ(count.use_count(), 2) << "a sink lives as long as it is called";
  });
  logLine("first");
  EXPECT_EQ(*count, 2);
  EXPECT_EQ(count.use_count(), 1);
  EXPECT_THAT(lines_, ElementsAre("behind the sink"));
}

// What a sink owns may log when it ends, to the sink that came after it.
TEST_F(Log, dropsTheOldSinkOutsideItsLock) {
  struct Farewell {
    Farewell() = default;
    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;
    ~Farewell() { logLine("farewell"); }
  };
  setLogSink([farewell = std::make_shared<Farewell>()](std::string_view) {});
  collect();
  EXPECT_THAT(lines_, ElementsAre("farewell"));
}

TEST_F(LogConcurrent, givesEachLineToTheOldSinkOrToTheNewOne) {
  constexpr int threads = 4;
  constexpr int linesOfAThread = 2000;
  std::array<std::atomic<int>, 2> received = {};
  const auto sink = [&received](std::size_t number) {
    // Owned by the sink, so that a call after its end would be seen.
    return
        [&received, number, text = std::make_unique<std::string>("line")](std::string_view line) {
          if (line == *text) ++received[number];
        };
  };
  const auto install = [&](std::size_t number) {
    setLogSink([own = std::make_shared<decltype(sink(0))>(sink(number))](std::string_view line) {
      (*own)(line);
    });
  };
  install(0);
  std::atomic<int> running = threads;
  std::vector<std::thread> writers;
  for (int i = 0; i < threads; ++i) {
    writers.emplace_back([&running] {
      for (int line = 0; line < linesOfAThread; ++line) logLine("line");
      --running;
    });
  }
  for (std::size_t swaps = 1; running > 0; ++swaps) install(swaps % 2);
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(received[0] + received[1], threads * linesOfAThread);
}

}  // namespace
}  // namespace tern
