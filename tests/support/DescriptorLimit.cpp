#include "tests/support/DescriptorLimit.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tern::test {

namespace {

int highestOpen() {
  int highest = 2;
  DIR* const open = opendir("/proc/self/fd");
  if (open == nullptr) std::abort();
  while (const dirent* entry = readdir(open)) {
    const int number = std::atoi(entry->d_name);
    if (number != dirfd(open)) highest = std::max(highest, number);
  }
  closedir(open);
  return highest;
}

}  // namespace

DescriptorLimit::DescriptorLimit(unsigned more) {
  const int highest = highestOpen();
  int filler = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  for (; filler >= 0 && filler < highest; filler = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) {
    fillers_.push_back(filler);
  }
  ::close(filler);
  if (::getrlimit(RLIMIT_NOFILE, &before_) != 0) std::abort();
  rlimit few = before_;
  few.rlim_cur = static_cast<rlim_t>(highest) + 1 + more;
  if (::setrlimit(RLIMIT_NOFILE, &few) != 0) std::abort();
}

DescriptorLimit::~DescriptorLimit() {
  ::setrlimit(RLIMIT_NOFILE, &before_);
  for (const int filler : fillers_) ::close(filler);
}

}  // namespace tern::test
