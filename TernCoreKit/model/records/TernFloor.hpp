#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

struct TernMap;

/// A floor of a building, with its map.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernFloor : TernBaseModel {
  /// Id of the building it belongs to.
  Value buildingId;
  /// Its drawing and walking graph.
  Nested<TernMap> map;
  /// A whole level. A JSON null reads as -2147483648, below every real level; without the key it
  /// stays absent.
  Value level;
  /// Place in the order in which floors are listed.
  Value preference;
  /// Its height as the venue states it; floors can be sorted by it.
  Value elevation;
  /// Always that of `elevation`, whatever the document says.
  Value altitude;
  /// A text for visitors.
  Value name;
  /// A text for a button, such as "1".
  Value shortName;
  /// Passed on.
  Value recordHistory;

  /// See TernBaseModel::initWithDictionary. "map" becomes a TernMap.
  static std::shared_ptr<TernFloor> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `recordHistory`.
  std::shared_ptr<TernFloor> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
