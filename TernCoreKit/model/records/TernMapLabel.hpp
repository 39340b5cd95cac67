// A label of the map: a text or an image, placed at its instances.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

class TernMapLabelInstances;
class TernUriCollection;

struct TERN_API TernMapLabel : TernBaseModel {
  Value name;
  Nested<TernMapLabelInstances> mapLabelInstances;
  Nested<TernUriCollection> uris;
  // The image; a label without one shows its name.
  Value svg;
  Value status;

  static std::shared_ptr<TernMapLabel> initWithDictionary(Value dictionary);
  std::shared_ptr<TernMapLabel> copyWithZone() const;
};

}  // namespace tern
