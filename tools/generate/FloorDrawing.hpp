// Draws one floor of a venue as an SVG document.
//
// Every drawing covers the whole site, so that one frame holds for all maps of the venue: the
// floor's own building in full, the others as outlines. Threads: a free function over a model that
// nobody changes meanwhile.
#pragma once

#include <string>

#include "tools/generate/VenueModel.hpp"

namespace tern::generate {

std::string drawFloor(const VenueModel& venue, const FloorModel& floor);

}  // namespace tern::generate
