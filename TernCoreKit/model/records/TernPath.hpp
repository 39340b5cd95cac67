#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern::inline v5 {

/// An edge of the walking graph: it joins the waypoints it names.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernPath : TernBaseModel {
  /// Id of its TernPathType.
  Value pathTypeId;
  /// A text for people.
  Value name;
  /// Counts only where the path changes height: 1 is up only, 2 is down only, anything else both
  /// ways.
  Value direction;
  /// List of the ids of the waypoints it joins.
  Value waypointIds;
  /// Free data of the venue's owner.
  Value extensors;
  /// Code; passed on.
  Value status;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernPath> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `extensors` and `status`.
  std::shared_ptr<TernPath> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
