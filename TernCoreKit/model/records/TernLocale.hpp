#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern::inline v5 {

/// A language that the venue's texts are available in.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernLocale : TernBaseModel {
  /// The language, for visitors.
  Value name;
  /// Code of the language, such as "en-US".
  Value localeCode;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernLocale> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernLocale> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
