#include "tests/support/CapturedLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "TernCoreKit/platform/Log.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CapturedLog, takesEachLineOnce) {
  CapturedLog log;
  logLine("one");
  logSdk("two");
  EXPECT_THAT(log.take(), ElementsAre("one", "Tern SDK: two"));
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST(CapturedLog, anUntakenLineFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(
      {
        CapturedLog log;
        logLine("left over");
      },
      "left over");
}

}  // namespace
}  // namespace tern::test
