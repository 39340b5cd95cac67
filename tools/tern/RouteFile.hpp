// The file that --picture draws routes to.
//
// Threads: as readers of the venue. Fails: by value, when the file cannot be written.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::command {

// Of one answered route. REQUIRES: a segment.
picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Value& segments);

// A file that ends in ".html" becomes a page, any other an SVG.
std::optional<Failure> writePicture(const std::string& file, const picture::RoutePicture& drawn);

}  // namespace tern::command
