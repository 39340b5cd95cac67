#include "tools/generate/GenerateOptions.hpp"

namespace tern::generate {

namespace {

std::optional<std::string> check(const char* name, std::int64_t value, OptionRange range) {
  if (value >= range.least && value <= range.most) return std::nullopt;
  return std::string(name) + ": " + std::to_string(value) + " is out of range, " +
         std::to_string(range.least) + " to " + std::to_string(range.most);
}

}  // namespace

std::optional<std::string> validate(const GenerateOptions& options) {
  if (auto error = check("--buildings", options.buildings, buildingRange)) return error;
  if (auto error = check("--floors", options.floors, floorRange)) return error;
  if (auto error = check("--shops", options.shops, shopRange)) return error;
  if (options.waypoints) {
    if (auto error = check("--waypoints", *options.waypoints, waypointRange)) return error;
  }
  if (auto error = check("--spacing", options.spacing, spacingRange)) return error;
  if (auto error = check("--customer", options.customer, idRange)) return error;
  if (auto error = check("--venue", options.venue, idRange)) return error;
  return check("--venues", options.venues, venuesRange);
}

}  // namespace tern::generate
