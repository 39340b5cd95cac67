// The kind of a path (walkway, stairs, elevator, escalator) with the costs of taking it.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

class TernUriCollection;
struct TernLocation;
struct TernWaypoint;

struct TERN_API TernPathType : TernBaseModel {
  Value name;
  Value description;
  // Who asks for this level or a higher one may take the path.
  Value accessibility;
  // Weight of a change of floor.
  Value verticalWeight;
  Value speed;
  Value maxFloors;
  // Weight of travel.
  Value weight;
  Value direction;
  Nested<TernUriCollection> uris;
  // Where it is placed; never null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  // Drawing of the icon.
  Value svg;
  // The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  static std::shared_ptr<TernPathType> initWithDictionary(Value dictionary);
  std::shared_ptr<TernPathType> copyWithZone() const;
  // Replaces `waypoints`.
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);
};

}  // namespace tern
