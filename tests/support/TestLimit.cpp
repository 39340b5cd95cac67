#include "tests/support/TestLimit.hpp"

#include <signal.h>
#include <unistd.h>

#include <cstring>
#include <string>

namespace tern::test {

namespace {

// A signal handler reads no std::string.
char message[512];

void endProcess(int /*signal*/) {
  [[maybe_unused]] const auto written = write(STDERR_FILENO, message, std::strlen(message));
  _exit(124);
}

}  // namespace

void TestLimit::OnTestStart(const testing::TestInfo& test) {
  const std::string text = std::string(test.test_suite_name()) + "." + test.name() +
                           " has not ended after " + std::to_string(seconds_) + " seconds\n";
  std::strncpy(message, text.c_str(), sizeof message - 1);
  signal(SIGALRM, endProcess);
  alarm(seconds_);
}

void TestLimit::OnTestEnd(const testing::TestInfo& /*test*/) { alarm(0); }

}  // namespace tern::test
