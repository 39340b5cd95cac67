#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernUriCollection;
struct TernLocation;
struct TernWaypoint;

/// A place that a visitor can be led to: a shop, a room.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernDestination : TernBaseModel {
  /// Number of the shop or room, as text.
  Value unitNumber;
  /// A text for visitors.
  Value name;
  /// A text for visitors.
  Value description;
  /// The one of `uris` to show first.
  Value primaryUri;
  /// Language of its texts.
  Value localeCode;
  /// Free data of the venue's owner.
  Value extensors;
  /// The files that go with it.
  Nested<TernUriCollection> uris;
  /// Where it is placed; no element is null.
  std::vector<std::shared_ptr<TernLocation>> locations;
  /// List of the ids of its categories.
  Value categoryIds;
  /// List of texts to be found by.
  Value keywords;
  /// List of texts to be found by.
  Value tags;
  /// The waypoints that its locations name; not read from the document, see `addWaypoints`.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;
  /// Code; passed on.
  Value displayMode;
  /// Code; passed on.
  Value status;
  /// Drawing of the icon, an SVG document.
  Value svg;

  /// See TernBaseModel::initWithDictionary. "uris" becomes a collection, "locations" a list.
  static std::shared_ptr<TernDestination> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `waypoints`, `status` and `svg`.
  std::shared_ptr<TernDestination> copyWithZone() const;
  /// Replaces `waypoints`; the assembly of a venue calls it (see attachWaypoints).
  void addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list);

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
