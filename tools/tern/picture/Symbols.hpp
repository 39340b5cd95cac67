// The small signs of the pictures. Each is drawn around the point it marks; sizes are in pixels of
// the picture.
//
// Threads: free functions.
// Fails: never.
#pragma once

#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/Itinerary.hpp"
#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {

// How far each reaches from its point.
inline constexpr double startRadiusPx = 9;
inline constexpr double arrivalRadiusPx = 6.5;
inline constexpr double changeRadiusPx = 12;
inline constexpr double askedRadiusPx = 9;
inline constexpr double goalWidthPx = 22;
inline constexpr double goalHeightPx = 29;

void drawStart(Markup& out, Point at);
// The point that somebody asked from, which need not be on any way.
void drawAsked(Markup& out, Point at);
// A pin that stands on its point.
void drawGoal(Markup& out, Point at);
// Where one comes onto a floor.
void drawArrival(Markup& out, Point at);
// Where one leaves it, with an arrow that way.
void drawChange(Markup& out, Point at, Heading heading);

}  // namespace tern::picture
