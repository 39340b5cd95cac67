// The categories of IMDF, and what they mean.
//
// Ownership: constants. Threads: free functions over constants. Fails: never.
#pragma once

#include <string_view>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

struct UnitMeaning {
  AreaKind area = AreaKind::room;
  // How one moves in it.
  LinkKind link = LinkKind::walkway;
  bool hasSteps = false;
  // Whether one can be in it at all.
  bool isWalked = true;
};

// `isStepFree`: it says that wheelchairs can use it.
UnitMeaning unitMeaningOf(std::string_view category, bool isStepFree);

// Of a relationship between levels; walkway for one that is none.
LinkKind climbOf(std::string_view category);

}  // namespace tern::imports
