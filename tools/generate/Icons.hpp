// The small pictures of the drawings: connectors and amenities, as tiles of 64 by 64 pixels.
//
// Threads: free functions over constants.
#pragma once

#include <string>

#include "tools/drawing/SvgText.hpp"
#include "tools/generate/VenueModel.hpp"

namespace tern::generate {

inline constexpr int iconSizePx = 64;

enum class Icon { exit, toilets, information, cashMachine, babyCare, lift, escalator, stairs };

Icon iconOf(Amenity amenity);

// Draws the icon around the point.
void drawIcon(drawing::SvgText& svg, Icon icon, Point centre);

// The icon as a document of its own, as records carry it.
std::string iconSvg(Icon icon);

}  // namespace tern::generate
