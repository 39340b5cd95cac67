// Collects what the library says while it answers, for answers that do not say themselves why they
// are empty. Afterwards the library is silent.
//
// Ownership: takes the place of the process's log sink for good. Threads: one object at a time;
// lines may come from any thread. Fails: never.
#pragma once

#include <memory>
#include <string>

#include "TernCoreKit/platform/Mutex.hpp"

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
    Mutex mutex;
    std::string text TERN_GUARDED_BY(mutex);
  };
  std::shared_ptr<Lines> lines_ = std::make_shared<Lines>();
};

}  // namespace tern::command
