// Venues that have been loaded, with the documents that they were loaded from.
//
// Ownership: the source owns what it reads from. Threads: any. Fails: never.
#pragma once

#include <cstdint>
#include <vector>

#include "TernCoreKit/loading/DocumentSource.hpp"

namespace tern::command {

struct VenueFiles {
  std::vector<std::int64_t> venues = {};
  // Theirs and the customer's.
  DocumentSource documents = {};
};

}  // namespace tern::command
