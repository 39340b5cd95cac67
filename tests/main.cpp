// Runs the tests. Random properties start from a fixed seed so that every run tries the same cases;
// RC_PARAMS="seed=..." in the environment chooses another.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
  setenv("RC_PARAMS", "seed=5122", /*overwrite=*/0);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
