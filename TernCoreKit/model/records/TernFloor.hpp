// A floor of a building, with its map.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

struct TernMap;

struct TERN_API TernFloor : TernBaseModel {
  Value buildingId;
  Nested<TernMap> map;
  // A JSON null reads as -2147483648, below every real level; without the key it stays absent.
  Value level;
  // Place in the order in which floors are listed.
  Value preference;
  Value elevation;
  // Always that of `elevation`, whatever the document says.
  Value altitude;
  Value name;
  Value shortName;
  Value recordHistory;

  static std::shared_ptr<TernFloor> initWithDictionary(Value dictionary);
  std::shared_ptr<TernFloor> copyWithZone() const;
};

}  // namespace tern
