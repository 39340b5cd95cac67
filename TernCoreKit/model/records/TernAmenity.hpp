#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernUriCollection;
struct TernLocation;
struct TernWaypoint;

/// A kind of facility (toilets, exits) placed at one or more locations.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernAmenity : TernBaseModel {
  /// Id of the customer it belongs to.
  Value customerId;
  /// A text for visitors, such as "Toilets".
  Value name;
  /// A text for visitors.
  Value description;
  /// Code; passed on.
  Value status;
  /// Place among the amenities where they are listed.
  Value displayOrder;
  /// Id of the one of `uris` to show first.
  Value primaryUriId;
  /// Free data of the venue's owner.
  Value extensors;
  /// Where it is placed; no element is null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  /// The files that go with it.
  Nested<TernUriCollection> uris;
  /// List of texts to be found by.
  Value keywords;
  /// Drawing of the icon, an SVG document.
  Value svg;
  /// The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  /// See TernBaseModel::initWithDictionary. "uris" becomes a collection, "locations" a list.
  static std::shared_ptr<TernAmenity> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernAmenity> copyWithZone() const;
  /// Replaces `waypoints`; the assembly of a venue calls it (see attachWaypoints).
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
