// Real buildings from open data, for tests where it lies, which is in no repository: the folder
// that TERN_REALDATA names in the environment, else a folder "data" of this kind in a folder beside
// the checkout. Below it, network/<place>/ has a pedestrian network: nodes with floor ordinals and
// links with route types, both as GeoJSON; gtfs/<place>/ has a transit feed.
//
// Ownership: values. Threads: any. Fails: a network that cannot be read throws std::runtime_error.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::test {

// None where there is none.
std::optional<std::filesystem::path> realData();

// A network as a venue, its graph built: each ordinal a floor, a metre ten map units. Node n of the
// file is waypoint n + 1; bends of links have the ids behind those.
std::shared_ptr<TernActiveVenue> networkVenue(const std::filesystem::path& nodes,
                                              const std::filesystem::path& links);

}  // namespace tern::test
