// Says what in a venue keeps people from their way.
//
//   const Subject subject(*venue, venueDocument, buildingDocuments);
//   for (const Finding& finding : checkVenue(subject)) ...
//
// Time and memory grow as the documents do, but for a factor of their logarithm.
//
// Threads: free functions, as readers of the venue. Fails: never.
#pragma once

#include <string>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/check/Finding.hpp"
#include "tools/check/Subject.hpp"

namespace tern::check {

// In the order of their kinds.
Findings checkVenue(const Subject& subject);

// Whether anything is more than worth knowing.
bool hasFailure(const Findings& findings);

// {"findings":[{"kind":...,"ids":[...],"map":id or null,"message":...},...]}
Value reportOf(const Findings& findings);

// For a person: what the venue has, and of each kind how many there are, what to do about them and
// the first of them.
std::string reportText(const Subject& subject, const Findings& findings);

}  // namespace tern::check
