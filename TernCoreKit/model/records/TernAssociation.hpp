#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern::inline v5 {

/// What is reached at a waypoint.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernAssociation : TernBaseModel {
  /// List of the ids of destinations.
  Value destinations;
  /// List of the ids of amenities.
  Value amenities;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernAssociation> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernAssociation> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
