#include "tools/tern/AnswerLog.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Log.hpp"

namespace tern::command {
namespace {

TEST(AnswerLog, collectsTheLinesWhileItLives) {
  {
    const AnswerLog log;
    EXPECT_EQ(log.text(), "");
    logLine("one.");
    logSdk("two");
    EXPECT_EQ(log.text(), "one. Tern SDK: two");
  }
  logLine("not shown");
  setLogSink({});
}

}  // namespace
}  // namespace tern::command
