#include "TernCoreKit/wayfinding/joined/detail/VenueGroups.hpp"

#include <utility>

namespace tern::inline v5::detail {

namespace {

using Reached = std::map<std::string, std::string>;

void add(Reached& reached, const std::string& id) { reached.try_emplace(id, "abc"); }

// Carries over between a venue and one that was there before: what the one reaches by way of the
// other.
void join(const std::string& venue, Reached& reached, const std::string& other,
          Reached& reachedByOther) {
  for (const auto& [id, mark] : Reached(reached)) {
    const bool isOther = id == other;
    if (!isOther && !reachedByOther.contains(id)) {
      if (!reachedByOther.contains(venue)) continue;
      add(reachedByOther, id);
      add(reached, other);
      continue;
    }
    for (const auto& [further, itsMark] : reachedByOther) {
      if (further != venue) add(reached, further);
    }
    if (!isOther) add(reached, other);
  }
}

}  // namespace

std::map<std::string, Reached> groupVenues(const std::vector<VenueExits>& venues) {
  std::map<std::string, Reached> table;
  for (const VenueExits& exits : venues) {
    const std::string venue = std::to_string(exits.venueId);
    Reached direct;
    for (const std::int64_t id : exits.leadTo) add(direct, std::to_string(id));
    Reached& reached = table[venue];
    reached = std::move(direct);
    for (auto& [other, reachedByOther] : table) {
      if (other != venue) join(venue, reached, other, reachedByOther);
    }
  }
  return table;
}

}  // namespace tern::detail
