#include "tests/support/Waiting.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace tern::test {

void giveUp(std::string_view what) {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  if (test != nullptr) std::cerr << test->test_suite_name() << '.' << test->name() << ": ";
  std::cerr << what << " did not come within " << longestWait.count() << " seconds" << std::endl;
  std::abort();
}

}  // namespace tern::test
