// A language that the venue's texts are available in.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern {

struct TERN_API TernLocale : TernBaseModel {
  Value name;
  Value localeCode;

  static std::shared_ptr<TernLocale> initWithDictionary(Value dictionary);
  std::shared_ptr<TernLocale> copyWithZone() const;
};

}  // namespace tern
