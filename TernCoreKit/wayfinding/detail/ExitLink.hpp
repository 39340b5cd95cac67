// Reads where a venue exit leads: its external id is the venue, ":" and the waypoint that it joins
// there, "12:3456".
//
// Threads: any. Fails: never; a part without leading digits reads as 0, one beyond 64 bits as the
// number nearest to it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::inline v5::detail {

struct ExitLink {
  std::int64_t venueId = 0;     // before the first colon
  std::int64_t waypointId = 0;  // behind the last one
};

// None without a colon.
inline std::optional<ExitLink> exitLinkOf(const TernWaypoint& waypoint) {
  const std::string_view text = waypoint.externalId.text();
  const std::size_t first = text.find(':');
  if (first == std::string_view::npos) return std::nullopt;
  return ExitLink{leadingInteger(text.substr(0, first)),
                  leadingInteger(text.substr(text.rfind(':') + 1))};
}

// Names the edge between two venues, which no path does: both waypoints' ids, the smaller first,
// written one behind the other and read as one number.
inline std::int64_t virtualEdgeId(std::int64_t a, std::int64_t b) {
  return leadingInteger(std::to_string(std::min(a, b)) + std::to_string(std::max(a, b)));
}

}  // namespace tern::detail
