#include "TernCoreKit/c/detail/Sink.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

bool Sink::give(std::string_view bytes) {
  const MutexLock lock(mutex_);
  if (isIncomplete_) breakOffAttempt();
  isOverfull_ = isOverfull_ || bytes.size() > mostBytes_ - bytes_;
  if (isOverfull_) return false;
  // Where this throws, a part is missing.
  isIncomplete_ = true;
  given_.emplace_back(bytes);
  isIncomplete_ = false;
  bytes_ += bytes.size();
  return true;
}

std::vector<std::string> Sink::takeEach() {
  const MutexLock lock(mutex_);
  if (isIncomplete_) breakOffAttempt();
  return std::exchange(given_, {});
}

bool Sink::isOverfull() {
  const MutexLock lock(mutex_);
  return isOverfull_;
}

std::string joinedPieces(std::vector<std::string> pieces) {
  std::string whole = std::move(pieces.front());
  for (std::size_t i = 1; i < pieces.size(); ++i) whole += pieces[i];
  return whole;
}

}  // namespace tern::detail
