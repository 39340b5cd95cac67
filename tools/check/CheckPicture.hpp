// Draws a venue's floors with the parts that its ways hang together in, each in its colour, and
// marks on waypoints and links that something was found at.
//
// What a colour says stands in the key besides.
//
//   stream << picture::svgOf(planOf(subject, findings));
//
// Threads: free functions, as readers of the venue. Fails: never; what has no place on a map is
// left out.
#pragma once

#include "tools/check/Finding.hpp"
#include "tools/check/Subject.hpp"
#include "tools/tern/picture/PicturePlan.hpp"

namespace tern::check {

picture::PicturePlan planOf(const Subject& subject, const Findings& findings);

}  // namespace tern::check
