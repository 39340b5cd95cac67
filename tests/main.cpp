// Runs the tests. Random properties start from a fixed seed so that every run tries the same cases;
// RC_PARAMS="seed=..." in the environment chooses another. With the words "saves FOLDER" it is a
// process for tests to kill.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/EndlessSaves.hpp"
#include "tests/support/TestLimit.hpp"

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv, argv + argc);
  if (words.size() == 3 && words[1] == "saves") return tern::test::saveForEver(words[2]);
  setenv("RC_PARAMS", "seed=5122", /*overwrite=*/0);
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new tern::test::TestLimit(300));
  return RUN_ALL_TESTS();
}
