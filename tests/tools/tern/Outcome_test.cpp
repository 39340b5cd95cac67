#include "tools/tern/Outcome.hpp"

#include <gtest/gtest.h>

namespace tern::command {
namespace {

TEST(Outcome, jsonIsOneLine) {
  EXPECT_EQ(jsonLine(Value::map({{"a", "b\nc"}})), "{\"a\":\"b\\nc\"}\n");
}

TEST(Outcome, answerIsFoundUnlessItSaysOtherwise) {
  EXPECT_EQ(Answer().status, ExitStatus::answered);
}

}  // namespace
}  // namespace tern::command
