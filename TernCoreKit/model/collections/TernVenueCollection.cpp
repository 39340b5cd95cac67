#include "TernCoreKit/model/collections/TernVenueCollection.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

TernVenueCollection::TernVenueCollection() {
  assignCollectionModelClass(detail::kindOf<TernVenue>());
}

std::shared_ptr<TernVenueCollection> TernVenueCollection::copyWithZone() const {
  return copyOf(*this);
}

template <>
const detail::FieldTable<TernVenueCollection>& detail::fieldsOf<TernVenueCollection>() {
  using Table = detail::FieldTable<TernVenueCollection>;
  static const detail::Immortal table{
      Table("TernVenueCollection",
            {Table::uncopied<&TernVenueCollection::loadedVenueCount>("loadedVenueCount"),
             Table::uncopied<&TernVenueCollection::defaultId>("defaultId")},
            nullptr, detail::UnknownKeys::ignore)};
  return table.value;
}

void TernVenueCollection::takeFields(Value& batch) {
  detail::KeyOrder order;
  detail::fieldsOf<TernVenueCollection>().fill(*this, batch, order);
}

std::shared_ptr<TernVenue> TernVenueCollection::getDefault() const {
  if (!detail::isPresent(defaultId)) return nullptr;
  return shared(items().find(RecordMap::keyOf(defaultId)));
}

std::shared_ptr<TernVenue> TernVenueCollection::getByName(const Value& name) const {
  return first([&](const TernVenue& each) { return detail::sameText(each.name, name); });
}

}  // namespace tern
