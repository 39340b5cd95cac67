#include "tests/support/CapturedLog.hpp"

#include <gtest/gtest.h>

#include <utility>

#include "TernCoreKit/platform/Log.hpp"

namespace tern::test {

CapturedLog::CapturedLog() {
  setLogSink([this](std::string_view line) {
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(line);
  });
}

CapturedLog::~CapturedLog() {
  setLogSink({});
  for (const std::string& line : take()) ADD_FAILURE() << "Unexpected log line: " << line;
}

std::vector<std::string> CapturedLog::take() {
  const std::lock_guard lock(mutex_);
  return std::exchange(lines_, {});
}

}  // namespace tern::test
