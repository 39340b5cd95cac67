// Text on its way to a file descriptor, gathered so that many short answers make few writes.
//
// Ownership: the descriptor stays the caller's. Threads: one.
// Fails: what cannot be written is dropped; `error` says why, and later writes do nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tern::command {

class Output {
 public:
  explicit Output(int descriptor) : descriptor_(descriptor) {}
  ~Output() { flush(); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(std::string_view text);
  // Hands over all that was gathered.
  void flush();

  // Whether somebody sees it at once.
  bool isTerminal() const;

  // The errno of the write that failed; 0 as long as none has.
  int error() const { return error_; }

 private:
  int descriptor_;
  int error_ = 0;
  std::string gathered_;
};

}  // namespace tern::command
