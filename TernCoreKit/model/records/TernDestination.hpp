// A place that a visitor can be led to: a shop, a room.
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

struct TERN_API TernDestination : TernBaseModel {
  Value unitNumber;
  Value name;
  Value description;
  Value primaryUri;
  Value localeCode;
  Value extensors;
  Nested<TernUriCollection> uris;
  // Where it is placed; never null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  Value categoryIds;
  Value keywords;
  Value tags;
  // The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;
  Value displayMode;
  Value status;
  Value svg;

  static std::shared_ptr<TernDestination> initWithDictionary(Value dictionary);
  std::shared_ptr<TernDestination> copyWithZone() const;
  // Replaces `waypoints`.
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);
};

}  // namespace tern
