// Features of GeoJSON (RFC 7946): what lies on the maps of venues as longitudes and latitudes, each
// with the floor that it lies on.
//
//   GeoFeatures features;
//   features.add({.kind = "walk", .venue = venue, .mapId = 3, .metres = 12.5}, points);
//   if (!features.objection()) write(features.collection());
//
// Ownership: keeps copies. Threads: as readers of the venues. Fails: by an objection, after which
// nothing is added.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::command {

struct GeoFeature {
  // "walk", "start", "goal" or "mover"
  std::string_view kind;
  const TernVenueData& venue;
  std::int64_t mapId;
  // Left out when it is empty.
  std::string name = {};
  // The length of a walk; how far it is walked to a point. Absent without a scale.
  std::optional<double> metres = {};
};

class GeoFeatures {
 public:
  // In map units: one point is a Point, several are a LineString, none is nothing.
  void add(const GeoFeature& feature, std::span<const TernCoordinate> points);

  // Why there are no longitudes and latitudes, when there are none.
  const std::optional<std::string>& objection() const { return objection_; }

  // The FeatureCollection of all that was added.
  Value collection() const;

 private:
  Value features_ = Value::list();
  std::optional<std::string> objection_;
};

}  // namespace tern::command
