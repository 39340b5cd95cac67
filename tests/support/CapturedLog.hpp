// Collects the library's diagnostic lines while it lives. A line that nobody has taken when it goes
// away fails the test.
//
//   CapturedLog log;
//   map.readSize();
//   EXPECT_THAT(log.take(), ElementsAre("Tern SDK: no size"));
//
// Ownership: puts its sink in the place of the process's and the default one back at the end, so
// there
//   is one at a time. It must outlive every thread that may still write a line.
// Threads: any may write lines and take them.
#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace tern::test {

class CapturedLog {
 public:
  CapturedLog();
  ~CapturedLog();
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;

  // The lines since the last call.
  std::vector<std::string> take();

 private:
  std::mutex mutex_;
  std::vector<std::string> lines_;  // guarded by mutex_
};

}  // namespace tern::test
