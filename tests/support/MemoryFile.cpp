#include "tests/support/MemoryFile.hpp"

#include <stdio.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace tern::test {

namespace {

int openTemporary() {
  std::FILE* file = std::tmpfile();
  if (file == nullptr) std::abort();
  const int descriptor = dup(fileno(file));
  std::fclose(file);
  return descriptor;
}

}  // namespace

MemoryFile::MemoryFile(std::string_view text) : descriptor_(openTemporary()) {
  if (pwrite(descriptor_, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
    std::abort();
  }
}

MemoryFile::~MemoryFile() { close(descriptor_); }

std::string MemoryFile::text() const {
  std::string text(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
  const ssize_t count = pread(descriptor_, text.data(), text.size(), 0);
  return count == static_cast<ssize_t>(text.size()) ? text : std::string();
}

}  // namespace tern::test
