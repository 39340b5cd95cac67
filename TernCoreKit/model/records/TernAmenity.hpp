// A kind of facility (toilets, exits) placed at one or more locations.
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

struct TERN_API TernAmenity : TernBaseModel {
  Value customerId;
  Value name;
  Value description;
  Value status;
  Value displayOrder;
  Value primaryUriId;
  Value extensors;
  // Where it is placed; never null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  Nested<TernUriCollection> uris;
  Value keywords;
  // Drawing of the icon.
  Value svg;
  // The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  static std::shared_ptr<TernAmenity> initWithDictionary(Value dictionary);
  std::shared_ptr<TernAmenity> copyWithZone() const;
  // Replaces `waypoints`.
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);
};

}  // namespace tern
