#include "tools/tern/VenueChoice.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

template <class Collection>
std::string listedRecords(const Collection& records) {
  constexpr std::size_t namedAtMost = 20;
  std::string list;
  std::size_t count = 0;
  for (const auto& record : records.each()) {
    if (!list.empty()) list += ", ";
    if (++count > namedAtMost) return list + "...";
    list += std::to_string(record.id.integer());
    const std::string name = onOneLine(shortened(record.name.text()));
    if (!name.empty()) list += " (" + name + ")";
  }
  return list.empty() ? "none" : list;
}

}  // namespace

Failure notLoaded(TernErrorType type, std::string line) {
  return failure(ExitStatus::notLoaded, type, std::move(line));
}

Failure notFound(std::string line) {
  return notLoaded(TernErrorTypeObjectNotFound, std::move(line));
}

std::string listed(const TernVenueCollection& venues) { return listedRecords(venues); }

std::variant<std::int64_t, Failure> onlyVenue(const TernVenueCollection& venues,
                                              const std::string& place) {
  const std::size_t count = venues.each().size();
  if (count == 0) return notFound(place + ": lists no venue");
  if (count > 1) return wrongWords("--venue: name one of the venues " + listed(venues));
  return venues.each().begin()->id.integer();
}

std::variant<std::vector<std::int64_t>, Failure> buildingIds(
    const TernActiveVenue& venue, const std::string& place,
    std::optional<std::int64_t> buildingId) {
  if (!venue.buildings || venue.buildings->each().size() == 0) {
    return notFound(place + ": has no buildings");
  }
  if (buildingId) {
    if (venue.buildings->findById(*buildingId) != nullptr) return std::vector{*buildingId};
    return notFound("there is no building " + std::to_string(*buildingId) + " in " + place +
                    "; it has " + listedRecords(*venue.buildings.get()));
  }
  std::vector<std::int64_t> ids;
  for (const TernBuilding& building : venue.buildings->each()) ids.push_back(building.id.integer());
  std::ranges::sort(ids);
  return ids;
}

}  // namespace tern::command
