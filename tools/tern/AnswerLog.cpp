#include "tools/tern/AnswerLog.hpp"

#include <string_view>

#include "TernCoreKit/platform/Log.hpp"
#include "tools/service/Exhaustion.hpp"

namespace tern::command {

AnswerLog::AnswerLog() {
  setLogSink([lines = lines_](std::string_view line) {
    const MutexLock lock(lines->mutex);
    lines->text.append(lines->text.empty() ? "" : " ").append(line);
  });
}

AnswerLog::~AnswerLog() {
  service::hasEnough([] { setLogSink([](std::string_view) {}); });
}

std::string AnswerLog::text() const {
  const MutexLock lock(lines_->mutex);
  return lines_->text;
}

}  // namespace tern::command
