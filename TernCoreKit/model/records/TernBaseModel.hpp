#pragma once

#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The base of the records that the service's documents become.
///
/// A record is plain data. `initWithDictionary` makes it from one decoded JSON object: the value
/// under each key goes as it is into the field of that name, then some kinds turn fields into
/// nested records or collections. A field whose key is missing is absent; a JSON null stays one.
/// `copyWithZone` gives a new record with copies of some of the fields (each kind says
/// which); lists and collections are new ones that hold the same elements. Two records are equal
/// only when they are the same object.
///
/// Ownership: held by std::shared_ptr, shared by the collections that list it.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: never. A key that is not a field stops the making at that key: it is logged and the
/// record returned partly filled, without nested records. A document that is no map gives an empty
/// record.
///
///     auto waypoint = TernWaypoint::initWithDictionary(std::move(document));
///     waypoint->id.integer();
struct TERN_API TernBaseModel {
  /// A number, unique within its kind in one venue.
  Value id;
  /// A text chosen by the venue's owner.
  Value externalId;

  TernBaseModel() = default;
  /// The same fields; the new record shares the nested ones.
  TernBaseModel(const TernBaseModel&) = default;
  /// The same, leaving the fields of the other absent.
  TernBaseModel(TernBaseModel&&) = default;
  /// The other's fields from here on.
  TernBaseModel& operator=(const TernBaseModel&) = default;
  /// The same, leaving the fields of the other absent.
  TernBaseModel& operator=(TernBaseModel&&) = default;
  virtual ~TernBaseModel();

  /// A record with these two and nothing else.
  static std::shared_ptr<TernBaseModel> initWithId(Value id, Value externalId);
  /// Made of a document, which is taken over and whose parts are moved out of it.
  static std::shared_ptr<TernBaseModel> initWithDictionary(Value dictionary);
  /// A new record of the same kind with copies of the fields that this kind copies. Lists and
  /// collections are new ones that hold the same elements.
  std::shared_ptr<TernBaseModel> copyWithZone() const { return copyOfKind(); }

 private:
  virtual std::shared_ptr<TernBaseModel> copyOfKind() const;
};

}  // namespace tern
