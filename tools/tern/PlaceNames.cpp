#include "tools/tern/PlaceNames.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/PlaceText.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

using Venues = std::vector<std::shared_ptr<TernActiveVenue>>;
using Resolved = std::variant<Value, Failure>;

// A place that a name fits, and whose it is.
struct Fit {
  const TernPlace* place;
  const TernActiveVenue* venue;
};

bool isKind(const TernPlace& place, Naming naming) {
  if (naming == Naming::destination) return place.element.kind == TernElement::Kind::destination;
  if (naming == Naming::amenity) return place.element.kind == TernElement::Kind::amenity;
  return true;
}

bool isOfWaypoints(Naming naming) { return naming == Naming::start || naming == Naming::goal; }

std::string_view nounFor(Naming naming) {
  if (naming == Naming::destination) return "destination";
  return naming == Naming::amenity ? "amenity" : "place";
}

std::string titleOf(const Venues& venues) {
  return venues.size() == 1 ? venueTitle(*venues.front()) : "these venues";
}

template <class Collection>
bool has(const Nested<Collection>& collection, std::int64_t id) {
  return collection && collection->findById(id) != nullptr;
}

bool hasId(const TernActiveVenue& venue, Naming naming, std::int64_t id) {
  if (naming == Naming::destination) return has(venue.destinations, id);
  if (naming == Naming::amenity) return has(venue.amenities, id);
  return venue.globalASGrid()->getWPById(id) != nullptr;
}

bool hasAWayOn(const TernActiveVenue& venue, std::int64_t waypointId) {
  const auto node = venue.globalASGrid()->getNodeById(waypointId);
  return node && !node->neighbors().empty();
}

// One waypoint to start from, or all of a goal; one alone stands without a list. REQUIRES: there
// are some.
Value waypointsOf(const Fit& fit, Naming naming) {
  const auto& waypoints = fit.place->waypoints;
  if (naming == Naming::start) {
    const auto good = std::ranges::find_if(waypoints, [&](const auto& waypoint) {
      return hasAWayOn(*fit.venue, waypoint->id.integer());
    });
    return (good != waypoints.end() ? *good : waypoints.front())->id.integer();
  }
  Value ids = Value::list();
  for (const auto& waypoint : waypoints) ids.append(waypoint->id.integer());
  return ids.size() == 1 ? ids.items().front() : ids;
}

// Reads what one option of a call names.
class NameReader {
 public:
  NameReader(const Venues& venues, const std::vector<TernPlaces>& places, const Option& option)
      : venues_(venues), places_(places), option_(option) {}

  Resolved read(const Value& given) const {
    if (!given.isList()) return readOne(given);
    Value list = Value::list();
    for (auto rest = given.items(); !rest.empty();) {
      const std::size_t count = piecesOfAName(rest);
      Resolved one = readOne(count == 1 ? rest.front() : Value(joined(rest.first(count))));
      if (std::holds_alternative<Failure>(one)) return one;
      list.append(std::get<Value>(std::move(one)));
      rest = rest.subspan(count);
    }
    return list;
  }

 private:
  static std::string joined(std::span<const Value> pieces) {
    std::string text;
    for (const Value& piece : pieces) text += (text.empty() ? "" : ",") + piece.printed();
    return text;
  }

  // How many of a list's first pieces are one name, which may hold commas itself: as many as can
  // be.
  std::size_t piecesOfAName(std::span<const Value> pieces) const {
    const bool hasText = std::ranges::any_of(pieces, &Value::isText);
    for (std::size_t count = hasText ? pieces.size() : 1; count > 1; --count) {
      if (!fitsOf(joined(pieces.first(count))).empty()) return count;
    }
    return 1;
  }

  Resolved readOne(const Value& given) const {
    const auto isThere = [&](const auto& venue) {
      return hasId(*venue, option_.naming, given.integer());
    };
    if (given.isInteger() && std::ranges::any_of(venues_, isThere)) return given;
    const std::vector<Fit> fits = fitsOf(given.printed());
    if (fits.size() == 1) return idsOf(fits.front());
    if (!fits.empty()) return severalFit(given, fits);
    if (given.isInteger()) return given;
    return noneFits(given);
  }

  // For a waypoint those that have one, where there are such.
  std::vector<Fit> fitsOf(const std::string& name) const {
    std::vector<Fit> fits;
    for (std::size_t i = 0; i < venues_.size(); ++i) {
      for (const TernPlace* place : places_[i].named(name)) {
        if (isKind(*place, option_.naming)) fits.push_back({place, venues_[i].get()});
      }
    }
    const auto isPlaced = [](const Fit& fit) { return !fit.place->waypoints.empty(); };
    if (isOfWaypoints(option_.naming) && std::ranges::any_of(fits, isPlaced)) {
      std::erase_if(fits, [&](const Fit& fit) { return !isPlaced(fit); });
    }
    return fits;
  }

  Resolved idsOf(const Fit& fit) const {
    if (!isOfWaypoints(option_.naming)) return Value(fit.place->element.record->id.integer());
    if (!fit.place->waypoints.empty()) return waypointsOf(fit, option_.naming);
    return nothingFound(placeText(*fit.venue, *fit.place) + "; there is no way to it");
  }

  Failure nothingFound(const std::string& sentence) const {
    return failure(ExitStatus::nothingFound, TernErrorTypeObjectNotFound,
                   std::string(option_.name) + ": " + sentence);
  }

  Failure noneFits(const Value& given) const {
    std::string sentence = "there is no " + std::string(nounFor(option_.naming)) + " named " +
                           inQuotes(given.printed()) + " in " + titleOf(venues_);
    for (std::size_t i = 0; i < venues_.size(); ++i) {
      const TernPlace* closest = places_[i].closest(given.printed());
      if (closest == nullptr) continue;
      sentence += i == 0 ? "; the closest is " : ", in " + venueTitle(*venues_[i]) + " ";
      sentence += placeText(*venues_[i], *closest);
    }
    return nothingFound(sentence);
  }

  Failure severalFit(const Value& given, const std::vector<Fit>& fits) const {
    constexpr std::size_t listedAtMost = 20;
    std::string sentence = std::string(option_.name) + ": " + inQuotes(given.printed()) +
                           " is the name of several; say which by its id: ";
    for (std::size_t i = 0; i < std::min(fits.size(), listedAtMost); ++i) {
      sentence += (i > 0 ? "; " : "") + placeText(*fits[i].venue, *fits[i].place);
      if (venues_.size() > 1) sentence += " in " + venueTitle(*fits[i].venue);
    }
    if (fits.size() > listedAtMost) {
      sentence += "; and " + std::to_string(fits.size() - listedAtMost) + " more";
    }
    return wrongWords(std::move(sentence));
  }

  const Venues& venues_;
  const std::vector<TernPlaces>& places_;
  const Option& option_;
};

// Whether all of it are ids that there are, so that no name has to be looked up.
bool isOfIds(const Value& given, Naming naming, const Venues& venues) {
  if (given.isList()) {
    return std::ranges::all_of(given.items(),
                               [&](const Value& each) { return isOfIds(each, naming, venues); });
  }
  return given.isInteger() && std::ranges::any_of(venues, [&](const auto& venue) {
           return hasId(*venue, naming, given.integer());
         });
}

}  // namespace

std::variant<Arguments, Failure> withIds(Arguments call, const Venues& venues) {
  std::vector<TernPlaces> places;
  for (const Option& option : call.command->options) {
    const Value* given = call.request.find(option.requestKey());
    if (option.naming == Naming::none || given == nullptr) continue;
    if (isOfIds(*given, option.naming, venues)) continue;
    if (places.empty()) {
      for (const auto& venue : venues) places.emplace_back(*venue);
    }
    Resolved resolved = NameReader(venues, places, option).read(*given);
    if (auto* wrong = std::get_if<Failure>(&resolved)) return std::move(*wrong);
    call.request.set(option.requestKey(), std::get<Value>(std::move(resolved)));
  }
  return call;
}

Outcome answerAbout(const AboutVenue& about, const Arguments& call,
                    const std::shared_ptr<TernActiveVenue>& venue) {
  auto asked = withIds(call, {venue});
  if (auto* wrong = std::get_if<Failure>(&asked)) return std::move(*wrong);
  return about.one(std::get<Arguments>(asked), venue);
}

Outcome answerAbout(const AboutVenue& about, const Arguments& call,
                    const std::shared_ptr<TernMultiActiveVenues>& venues) {
  auto asked = withIds(call, venues->activeVenues());
  if (auto* wrong = std::get_if<Failure>(&asked)) return std::move(*wrong);
  return about.joined(std::get<Arguments>(asked), venues);
}

}  // namespace tern::command
