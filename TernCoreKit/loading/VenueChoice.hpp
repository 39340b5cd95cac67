/// @file
/// What is to be loaded of a customer's venues, wherever they come from.
///
/// Ownership: nothing is kept.
/// Threads: as readers of the venues.
/// Fails: by value, with one line that names the place: a file, or a service.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

class TernVenueCollection;
struct TernActiveVenue;

/// The venues for a person: "1 (Plaza), 2 (Harbour)", the first twenty of them.
TERN_API std::string listed(const TernVenueCollection& venues);

/// The id of the only venue. With several the error is TN006 and lists them.
TERN_API std::variant<std::int64_t, TernError> onlyVenue(const TernVenueCollection& venues,
                                                         const std::string& place);

/// The ids of the buildings to load, ascending: the given one, or all.
TERN_API std::variant<std::vector<std::int64_t>, TernError> buildingIds(
    const TernActiveVenue& venue, const std::string& place,
    std::optional<std::int64_t> buildingId = std::nullopt);

}  // namespace tern
