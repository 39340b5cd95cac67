// Ends the process, with the test's name, when one test takes longer than any may: a lock that is
// never released is then a failure of that test and not a silence.
//
//   testing::UnitTest::GetInstance()->listeners().Append(new TestLimit(300));
//
// Ownership: gtest's. Threads: one; uses SIGALRM.
#pragma once

#include <gtest/gtest.h>

namespace tern::test {

class TestLimit final : public testing::EmptyTestEventListener {
 public:
  explicit TestLimit(unsigned seconds) : seconds_(seconds) {}

 private:
  void OnTestStart(const testing::TestInfo& test) override;
  void OnTestEnd(const testing::TestInfo& test) override;

  unsigned seconds_;
};

}  // namespace tern::test
