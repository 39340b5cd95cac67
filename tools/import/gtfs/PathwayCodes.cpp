#include "tools/import/gtfs/PathwayCodes.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tern::imports {

namespace {

constexpr double mostPathwayMetres = 5'000;
// One in twelve, as a ramp may be at most.
constexpr double steepSlope = 1 / 12.0;

}  // namespace

bool climbs(PathwayMode mode) {
  return mode == PathwayMode::stairs || mode == PathwayMode::escalator ||
         mode == PathwayMode::elevator;
}

bool isGate(PathwayMode mode) {
  return mode == PathwayMode::fareGate || mode == PathwayMode::exitGate;
}

double metresOf(const GtfsPathway& pathway) {
  const auto timed = [&](double metresASecond, double fallback) {
    return pathway.traversalTime ? *pathway.traversalTime * metresASecond : fallback;
  };
  const auto unsaid = [&] {
    switch (pathway.mode) {
      case PathwayMode::stairs:
        return pathway.steps ? std::abs(*pathway.steps) * 0.3 : timed(0.5, 6);
      case PathwayMode::escalator:
        return timed(0.4, 12);
      case PathwayMode::movingSidewalk:
        return timed(0.65, 30);
      case PathwayMode::elevator:
      case PathwayMode::fareGate:
      case PathwayMode::exitGate:
        return 2.0;
      default:
        return timed(1.34, 10);
    }
  };
  const double metres = pathway.length && *pathway.length > 0 ? *pathway.length : unsaid();
  return std::clamp(metres, 0.5, mostPathwayMetres);
}

int riseOf(const GtfsPathway& pathway) {
  const double steps = pathway.steps.value_or(0);
  return steps > 0 ? 1 : steps < 0 ? -1 : 0;
}

bool isSteep(const GtfsPathway& way) { return std::abs(way.slope.value_or(0)) > steepSlope; }

LinkKind kindOf(const GtfsPathway& way, PathwayEnds ends) {
  const bool hasSteps = way.steps.value_or(0) != 0;
  const bool isRamp = ends.changeFloor || way.slope.value_or(0) != 0;
  switch (way.mode) {
    case PathwayMode::walkway:
      return isRamp && !hasSteps ? LinkKind::ramp : LinkKind::walkway;
    case PathwayMode::stairs:
      return LinkKind::stairs;
    case PathwayMode::movingSidewalk:
      return hasSteps ? LinkKind::walkway : LinkKind::movingWalkway;
    case PathwayMode::escalator:
      return LinkKind::escalator;
    case PathwayMode::elevator:
      return hasSteps || ends.areBarred ? LinkKind::lift : LinkKind::stepFreeLift;
    case PathwayMode::fareGate:
    case PathwayMode::exitGate:
      return hasSteps ? LinkKind::walkway : LinkKind::gate;
    case PathwayMode::unknown:
      break;
  }
  return LinkKind::unknown;
}

Value detailsOf(const GtfsPathway& way) {
  Value details = Value::map();
  const auto add = [&](std::string_view key, const std::optional<double>& number) {
    if (number) details.set(key, *number);
  };
  add("length", way.length);
  add("traversalTime", way.traversalTime);
  if (way.steps) details.set("steps", std::abs(*way.steps));
  add("slope", way.slope);
  add("width", way.width);
  if (!way.signpostedAs.empty()) details.set("signpostedAs", way.signpostedAs);
  if (!way.reversedSignpostedAs.empty()) {
    details.set("reversedSignpostedAs", way.reversedSignpostedAs);
  }
  return details;
}

}  // namespace tern::imports
