#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"

#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/collections/detail/Text.hpp"

namespace tern::inline v5 {

TernLocaleCollection::TernLocaleCollection() {
  assignCollectionModelClass(detail::kindOf<TernLocale>());
}

std::shared_ptr<TernLocaleCollection> TernLocaleCollection::copyWithZone() const {
  return copyOf(*this);
}

std::shared_ptr<TernLocale> TernLocaleCollection::getByName(const Value& name) const {
  return first([&](const TernLocale& each) { return detail::sameTextInAnyCase(each.name, name); });
}

std::shared_ptr<TernLocale> TernLocaleCollection::getByLocaleCode(const Value& localeCode) const {
  return first([&](const TernLocale& each) {
    return detail::sameTextInAnyCase(each.localeCode, localeCode);
  });
}

}  // namespace tern
