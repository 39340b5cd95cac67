// The right to be the joined venues of the process, of which there is one set: see
// TernMultiActiveVenues. Another set beside it would take its connections away.
//
// Ownership: whoever holds it; when it goes, the venues leave the process's list in the background.
// Threads: any. Fails: by null while somebody has it, and by std::bad_alloc.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernError.hpp"

namespace tern::inline v5::detail {

class JoinedTurn {
 public:
  // Waits until the venues of the one before have left.
  static std::shared_ptr<JoinedTurn> take();
  static TernError isTaken();

  ~JoinedTurn();
  JoinedTurn(const JoinedTurn&) = delete;
  JoinedTurn& operator=(const JoinedTurn&) = delete;

 private:
  class Leaving;
  struct Shared;

  JoinedTurn();
  static Shared& shared();

  // Made beforehand, since leaving must not fail.
  const std::shared_ptr<Leaving> leaving_;
  bool isHeld_ = false;
};

}  // namespace tern::detail
