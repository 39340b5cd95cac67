// What is drawn of routes as features of GeoJSON: a LineString for the walk on each map, a Point
// for each start, goal and mover.
//
// Threads: as readers of the venues. Fails: as GeoFeatures.
#pragma once

#include "tools/tern/GeoFeatures.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::command {

GeoFeatures featuresOf(const picture::RoutePicture& drawn);

}  // namespace tern::command
