// A file in memory with a descriptor, for what reads or writes descriptors.
//
// Ownership: closes the descriptor. Threads: one. Fails: a machine without such files ends the test
// program.
#pragma once

#include <string>
#include <string_view>

namespace tern::test {

class MemoryFile {
 public:
  // Its reader and writer begin at the first byte of the text.
  explicit MemoryFile(std::string_view text = {});
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  int descriptor() const { return descriptor_; }
  // All that it holds now.
  std::string text() const;

 private:
  int descriptor_;
};

}  // namespace tern::test
