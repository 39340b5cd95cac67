// One placement of a label.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern {

struct TERN_API TernMapLabelInstance : TernBaseModel {
  // x and y in map units.
  Value position;
  Value name;
  // Id of the map on which it is placed.
  Value mapId;
  // Parts of its transform.
  Value scale;
  Value skew;
  Value trans;
  Value rotation;
  // A flag: whether it is shown on every level.
  Value allLevels;

  static std::shared_ptr<TernMapLabelInstance> initWithDictionary(Value dictionary);
  std::shared_ptr<TernMapLabelInstance> copyWithZone() const;
};

}  // namespace tern
