#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernUriCollection;
struct TernLocation;
struct TernWaypoint;

/// The kind of a path (walkway, stairs, elevator, escalator) with the costs of taking it.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernPathType : TernBaseModel {
  /// A text for visitors, such as "Elevator".
  Value name;
  /// A text for visitors.
  Value description;
  /// Who asks for this level or a higher one may take the path.
  Value accessibility;
  /// Weight of a change of floor: the greater, the less a difference in height costs.
  Value verticalWeight;
  /// Passed on; costs come from the weights.
  Value speed;
  /// Passed on.
  Value maxFloors;
  /// Weight of travel: a factor of the length of type 1, walking; what one link costs of any other.
  Value weight;
  /// Code to look types up by; the direction of a path is its own.
  Value direction;
  /// The files that go with it.
  Nested<TernUriCollection> uris;
  /// Where it is placed; no element is null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  /// Drawing of the icon, an SVG document.
  Value svg;
  /// The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  /// See TernBaseModel::initWithDictionary. "uris" becomes a collection, "locations" a list.
  static std::shared_ptr<TernPathType> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `waypoints`.
  std::shared_ptr<TernPathType> copyWithZone() const;
  /// Replaces `waypoints`; the assembly of a venue calls it (see attachWaypoints).
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
