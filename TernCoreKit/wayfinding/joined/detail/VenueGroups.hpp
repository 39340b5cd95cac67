// Works out which venues reach which through chains of exits.
//
// One pass over the venues, which carries on what it has found so far: it is no transitive closure.
//
// Threads: free function. Fails: never.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tern::inline v5::detail {

struct VenueExits {
  std::int64_t venueId = 0;
  // The venues that its exits name, as far as they are there.
  std::vector<std::int64_t> leadTo;
};

// By a venue's id as text: the ids that it reaches, each with the value "abc". Known venues are
// visited in the order of their texts.
std::map<std::string, std::map<std::string, std::string>> groupVenues(
    const std::vector<VenueExits>& venues);

}  // namespace tern::detail
