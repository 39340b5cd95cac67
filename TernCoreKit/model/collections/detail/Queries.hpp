// The comparisons that the collections' queries are made of.
//
// Ownership: values. Threads: as what is compared. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/RecordMap.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

inline bool isPresent(const Value& field) { return !field.isAbsent() && !field.isNull(); }

inline bool sameText(const Value& a, const Value& b) { return a.isText() && a == b; }

// Equal as numbers; a field that is no number reads as 0.
bool isNumber(const Value& field, std::int64_t number);

// Whether, or how often, a list holds an id (as a number) or a text.
bool containsId(const Value& list, const Value& id);
bool containsId(const Value& list, std::int64_t id);
std::size_t countText(const Value& list, const Value& text);

using Locations = std::vector<std::shared_ptr<TernLocation>>;

// How many of the locations lie on the map, or name the waypoint.
std::size_t countOnMap(const Locations& locations, std::int64_t mapId);
std::size_t countAtWaypoint(const Locations& locations, const Value& waypointId);
// How many of the locations lie on the waypoint's map and name the waypoint.
std::size_t countAtWaypoint(const Locations& locations, const Value& waypointId,
                            const Value& mapId);

// The entry whose key comes first as text in any case; null for an empty map.
const RecordMap::Entry* firstByKeyText(const RecordMap& records);

template <class T>
void append(std::vector<T>& all, std::vector<T>&& more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

}  // namespace tern::detail
