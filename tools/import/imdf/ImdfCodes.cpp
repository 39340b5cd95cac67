#include "tools/import/imdf/ImdfCodes.hpp"

#include <algorithm>

namespace tern::imports {

namespace {

bool isAnyOf(std::string_view category, std::initializer_list<std::string_view> list) {
  return std::ranges::find(list, category) != list.end();
}

}  // namespace

UnitMeaning unitMeaningOf(std::string_view category, bool isStepFree) {
  if (category == "elevator") {
    return {AreaKind::mover, isStepFree ? LinkKind::stepFreeLift : LinkKind::lift};
  }
  if (category == "escalator") return {AreaKind::mover, LinkKind::escalator};
  if (category == "stairs") return {AreaKind::mover, LinkKind::stairs};
  if (category == "steps") return {AreaKind::mover, LinkKind::walkway, true};
  if (category == "ramp") return {AreaKind::mover, LinkKind::ramp};
  if (category == "movingwalkway") return {AreaKind::mover, LinkKind::movingWalkway};
  if (isAnyOf(category, {"opentobelow", "column", "structure", "brick", "concrete", "glass",
                         "vegetation", "wood", "fence", "barrier"})) {
    return {AreaKind::closed, LinkKind::walkway, false, false};
  }
  if (category.starts_with("restroom")) return {AreaKind::toilets};
  if (isAnyOf(category, {"nonpublic", "serverroom", "privatelounge", "mechanical"})) {
    return {AreaKind::closed};
  }
  if (isAnyOf(category, {"walkway", "walkway.island", "lobby", "hall", "platform", "footbridge",
                         "concourse", "vestibule"})) {
    return {AreaKind::way};
  }
  if (isAnyOf(category, {"road", "parking", "sand", "grass", "terrace", "unenclosedarea",
                         "outdoors", "garden"})) {
    return {AreaKind::outdoors};
  }
  if (isAnyOf(category, {"foodservice", "retail", "store", "shop"})) return {AreaKind::shop};
  return {};
}

LinkKind climbOf(std::string_view category) {
  if (category == "elevator") return LinkKind::lift;
  if (category == "escalator") return LinkKind::escalator;
  if (category == "stairs") return LinkKind::stairs;
  if (category == "ramp") return LinkKind::ramp;
  if (category == "movingwalkway") return LinkKind::movingWalkway;
  return LinkKind::walkway;
}

}  // namespace tern::imports
