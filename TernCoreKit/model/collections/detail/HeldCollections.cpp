#include "TernCoreKit/model/detail/HeldCollections.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

namespace tern::inline v5::detail {

template <HeldCollection Collection>
std::shared_ptr<Collection> collectionOf(Value batch) {
  auto collection = std::make_shared<Collection>();
  collection->takeBatch(std::move(batch));
  return collection;
}

template <HeldCollection Collection>
std::shared_ptr<Collection> copyOfCollection(const Collection& from) {
  return from.copyWithZone();
}

template std::shared_ptr<TernAmenityCollection> collectionOf(Value);
template std::shared_ptr<TernAmenityCollection> copyOfCollection(const TernAmenityCollection&);
template std::shared_ptr<TernBuildingCollection> collectionOf(Value);
template std::shared_ptr<TernBuildingCollection> copyOfCollection(const TernBuildingCollection&);
template std::shared_ptr<TernDestinationCollection> collectionOf(Value);
template std::shared_ptr<TernDestinationCollection> copyOfCollection(
    const TernDestinationCollection&);
template std::shared_ptr<TernFloorCollection> collectionOf(Value);
template std::shared_ptr<TernFloorCollection> copyOfCollection(const TernFloorCollection&);
template std::shared_ptr<TernMapLabelCollection> collectionOf(Value);
template std::shared_ptr<TernMapLabelCollection> copyOfCollection(const TernMapLabelCollection&);
template std::shared_ptr<TernMapLabelInstances> collectionOf(Value);
template std::shared_ptr<TernMapLabelInstances> copyOfCollection(const TernMapLabelInstances&);
template std::shared_ptr<TernPathCollection> collectionOf(Value);
template std::shared_ptr<TernPathCollection> copyOfCollection(const TernPathCollection&);
template std::shared_ptr<TernPathTypeCollection> collectionOf(Value);
template std::shared_ptr<TernPathTypeCollection> copyOfCollection(const TernPathTypeCollection&);
template std::shared_ptr<TernUriCollection> collectionOf(Value);
template std::shared_ptr<TernUriCollection> copyOfCollection(const TernUriCollection&);
template std::shared_ptr<TernWaypointCollection> collectionOf(Value);
template std::shared_ptr<TernWaypointCollection> copyOfCollection(const TernWaypointCollection&);

}  // namespace tern::detail
