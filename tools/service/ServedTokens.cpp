#include "tools/service/ServedTokens.hpp"

#include <algorithm>
#include <utility>

namespace tern::service {

std::string ServedTokens::handOut() {
  const MutexLock lock(mutex_);
  constexpr std::string_view letters = "0123456789abcdef";
  constexpr std::size_t length = 48;
  std::string text;
  while (text.size() < length) text += letters[random_() % letters.size()];
  while (!tokens_.empty() && (tokens_.front().end <= wallTime() || tokens_.size() >= mostTokens)) {
    tokens_.pop_front();
  }
  tokens_.push_back({text, wallTime() + validity_});
  return text;
}

bool ServedTokens::isValid(std::string_view token) const {
  const MutexLock lock(mutex_);
  const auto found = std::ranges::find(tokens_, token, &Token::text);
  return found != tokens_.end() && wallTime() < found->end;
}

}  // namespace tern::service
