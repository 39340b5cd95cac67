// Runs the tests. Random properties start from a fixed seed so that every run tries the same cases;
// RC_PARAMS="seed=..." in the environment chooses another.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/TestLimit.hpp"

int main(int argc, char** argv) {
  setenv("RC_PARAMS", "seed=5122", /*overwrite=*/0);
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new tern::test::TestLimit(300));
  return RUN_ALL_TESTS();
}
