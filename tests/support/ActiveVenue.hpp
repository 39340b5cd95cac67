// A drawn venue, loaded as the service's documents are.
//
// Ownership: shared. Threads: any. Fails: as `drawVenue`.
#pragma once

#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern::test {

// With its graph.
std::shared_ptr<TernActiveVenue> loadDrawnVenue(const Drawing& drawing);

}  // namespace tern::test
