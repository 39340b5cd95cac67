#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernMapLabelInstances;
class TernUriCollection;

/// A label of the map: a text or an image, placed at its instances.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernMapLabel : TernBaseModel {
  /// The text of the label.
  Value name;
  /// Where it is placed.
  Nested<TernMapLabelInstances> mapLabelInstances;
  /// The files that go with it.
  Nested<TernUriCollection> uris;
  /// The image, an SVG document; a label without one shows its name.
  Value svg;
  /// Code; passed on.
  Value status;

  /// See TernBaseModel::initWithDictionary. "uris" and "mapLabelInstances" become collections.
  static std::shared_ptr<TernMapLabel> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `id`, `externalId` and `status`.
  std::shared_ptr<TernMapLabel> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
