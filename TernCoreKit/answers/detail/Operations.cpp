#include "TernCoreKit/answers/detail/Operations.hpp"

#include <algorithm>
#include <array>

namespace tern::inline v5::detail {

namespace {

constexpr std::array table{
    Operation{"route", answerRoute, answerJoinedRoute},
    Operation{"routeToAny", answerRouteToAny},
    Operation{"directions", answerDirections},
    Operation{"alternatives", answerAlternatives},
    Operation{"tour", answerTour},
    Operation{"solve", answerSolve},
    Operation{"closest", answerClosest},
    Operation{"closestByRoute", answerClosestByRoute},
    Operation{"nearest", answerNearest},
    Operation{"nearestOnMap", answerNearestOnMap},
    Operation{"nearestByWalk", answerNearestByWalk},
    Operation{"matrix", answerMatrix},
    Operation{"reach", answerReach},
    Operation{"convert", answerConvert},
    Operation{"center", answerCenter},
    Operation{"blockEdge", answerBlockEdge},
    Operation{"blockEntry", answerBlockEntry},
    Operation{"blockExit", answerBlockExit},
    Operation{"neighbors", answerNeighbors},
    Operation{"places", nullptr, nullptr, answerPlaces},
};

}  // namespace

std::span<const Operation> operations() { return table; }

const Operation* findOperation(std::string_view name) {
  const auto* found = std::ranges::find(table, name, &Operation::name);
  return found != table.end() ? found : nullptr;
}

}  // namespace tern::detail
