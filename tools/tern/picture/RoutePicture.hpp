// Draws routes on the floors of a venue: for each floor that a route visits, in its order, the
// floor's drawing with the route on it, where it goes on and how far it is; one column, made for a
// phone.
//
// Several routes stand one below the other, each with its own floors; what the others do on the
// same floor is drawn faintly. The picture is a file of its own: it loads nothing and runs nothing,
// and a floor's drawing stands in it as an image (see DrawingImage.hpp).
//
// Positions are map units, so routes of a graph that joins several venues, whose positions are
// degrees, have no picture.
//
// Ownership: the venue is borrowed until the call returns.
// Threads: as readers of the venue.
// Fails: never. What is unknown or unreadable is left out, and the picture says so; a drawing that
//   is not well-formed shows nothing. A route without segments is shown as not found.
//
//   RoutePicture picture{venue, "Harbour Plaza"};
//   picture.routes.push_back({"", "Juniper Bakery", "North exit", route});
//   write(routePictureHtml(picture));
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

struct PictureRoute {
  // Stands above the route, such as "Alternative"; may be empty when there is only one.
  std::string title;
  // What its ends are called.
  std::string start;
  std::string goal;
  TernRoute route;
  // Where it lies when that is another venue than the picture's; borrowed, too.
  const TernVenueData* venue = nullptr;
  // Ids of the destinations that the route is told by.
  std::vector<std::int64_t> landmarks = {};
  // The labels of its venue's maps; may be null, and is borrowed, too.
  const TernMapLabelCollection* labels = nullptr;
};

// A point of a map that the ways were asked from, in map units.
struct AskedPoint {
  std::int64_t mapId = 0;
  Point at;
};

enum class RouteSet {
  choices,  // one of them will be walked; the picture's length is that of the first
  legs,     // they will be walked one after another; the lengths are added
};

struct RoutePicture {
  const TernVenueData& venue;
  std::string venueName;
  RouteSet set = RouteSet::choices;
  std::vector<PictureRoute> routes = {};
  // Where the first route does not begin there itself.
  std::optional<AskedPoint> asked = std::nullopt;
};

std::string routePictureSvg(const RoutePicture& picture);
std::string routePictureHtml(const RoutePicture& picture);

}  // namespace tern::picture
