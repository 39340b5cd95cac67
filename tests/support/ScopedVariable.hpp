// A variable of the environment as long as it lives; afterwards it is as it was.
//
//   const ScopedVariable home("HOME", "/home/ada");
//   const ScopedVariable none("XDG_DATA_HOME", nullptr);
//
// Ownership: a copy of what was there. Threads: one, while no other reads the environment.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tern::test {

class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  ~ScopedVariable() { set(before_ ? before_->c_str() : nullptr); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void set(const char* value) const {
    if (value != nullptr) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* const name_;
  std::optional<std::string> before_;
};

}  // namespace tern::test
