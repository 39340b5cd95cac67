// Records and venues hold collections of other records, and collections stand above records: what a
// holder needs of a collection is declared here and defined beside the collections.
//
// Ownership: what is made is the caller's. Threads: as readers. Fails: as `createBatch` does.
#pragma once

#include <concepts>
#include <memory>

#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernAmenityCollection;
class TernBuildingCollection;
class TernDestinationCollection;
class TernFloorCollection;
class TernMapLabelCollection;
class TernMapLabelInstances;
class TernPathCollection;
class TernPathTypeCollection;
class TernUriCollection;
class TernWaypointCollection;

namespace detail {

template <class T, class... Others>
concept OneOf = (std::same_as<T, Others> || ...);

template <class T>
concept HeldCollection =
    OneOf<T, TernAmenityCollection, TernBuildingCollection, TernDestinationCollection,
          TernFloorCollection, TernMapLabelCollection, TernMapLabelInstances, TernPathCollection,
          TernPathTypeCollection, TernUriCollection, TernWaypointCollection>;

// A collection filled by the batch.
template <HeldCollection Collection>
std::shared_ptr<Collection> collectionOf(Value batch);
template <HeldCollection Collection>
std::shared_ptr<Collection> copyOfCollection(const Collection& from);

// Makes a field's map a collection.
template <HeldCollection Collection>
void makeCollection(Nested<Collection>& field) {
  if (field.plain().isMap()) field = collectionOf<Collection>(field.takePlain());
}

}  // namespace detail
}  // namespace tern
