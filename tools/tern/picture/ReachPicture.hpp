// Draws how far one gets: on each floor that is reached the lines that are walked, in colours from
// near to far.
//
// The colours go by metres, in steps that a legend names; they differ in lightness alone as well as
// in hue, so that they are told apart in any light and by any eye. For the rest see RoutePicture.
//
// Ownership: the venue is borrowed until the call returns.
// Threads: as readers of the venue.
// Fails: never; what lies on no map is left out.
//
//   ReachPicture picture{venue, "Harbour Plaza"};
//   picture.starts.push_back({"Juniper Bakery", 11, {400, 300}});
//   picture.links.push_back({11, {400, 300}, {420, 300}, 0, 2.5});
//   write(htmlOf(planOf(picture)));
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/PicturePlan.hpp"

namespace tern::picture {

// A link that is walked, in map units, with how far it is from a start to both of its ends.
struct WalkedLink {
  std::int64_t mapId = 0;
  Point from;
  Point to;
  double fromMetres = 0;
  double toMetres = 0;
};

// A point of a map that has a name or is of note.
struct PlacedPoint {
  std::string name;
  std::int64_t mapId = 0;
  Point at;
};

struct ReachPicture {
  const TernVenueData& venue;
  std::string venueName;
  // "Within 40 m: 37 waypoints"
  std::string summary = {};
  std::vector<PlacedPoint> starts = {};
  std::vector<WalkedLink> links = {};
  // Where one comes onto a floor.
  std::vector<PlacedPoint> arrivals = {};
  // May be null, and is borrowed, too.
  const TernMapLabelCollection* labels = nullptr;
};

PicturePlan planOf(const ReachPicture& picture);

}  // namespace tern::picture
