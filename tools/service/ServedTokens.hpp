// The bearer tokens that the service has handed out: random, valid for a while, and forgotten when
// that is over.
//
// Threads: any. Fails: never.
#pragma once

#include <chrono>
#include <deque>
#include <random>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Clock.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::service {

class ServedTokens {
 public:
  explicit ServedTokens(std::chrono::seconds validity) : validity_(validity) {}

  std::chrono::seconds validity() const { return validity_; }

  std::string handOut();
  bool isValid(std::string_view token) const;

 private:
  // Beyond these the oldest ends early, so that nobody can fill the memory with tokens.
  static constexpr std::size_t mostTokens = 10'000;

  struct Token {
    std::string text;
    WallTime end;
  };

  const std::chrono::seconds validity_;
  mutable Mutex mutex_;
  std::random_device random_ TERN_GUARDED_BY(mutex_);
  std::deque<Token> tokens_ TERN_GUARDED_BY(mutex_);
};

}  // namespace tern::service
