// What the colours and the marks of a picture of a check look like, and what they say.
//
// Threads: free functions. Fails: never.
#pragma once

#include <string>
#include <string_view>

#include "tools/check/PictureMarks.hpp"
#include "tools/check/Subject.hpp"
#include "tools/tern/picture/FloorCanvas.hpp"

namespace tern::check {

// Islands further behind share the last colour.
inline constexpr std::uint32_t lastRank = 6;

// "1 waypoint", "7 waypoints"
std::string waypointsText(std::size_t count);

// That of the part of the rank; 0 is the mainland.
std::string_view colourOf(std::uint32_t rank);

void drawDot(picture::Markup& out, picture::Point at, std::uint32_t rank);
void drawMark(picture::Markup& out, picture::Point at, Mark mark);

struct PictureKey {
  picture::PanelDrawing drawing;
  // The same without colours.
  std::string words;
};

PictureKey keyOf(const Subject& subject, const PictureMarks& marks);

}  // namespace tern::check
