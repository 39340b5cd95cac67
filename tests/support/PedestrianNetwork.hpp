// A pedestrian network, nodes with floor ordinals and links with route types in two files of
// GeoJSON, as a venue.
//
// Ownership: values. Threads: any. Fails: a network that cannot be read throws std::runtime_error.
#pragma once

#include <filesystem>
#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::test {

// A network as a venue, its graph built: each ordinal a floor, a metre ten map units. Node n of the
// file is waypoint n + 1; bends of links have the ids behind those.
std::shared_ptr<TernActiveVenue> networkVenue(const std::filesystem::path& nodes,
                                              const std::filesystem::path& links);

}  // namespace tern::test
