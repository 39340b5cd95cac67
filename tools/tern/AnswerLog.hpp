// Collects what the library says while it answers, for answers that do not say themselves why they
// are empty. Afterwards the library is silent.
//
// Ownership: takes the place of the process's log sink for good. Threads: one object at a time;
// lines may come from any thread. Fails: never.
#pragma once

#include <memory>
#include <mutex>
#include <string>

namespace tern::command {

class AnswerLog {
 public:
  AnswerLog();
  ~AnswerLog();
  AnswerLog(const AnswerLog&) = delete;
  AnswerLog& operator=(const AnswerLog&) = delete;

  // The lines so far, with a space between them.
  std::string text() const;

 private:
  struct Lines {
    std::mutex mutex;
    std::string text;  // guarded by mutex
  };
  std::shared_ptr<Lines> lines_ = std::make_shared<Lines>();
};

}  // namespace tern::command
