// Lets one allocation of this thread fail: the n-th from here on, counted from 0.
//
//   const FailingAllocation third(2);
//   ...                               // throws std::bad_alloc, once
//   if (!third.hasFailed()) ...       // there were fewer
#pragma once

#include <cstddef>

namespace tern::test {

class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t nth);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  bool hasFailed() const;
};

}  // namespace tern::test
