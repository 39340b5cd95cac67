// Reads where a venue exit leads: its external id is the venue, ":" and the waypoint that it joins
// there, "12:3456".
//
// Threads: any. Fails: never; a part without leading digits reads as 0, one beyond 64 bits as the
// number nearest to it.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::detail {

struct ExitLink {
  std::int64_t venueId = 0;     // before the first colon
  std::int64_t waypointId = 0;  // behind the last one
};

inline std::int64_t leadingNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                             : std::numeric_limits<std::int64_t>::max();
}

// None without a colon.
inline std::optional<ExitLink> exitLinkOf(const TernWaypoint& waypoint) {
  const std::string_view text = waypoint.externalId.text();
  const std::size_t first = text.find(':');
  if (first == std::string_view::npos) return std::nullopt;
  return ExitLink{leadingNumber(text.substr(0, first)),
                  leadingNumber(text.substr(text.rfind(':') + 1))};
}

}  // namespace tern::detail
