// Which lifts of a pedestrian network are step-free.
//
// A lift comes as links that hang together: one on each floor from the landing into the cabin, and
// those between the floors. Many say what kind of lift it is at the landings only. So a link that
// says nothing takes the kind of its lift, but only where all landings agree that it is step-free.
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

enum class LiftStatement { nothing, stepFree, notStepFree };

struct StatedLift {
  // The link, by its place in the draft.
  std::size_t link;
  LiftStatement says;
};

// Sets the kinds of these links, and tells of those whose kind is not their own statement.
void settleLifts(Draft& draft, const std::vector<StatedLift>& lifts);

}  // namespace tern::imports
