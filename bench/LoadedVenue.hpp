// An indoor venue, assembled and ready to be searched.
#pragma once

#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "bench/IndoorVenue.hpp"

namespace tern::bench {

// Takes the documents over; the graph is not built yet.
std::shared_ptr<TernActiveVenue> assemble(IndoorVenue documents);

}  // namespace tern::bench
