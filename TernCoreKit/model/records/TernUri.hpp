// A link to a resource file.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern {

struct TERN_API TernUri : TernBaseModel {
  Value resourceType;
  Value mimeType;
  Value path;

  static std::shared_ptr<TernUri> initWithDictionary(Value dictionary);
  std::shared_ptr<TernUri> copyWithZone() const;
};

}  // namespace tern
