// Lets a system call fail: the n-th from here on, counted from 0, of those that reach a file, a
// folder or a peer or start a thread, with an error that such a call has in the world: no space, a
// broken disk, no descriptor, a connection that is reset, no thread to be had. Calls that only give
// something back (close, shutdown) never fail.
//
//   forFailingSystemCalls(Reach::thread, [&] { save(); }, [&] { check(); });
//
// Threads: one at a time of each reach.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/FailingAllocation.hpp"

namespace tern::test {

// Does the work with one call failing, then with all from that one on, and so for each call that
// the work makes, or for some spread over all when there are many: for each one of them when
// TERN_TEST_FAILURES is "all" in the environment. After each time `check` is called, when none
// fails any more. Returns how many failed. `spareThisThread` holds for them too.
int forFailingSystemCalls(FailingAllocation::Reach reach, const std::function<void()>& work,
                          const std::function<void()>& check);

// So many of the next files that this thread makes, and that must not be there yet, are.
void letNamesBeTaken(int count);

// The calls of this thread during the work that change what is on the disk, in order: each as its
// name, a space and the path of what its first descriptor is open on.
std::vector<std::string> callsThatReachTheDisk(const std::function<void()>& work);

}  // namespace tern::test
