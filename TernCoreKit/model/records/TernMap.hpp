// The drawing of one floor and the walking graph on it. One map unit is one pixel of the drawing;
// the origin is the top left corner, y points down.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

class TernPathCollection;
class TernUriCollection;
class TernWaypointCollection;

struct TERN_API TernMap : TernBaseModel {
  // The drawing as an SVG document.
  Value svg;
  Value geojson;
  // Millimetres in one map unit.
  Value mmPerPixel;
  // Parts of the drawing's transform.
  Value scale;
  Value skew;
  Value trans;
  // Size in map units: what the viewBox of the drawing says, else what the document says.
  Value width;
  Value height;
  Nested<TernWaypointCollection> waypoints;
  Nested<TernPathCollection> paths;
  Nested<TernUriCollection> uris;

  static std::shared_ptr<TernMap> initWithDictionary(Value dictionary);
  std::shared_ptr<TernMap> copyWithZone() const;
};

}  // namespace tern
