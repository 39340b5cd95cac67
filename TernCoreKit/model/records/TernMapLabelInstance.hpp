#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern::inline v5 {

/// One placement of a label.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernMapLabelInstance : TernBaseModel {
  /// x and y in map units.
  Value position;
  /// The text that is shown here.
  Value name;
  /// Id of the map on which it is placed.
  Value mapId;
  /// Numbers: a part of its transform.
  Value scale;
  /// Numbers: a part of its transform.
  Value skew;
  /// x and y: a part of its transform.
  Value trans;
  /// An angle: a part of its transform.
  Value rotation;
  /// A flag: whether it is shown on every level.
  Value allLevels;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernMapLabelInstance> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernMapLabelInstance> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
