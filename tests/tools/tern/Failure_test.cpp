#include "tools/tern/Failure.hpp"

#include <gtest/gtest.h>

namespace tern::command {
namespace {

TEST(Failure, wrongWordsEndWithTwo) {
  EXPECT_EQ(static_cast<int>(wrongWords("--from is missing").status), 2);
}

}  // namespace
}  // namespace tern::command
