// The locations of a destination, an amenity or a path type.
//
// Ownership: takes the documents of the locations out of the given one. Threads: any.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

// Appends a location for each element under "locations" of the record's whole document. Fails, with
// a log line and nothing appended, when the value there is neither a list nor null.
bool takeLocations(Value& dictionary, std::vector<std::shared_ptr<TernLocation>>& locations);

}  // namespace tern::detail
