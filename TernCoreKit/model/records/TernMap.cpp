#include "TernCoreKit/model/records/TernMap.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/detail/ViewBox.hpp"

namespace tern::inline v5 {

namespace {

// The size that the drawing states is taken over; without one the document's stays.
void takeSize(TernMap& map) {
  if (map.svg.isAbsent() || map.svg.isNull()) return;
  if (!map.svg.isText()) {
    detail::logWrongKind("\"svg\"", "TernMap", "a text");
    return;
  }
  if (auto size = detail::sizeOfViewBox(map.svg.text())) {
    map.width = std::move(size->width);
    map.height = std::move(size->height);
  }
}

void finish(TernMap& map, Value&) {
  detail::makeCollection(map.waypoints);
  detail::makeCollection(map.paths);
  detail::makeCollection(map.uris);
  takeSize(map);
}

}  // namespace

template <>
const detail::FieldTable<TernMap>& detail::fieldsOf<TernMap>() {
  using Table = detail::FieldTable<TernMap>;
  static const detail::Immortal table{Table(
      "TernMap",
      {Table::copied<&TernMap::id>("id"), Table::copied<&TernMap::externalId>("externalId"),
       Table::copied<&TernMap::svg>("svg"), Table::copied<&TernMap::geojson>("geojson"),
       Table::copied<&TernMap::mmPerPixel>("mmPerPixel"), Table::copied<&TernMap::scale>("scale"),
       Table::copied<&TernMap::skew>("skew"), Table::copied<&TernMap::trans>("trans"),
       Table::copied<&TernMap::width>("width"), Table::copied<&TernMap::height>("height"),
       Table::copied<&TernMap::waypoints>("waypoints"), Table::copied<&TernMap::paths>("paths"),
       Table::uncopied<&TernMap::uris>("uris")},
      finish, detail::UnknownKeys::ignore)};
  return table.value;
}

std::shared_ptr<TernMap> TernMap::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernMap>().make(std::move(dictionary));
}

std::shared_ptr<TernMap> TernMap::copyWithZone() const {
  return detail::fieldsOf<TernMap>().copy(*this);
}

}  // namespace tern
