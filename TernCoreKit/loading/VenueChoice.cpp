#include "TernCoreKit/loading/VenueChoice.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5 {

namespace {

// With a space for every control character, so that a name cannot command a terminal.
std::string asPlainWords(std::string_view name) {
  std::string line;
  while (!name.empty()) {
    const Utf8Character first = firstUtf8Character(name);
    const bool isControl = first.code < 0x20 || (first.code >= 0x7F && first.code < 0xA0);
    line += isControl ? std::string(first.size, ' ') : std::string(name.substr(0, first.size));
    name.remove_prefix(first.size);
  }
  return line;
}

template <class Collection>
std::string listedRecords(const Collection& records) {
  constexpr std::size_t namedAtMost = 20;
  std::string list;
  std::size_t count = 0;
  for (const auto& record : records.each()) {
    if (!list.empty()) list += ", ";
    if (++count > namedAtMost) return list + "...";
    list += std::to_string(record.id.integer());
    const std::string name = asPlainWords(shortened(record.name.text()));
    if (!name.empty()) list += " (" + name + ")";
  }
  return list.empty() ? "none" : list;
}

TernError missing(std::string line) {
  return TernError::initWithErrorType(TernErrorTypeObjectNotFound, std::move(line));
}

}  // namespace

std::string listed(const TernVenueCollection& venues) { return listedRecords(venues); }

std::variant<std::int64_t, TernError> onlyVenue(const TernVenueCollection& venues,
                                                const std::string& place) {
  const std::size_t count = venues.each().size();
  if (count == 0) return missing(place + ": lists no venue");
  if (count == 1) return venues.each().begin()->id.integer();
  return TernError::initWithErrorType(TernErrorTypeIncorrectObjectType,
                                      "name one of the venues " + listed(venues));
}

std::variant<std::vector<std::int64_t>, TernError> buildingIds(
    const TernActiveVenue& venue, const std::string& place,
    std::optional<std::int64_t> buildingId) {
  if (!venue.buildings || venue.buildings->each().size() == 0) {
    return missing(place + ": has no buildings");
  }
  if (buildingId) {
    if (venue.buildings->findById(*buildingId) != nullptr) return std::vector{*buildingId};
    return missing("there is no building " + std::to_string(*buildingId) + " in " + place +
                   "; it has " + listedRecords(*venue.buildings.get()));
  }
  std::vector<std::int64_t> ids;
  for (const TernBuilding& building : venue.buildings->each()) ids.push_back(building.id.integer());
  std::ranges::sort(ids);
  return ids;
}

}  // namespace tern
