#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernPathCollection;
class TernUriCollection;
class TernWaypointCollection;

/// The drawing of one floor and the walking graph on it. One map unit is one pixel of the drawing;
/// the origin is the top left corner, y points down.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernMap : TernBaseModel {
  /// The drawing as an SVG document.
  Value svg;
  /// The drawing as GeoJSON; passed on.
  Value geojson;
  /// Millimetres in one map unit.
  Value mmPerPixel;
  /// Numbers: a part of the drawing's transform.
  Value scale;
  /// Numbers: a part of the drawing's transform.
  Value skew;
  /// x and y: a part of the drawing's transform.
  Value trans;
  /// Width in map units: what the viewBox of the drawing says, else what the document says.
  Value width;
  /// Height in map units, like `width`.
  Value height;
  /// The nodes of its walking graph.
  Nested<TernWaypointCollection> waypoints;
  /// The edges of its walking graph.
  Nested<TernPathCollection> paths;
  /// The files that go with it.
  Nested<TernUriCollection> uris;

  /// See TernBaseModel::initWithDictionary. "waypoints", "paths" and "uris" become collections.
  /// Unlike other records it passes over keys that are not its fields.
  static std::shared_ptr<TernMap> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `uris`.
  std::shared_ptr<TernMap> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
