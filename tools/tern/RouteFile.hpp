// The file that --picture draws routes to.
//
// Threads: as readers of the venue. Fails: by value, when the file cannot be written.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::command {

// A file that ends in ".html" becomes a page, any other an SVG.
std::optional<Failure> writePicture(const std::string& file, const picture::RoutePicture& drawn);
// The same of one route. REQUIRES: a segment.
std::optional<Failure> drawPicture(const std::string& file, const TernActiveVenue& venue,
                                   TernRoute route);

}  // namespace tern::command
