// Venues of many makes, for what has to hold in every one: the sample, a generated mall, and real
// buildings as the import makes them of open data.
//
// Ownership: kept as long as the program runs, since some take long to make. Threads: one.
// Fails: the test, where one cannot be made.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::test {

// In words that a test's name may have.
const std::vector<std::string>& triedVenues();

// Null where its data is not at hand.
std::shared_ptr<TernActiveVenue> triedVenue(const std::string& name);

}  // namespace tern::test
