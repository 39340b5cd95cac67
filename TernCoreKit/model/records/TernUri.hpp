#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern::inline v5 {

/// A link to a resource file.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernUri : TernBaseModel {
  /// What the file is for.
  Value resourceType;
  /// What the file is, such as "image/png".
  Value mimeType;
  /// Where it lies at the service.
  Value path;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernUri> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernUri> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
