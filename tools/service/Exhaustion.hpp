// Where the machine has no more memory or threads to give.
//
//   if (!hasEnough([&] { status = run(words); })) ...
//
// Ownership: keeps nothing. Threads: any. Fails: by false; other exceptions pass.
#pragma once

#include <new>
#include <stdexcept>
#include <system_error>

namespace tern::service {

// Runs the work; false when it broke off for want of memory or threads.
template <class Work>
bool hasEnough(Work work) {
  try {
    work();
    return true;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  } catch (const std::system_error&) {
  }
  return false;
}

}  // namespace tern::service
