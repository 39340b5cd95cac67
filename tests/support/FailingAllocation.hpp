// Lets an allocation fail: the n-th from here on, counted from 0.
//
//   const FailingAllocation third(2);
//   ...                               // throws std::bad_alloc, once
//   if (!third.hasFailed()) ...       // there were fewer
//
//   forFailingAllocations(FailingAllocation::Reach::process, [&] { load(); }, [&] { check(); });
//
// Threads: one at a time of each reach.
#pragma once

#include <cstddef>
#include <functional>

namespace tern::test {

class FailingAllocation {
 public:
  // Whose allocations count.
  enum class Reach { thread, process };
  // Whether those behind it succeed, until this object goes.
  enum class Times { once, always };

  explicit FailingAllocation(std::size_t nth, Reach reach = Reach::thread,
                             Times times = Times::once);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  bool hasFailed() const;

 private:
  Reach reach_;
};

// How many allocations the work makes.
std::size_t countAllocations(FailingAllocation::Reach reach, const std::function<void()>& work);

// Whether the work may let std::bad_alloc pass.
enum class Throwing { never, badAlloc };

// Does the work with one allocation failing, then with all from that one on, and so for allocations
// spread over all that the work makes; for each one of them when TERN_TEST_FAILURES is "all" in the
// environment. After each time `check` is called, when none fails any more. A std::bad_alloc that
// the work may not throw fails the test. Returns how many allocations failed.
int forFailingAllocations(FailingAllocation::Reach reach, const std::function<void()>& work,
                          const std::function<void()>& check, Throwing throwing = Throwing::never);

// From here on the allocations of this thread are none of the process's: of a server beside what is
// tested, say.
void spareThisThread();
bool isThisThreadSpared();

// Whether the environment asks for every case and not only for some.
bool isEveryFailureWanted();

}  // namespace tern::test
