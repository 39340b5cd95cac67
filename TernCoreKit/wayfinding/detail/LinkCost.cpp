#include "TernCoreKit/wayfinding/detail/LinkCost.hpp"

#include <cmath>

namespace tern::inline v5::detail {

namespace {

constexpr std::int64_t onlyUpward = 1;
constexpr std::int64_t onlyDownward = 2;

bool leadsTo(const FloorPoint& from, const FloorPoint& to, std::int64_t direction) {
  if (direction == onlyUpward) return !(from.z > to.z);
  if (direction == onlyDownward) return !(from.z < to.z);
  return true;
}

}  // namespace

float straightLine(const FloorPoint& a, const FloorPoint& b) {
  const double dx = static_cast<double>(a.x) - b.x;
  const double dy = static_cast<double>(a.y) - b.y;
  const double dz = static_cast<double>(a.z) - b.z;
  return static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
}

std::optional<LinkCost> linkCost(const FloorPoint& from, const FloorPoint& to,
                                 const Passage& passage) {
  const bool isLevel = from.z == to.z;
  if (!isLevel && !leadsTo(from, to, passage.direction)) return std::nullopt;
  const float factor = passage.isWalking ? straightLine(to, from) : 1.0F;
  const auto multiplier = static_cast<float>(isLevel ? to.multiplier : 1);
  const float steepness = std::fabs(to.z - from.z) / (passage.verticalWeight + 1.0F);
  const float vertical = std::isfinite(steepness) ? 1.0F + steepness : 1.0F;
  return LinkCost{vertical * (factor * passage.weight * multiplier), factor};
}

}  // namespace tern::detail
