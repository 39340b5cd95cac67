#include <string_view>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

class PlaceCheck {
 public:
  PlaceCheck(const Subject& subject, Findings& findings)
      : subject_(subject),
        findings_(findings),
        stepFree_(graph::standingIn(subject.network.upTo(stepFreeLevel))) {}

  // A kind of facility that a venue does not have has no waypoint; a place to go to has one.
  template <class Collection>
  void check(const Nested<Collection>& places, std::string_view record, bool needsWaypoint) {
    if (!places) return;
    for (const auto& place : places->each()) {
      if (place.waypoints.empty() && !needsWaypoint) continue;
      if (!isAnyOf(place, subject_.standing.reached)) {
        tell(Kind::unreachable, place, record,
             place.waypoints.empty() ? " has no waypoint" : " is reached from nowhere else");
      } else if (!isAnyOf(place, stepFree_.reached)) {
        tell(Kind::notStepFree, place, record, " has no way without steps");
      }
    }
  }

 private:
  template <class Place>
  bool isAnyOf(const Place& place, const std::vector<bool>& reached) const {
    for (const auto& waypoint : place.waypoints) {
      const auto node = subject_.network.find(waypoint->id.integer());
      if (node && reached[*node]) return true;
    }
    return false;
  }

  template <class Place>
  void tell(Kind kind, const Place& place, std::string_view record, std::string_view what) {
    const std::int64_t id = place.id.integer();
    Finding finding{kind, {id}, {}, {}};
    std::string where;
    if (!place.waypoints.empty()) {
      finding.map = place.waypoints.front()->mapId.integer();
      where = onFloor(subject_, finding.map);
    }
    const std::string called(place.name.text());
    const std::string numbered = std::string(record) + " " + std::to_string(id);
    finding.message =
        (called.empty() ? numbered : called + " (" + numbered + ")") + where + std::string(what);
    findings_.push_back(std::move(finding));
  }

  const Subject& subject_;
  Findings& findings_;
  const graph::Standing stepFree_;
};

}  // namespace

void checkPlaces(const Subject& subject, Findings& findings) {
  PlaceCheck check(subject, findings);
  check.check(subject.venue.destinations, "destination", true);
  check.check(subject.venue.amenities, "amenity", false);
}

}  // namespace tern::check
