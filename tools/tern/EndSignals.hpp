// Waits for SIGINT or SIGTERM.
//
//   const EndSignals ends;
//   ... start to serve, say so ...
//   ends.wait();
//   ... stop serving ...
//
// Threads: one object at a time in the process; threads may run already, since whichever takes the
// signal wakes who waits. Fails: never.
#pragma once

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
};

}  // namespace tern::command
