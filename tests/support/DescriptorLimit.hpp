// Leaves the process so many descriptors to open as long as it lives, and no more.
//
//   const DescriptorLimit none(0);
//   open(...);  // EMFILE
//
// Ownership: holds the descriptors that fill the gaps. Threads: one; others open none meanwhile.
// Fails: a limit that the system does not take ends the test program.
#pragma once

#include <sys/resource.h>

#include <vector>

namespace tern::test {

class DescriptorLimit {
 public:
  explicit DescriptorLimit(unsigned more);
  ~DescriptorLimit();
  DescriptorLimit(const DescriptorLimit&) = delete;
  DescriptorLimit& operator=(const DescriptorLimit&) = delete;

 private:
  rlimit before_{};
  std::vector<int> fillers_;
};

}  // namespace tern::test
