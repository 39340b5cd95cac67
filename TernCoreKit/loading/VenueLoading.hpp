/// @file
/// Loads venues from the documents of a venue folder: see DocumentSource.hpp.
///
/// Only the documents that are needed are asked for. What a broken one has that the library cannot
/// use is logged and left out, as it is when a service sends it.
///
/// Ownership: hands out what it loads and keeps nothing, but that joined venues are those of the
/// process: see TernMultiActiveVenues.hpp.
/// Threads: any.
/// Fails: by value, with one line that names the document and what is wrong with it. REQUIRES: the
/// source's `read` throws nothing but std::bad_alloc.
///
///     const auto loaded = loadVenue(folderDocuments("data/plaza"), 1);
///     if (const auto* venue = std::get_if<std::shared_ptr<TernActiveVenue>>(&loaded)) ...
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "TernCoreKit/loading/DocumentSource.hpp"
#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

class TernMultiActiveVenues;
class TernVenueCollection;
struct TernActiveVenue;

/// The documents of a venue and of its buildings, as they were read.
struct VenueDocuments {
  /// The venue's own.
  Value venue;
  /// Those of its buildings, in ascending order of their ids.
  std::vector<Value> buildings;
};

/// The venues of the customer.
TERN_API std::variant<std::shared_ptr<TernVenueCollection>, TernError> readVenues(
    const DocumentSource& source);

/// A venue with its graph. Without a venue's id it is the only one of the customer; without a
/// building's id it has all buildings of its document. `documents`, where it is not null, gets what
/// the venue was made of.
TERN_API std::variant<std::shared_ptr<TernActiveVenue>, TernError> loadVenue(
    const DocumentSource& source, std::optional<std::int64_t> venueId = std::nullopt,
    std::optional<std::int64_t> buildingId = std::nullopt, VenueDocuments* documents = nullptr);

/// Joins venues that have been loaded and waits for the graph; null where there was no memory for
/// it.
TERN_API std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues);

}  // namespace tern
