#include "tools/tern/LoadingLog.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/MemoryFile.hpp"

namespace tern::command {
namespace {

using test::MemoryFile;

class LoadingLogTest : public testing::Test {
 protected:
  ~LoadingLogTest() override { setLogSink({}); }

  MemoryFile file_;
};

TEST_F(LoadingLogTest, showsTheLinesOfALoad) {
  {
    LoadingLog log(file_.descriptor());
    logLine("first");
    logSdk("second");
  }
  EXPECT_EQ(file_.text(), "first\nTern SDK: second\n");
}

TEST_F(LoadingLogTest, countsTheLinesItDoesNotShow) {
  {
    LoadingLog log(file_.descriptor());
    for (int i = 0; i < LoadingLog::linesShown + 3; ++i) logLine("x");
  }
  EXPECT_EQ(file_.text(), "x\nx\nx\nx\nx\nx\nx\nx\nx\nx\nand 3 more such lines\n");
}

TEST_F(LoadingLogTest, isSilentAfterwards) {
  { LoadingLog log(file_.descriptor()); }
  logLine("later");
  EXPECT_EQ(file_.text(), "");
}

}  // namespace
}  // namespace tern::command
