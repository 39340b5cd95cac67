#include "tools/import/write/Levels.hpp"

#include <algorithm>
#include <iterator>
#include <set>

namespace tern::imports {

namespace {

double groundOf(const Draft& draft, const std::set<double>& ordinals) {
  if (ordinals.contains(0)) return 0;
  std::set<double> entered;
  for (const DraftNode& node : draft.nodes) {
    if (node.isEntrance) entered.insert(draft.floors[node.floor].ordinal);
  }
  return entered.empty() ? *ordinals.begin() : *entered.begin();
}

}  // namespace

std::vector<int> levelsOf(const Draft& draft) {
  std::set<double> ordinals;
  for (const DraftFloor& floor : draft.floors) ordinals.insert(floor.ordinal);
  if (ordinals.empty()) return {};
  const auto rank = [&](double ordinal) {
    return static_cast<int>(std::distance(ordinals.begin(), ordinals.find(ordinal)));
  };
  const int ground = rank(groundOf(draft, ordinals));
  std::vector<int> levels;
  for (const DraftFloor& floor : draft.floors) levels.push_back(rank(floor.ordinal) - ground);
  return levels;
}

}  // namespace tern::imports
