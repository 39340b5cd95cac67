// Waits for SIGINT or SIGTERM, and ends what is then under way.
//
//   const EndSignals ends;
//   ... start to serve, say so ...
//   ends.wait();
//   EndSignals::endWithin(std::chrono::seconds(20));
//   ... stop serving ...
//
// Threads: one object at a time in the process; threads may run already, since whichever takes the
// signal wakes who waits. Fails: never.
#pragma once

#include <chrono>

namespace tern::command {

class EndSignals {
 public:
  // From here on a signal does not end the process by itself.
  EndSignals();
  // Signals do again what they did before.
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // Returns when one has come since this was made.
  void wait() const;

  // Ends the process by then, as one that has answered: what is under way may take as long as it
  // likes, and nobody waits for it.
  static void endWithin(std::chrono::milliseconds time);
};

}  // namespace tern::command
