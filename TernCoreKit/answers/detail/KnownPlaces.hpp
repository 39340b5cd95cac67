// The names of the venues that are asked, each looked through once for each graph of its venue:
// what comes into a venue is found after the rebuild that brings it into the graph.
//
// Ownership: shares what it hands out; the venues must outlive it. Threads: any; who comes while
// another builds the same waits for it. Fails: by std::bad_alloc, and then keeps what it had.
#pragma once

#include <map>
#include <memory>

#include "TernCoreKit/guidance/TernPlaces.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5 {
class TernASGrid;
struct TernActiveVenue;
}  // namespace tern

namespace tern::inline v5::detail {

class KnownPlaces {
 public:
  // REQUIRES: the venue's graph is built.
  std::shared_ptr<const TernPlaces> of(const TernActiveVenue& venue);

 private:
  struct Known {
    std::weak_ptr<TernASGrid> grid;
    std::shared_ptr<const TernPlaces> places;
  };

  Mutex mutex_;
  std::map<const TernActiveVenue*, Known> known_ TERN_GUARDED_BY(mutex_);
};

}  // namespace tern::detail
