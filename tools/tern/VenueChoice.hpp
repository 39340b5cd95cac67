// What is to be loaded of a customer's venues, wherever they come from.
//
// Threads: as readers of the venues. Fails: by value, with one line.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Failure.hpp"

namespace tern::command {

template <class T>
using Loaded = std::variant<std::shared_ptr<T>, Failure>;

Failure notLoaded(TernErrorType type, std::string line);
Failure notFound(std::string line);

// "1 (Plaza), 2 (Harbour)"
std::string listed(const TernVenueCollection& venues);

// The place is what the lines name: a file, or a service.
std::variant<std::int64_t, Failure> onlyVenue(const TernVenueCollection& venues,
                                              const std::string& place);

// The ids of the buildings to load, ascending: the given one, or all.
std::variant<std::vector<std::int64_t>, Failure> buildingIds(
    const TernActiveVenue& venue, const std::string& place, std::optional<std::int64_t> buildingId);

}  // namespace tern::command
