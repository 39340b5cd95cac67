#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern::inline v5 {

/// Something that a nearest-element search can look for: a destination, an amenity or a path type,
/// and which of these it is.
///
/// Ownership: a value that shares its record. Threads: as a standard container.
/// Fails: never; any other record, and null, is of the kind `other`, which no search accepts.
///
///     nearest.searchNearestElement(venue.destinations->getById(7), {120, 80}, map, show);
struct TernElement {
  /// What the record is.
  enum class Kind : std::uint8_t { destination, amenity, pathType, other };

  /// A destination to look for.
  TernElement(std::shared_ptr<TernDestination> destination)  // NOLINT(google-explicit-constructor)
      : TernElement(Kind::destination, std::move(destination)) {}
  /// An amenity to look for.
  TernElement(std::shared_ptr<TernAmenity> amenity)  // NOLINT(google-explicit-constructor)
      : TernElement(Kind::amenity, std::move(amenity)) {}
  /// A path type to look for.
  TernElement(std::shared_ptr<TernPathType> pathType)  // NOLINT(google-explicit-constructor)
      : TernElement(Kind::pathType, std::move(pathType)) {}
  /// Any other record, which no search accepts.
  TernElement(std::shared_ptr<TernBaseModel> model)  // NOLINT(google-explicit-constructor)
      : TernElement(Kind::other, std::move(model)) {}

  /// `other` whenever the record is null.
  Kind kind;
  /// The record; may be null.
  std::shared_ptr<TernBaseModel> record;

  /// Whether both are the same record as the same kind.
  friend bool operator==(const TernElement&, const TernElement&) = default;

 private:
  TernElement(Kind kindOfRecord, std::shared_ptr<TernBaseModel> held)
      : kind(held != nullptr ? kindOfRecord : Kind::other), record(std::move(held)) {}
};

}  // namespace tern
