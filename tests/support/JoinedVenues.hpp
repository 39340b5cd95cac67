// Small venues for graphs that join several: venue 2 has map 20 with the waypoints 201, 202 and 203
// in a row, a hundredth of a degree of longitude from those of venue 1.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::test {

// By waypoint.
using ExternalIds = std::map<std::int64_t, std::string>;

std::shared_ptr<TernActiveVenue> rowVenue(std::int64_t id, const ExternalIds& externalIds = {});

std::shared_ptr<TernWaypoint> waypointOf(const TernActiveVenue& venue, std::int64_t id);

}  // namespace tern::test
