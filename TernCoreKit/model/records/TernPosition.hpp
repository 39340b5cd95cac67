#pragma once

#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The bounding corners of a venue or a building.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernPosition {
  /// Latitude and longitude in degrees.
  Value topLeft;
  /// Latitude and longitude in degrees.
  Value bottomRight;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernPosition> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernPosition> copyWithZone() const;
};

}  // namespace tern
