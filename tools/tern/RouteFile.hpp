// The file that --picture draws an answer to.
//
// Threads: as readers of the venue. Fails: by value, when the file cannot be written.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/GeoFeatures.hpp"
#include "tools/tern/picture/ReachPicture.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::command {

// Of one answered route. REQUIRES: a segment.
picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Value& segments);

// What can be drawn.
using Picture = std::variant<picture::RoutePicture, picture::ReachPicture>;

// Whether the file is to hold features of GeoJSON: whether it ends in ".geojson".
bool isForFeatures(const std::string& file);

// One that ends in ".html" becomes a page, one for features GeoJSON, any other an SVG.
std::optional<Failure> writePicture(const std::string& file, const Picture& drawn);

// Where there are no features, no file is written and an old one stays.
std::optional<Failure> writeFeatures(const std::string& file, const GeoFeatures& features);

}  // namespace tern::command
