#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/spatial/TernElement.hpp"

namespace tern::inline v5 {

struct TernWaypoint;

/// A destination or an amenity as people look for it: by its name.
///
/// Ownership: shares its records. Threads: a plain value; its records are read as every record is.
/// Fails: never; a record without a name has an empty one.
///
///     std::printf("%s is reached at %zu waypoints\n", place.name.c_str(), place.waypoints.size());
struct TernPlace {
  /// Which record it is.
  TernElement element;
  /// As the venue writes it.
  std::string name;
  /// Where it is reached, in the order of the record.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;
};

/// The destinations and amenities of a venue, to be found by name.
///
/// Names are compared whatever the case, the accents and the width of their letters are, in every
/// script: "cafe" finds "Café", "strasse" finds "Straße" and "ガラス" finds "ｶﾞﾗｽ". What is folded
/// and what is not stands in docs/decisions.md.
///
/// Ownership: shares the records and holds their names; the venue need not outlive it.
/// Threads: any number may ask at a time; it never changes. What it says is settled when it is
/// made. Fails: never; what is not found is an empty list.
///
///     const TernPlaces places(*venue);
///     for (const TernPlace* place : places.find("cofee")) show(place->name);  // Coffee Corner,
///     ...
class TERN_API TernPlaces {
 public:
  /// What is found, in an order that each operation says; borrowed from this object.
  using Found = std::vector<const TernPlace*>;

  /// Of the venue as it is now; holds its `recordsMutex` while it reads the records.
  explicit TernPlaces(const TernVenueData& venue);

  /// All, in the order of their folded names, then of their ids, a destination before an amenity.
  std::span<const TernPlace> all() const { return places_; }

  /// Those whose name is the text, contains it or nearly is it, best match first: the whole name,
  /// its beginning, the beginning of a word, somewhere within, and last one letter left out, added,
  /// replaced or swapped with its neighbour in words of five letters or more. Equally good ones are
  /// in the order of `all`; an empty text finds all.
  Found find(std::string_view text) const;

  /// Those whose whole name is the text; none for an empty text.
  Found named(std::string_view text) const;

  /// The one whose name comes nearest to a text: the first that is found, else the one with the
  /// fewest letters to change. Null when nothing has a name.
  const TernPlace* closest(std::string_view text) const;

 private:
  TERN_INTERNAL std::string_view nameFrom(std::size_t start) const;
  TERN_INTERNAL std::vector<std::uint8_t> rank(std::string_view text) const;

  std::vector<TernPlace> places_;
  // The folded names in the order of the places, each with a line break behind it, which no folded
  // name holds; and where each begins, with the end of all as the last.
  std::string text_;
  std::vector<std::uint32_t> starts_;
};

}  // namespace tern
