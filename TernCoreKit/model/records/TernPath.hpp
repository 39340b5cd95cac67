// An edge of the walking graph: it joins the waypoints it names.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern {

struct TERN_API TernPath : TernBaseModel {
  Value pathTypeId;
  Value name;
  // Direction code.
  Value direction;
  // List of the ids of the waypoints it joins.
  Value waypointIds;
  Value extensors;
  Value status;

  static std::shared_ptr<TernPath> initWithDictionary(Value dictionary);
  std::shared_ptr<TernPath> copyWithZone() const;
};

}  // namespace tern
