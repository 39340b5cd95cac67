#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

// How much of its size a map may gain or lose on the globe. A sphere and an ellipsoid are half a
// percent apart, and corners are often given to whole metres; drawings of the wrong scale, or with
// their corners in the wrong order, are off by more.
constexpr double mostStretch = 0.05;
constexpr double mostRoundingMetres = 3;
// Behind it Web Mercator, which places are converted by, has no place.
constexpr double mostLatitude = 85.06;

struct Corner {
  double latitude;
  double longitude;
};

std::optional<Corner> cornerOf(const Value& given) {
  const auto numbers = given.items();
  if (numbers.size() != 2 || !numbers[0].isNumber() || !numbers[1].isNumber()) return std::nullopt;
  const Corner corner{numbers[0].number(), numbers[1].number()};
  const bool isOnGlobe =
      std::abs(corner.latitude) <= mostLatitude && std::abs(corner.longitude) <= 180;
  return isOnGlobe ? std::optional(corner) : std::nullopt;
}

std::string metresText(double metres) { return std::to_string(std::llround(metres)) + " m"; }

class PlacementCheck {
 public:
  PlacementCheck(const Subject& subject, Findings& findings)
      : subject_(subject), findings_(findings) {}

  void check() {
    const TernActiveVenue& venue = subject_.venue;
    if (!venue.coordinates) return;
    const auto topLeft = cornerOf(venue.coordinates->topLeft);
    const auto bottomRight = cornerOf(venue.coordinates->bottomRight);
    if (!topLeft || !bottomRight) {
      return tell("the corners of the venue are no latitude and longitude each");
    }
    if (topLeft->latitude <= bottomRight->latitude ||
        topLeft->longitude >= bottomRight->longitude) {
      return tell("the top left corner of the venue is not north-west of the bottom right one");
    }
    const TernMap* first = venue.maps != nullptr ? venue.maps->getFirst().get() : nullptr;
    if (first == nullptr) return;
    checkSize(*first, *topLeft, *bottomRight);
    checkScales(*first);
  }

 private:
  void tell(std::string message, std::optional<std::int64_t> map = {}) {
    Finding finding{Kind::placement, {}, map, std::move(message)};
    finding.ids.push_back(map ? *map : subject_.venue.id.integer());
    findings_.push_back(std::move(finding));
  }

  // The first map lies on the corners.
  void checkSize(const TernMap& map, Corner topLeft, Corner bottomRight) {
    constexpr double metresPerDegree = 6'378'137.0 * std::numbers::pi / 180;
    const double middle = (topLeft.latitude + bottomRight.latitude) / 2 * std::numbers::pi / 180;
    const double across =
        (bottomRight.longitude - topLeft.longitude) * metresPerDegree * std::cos(middle);
    const double down = (topLeft.latitude - bottomRight.latitude) * metresPerDegree;
    checkLength(map, "wide", map.width.number() * map.mmPerPixel.number() / 1000, across);
    checkLength(map, "high", map.height.number() * map.mmPerPixel.number() / 1000, down);
  }

  void checkLength(const TernMap& map, std::string_view how, double byScale, double onGlobe) {
    if (!(byScale > 0)) return;
    const double off = std::abs(byScale - onGlobe);
    if (off <= mostRoundingMetres + mostStretch * std::max(byScale, onGlobe)) return;
    const std::int64_t id = map.id.integer();
    tell("the map of " + subject_.floor(id) + " is " + metresText(byScale) + " " +
             std::string(how) + " by its scale and " + metresText(onGlobe) +
             " by the venue's corners",
         id);
  }

  // Points of all maps are converted as if they were of the first.
  void checkScales(const TernMap& first) {
    const double scale = first.mmPerPixel.number();
    for (const TernMap& map : subject_.venue.maps->each()) {
      const double own = map.mmPerPixel.number();
      if (!(scale > 0 && own > 0) || std::abs(own - scale) <= mostStretch * scale) continue;
      const std::int64_t id = map.id.integer();
      tell("the map of " + subject_.floor(id) + " has " + map.mmPerPixel.printed() +
               " mm a map unit and that of " + subject_.floor(first.id.integer()) + " " +
               first.mmPerPixel.printed() + ", so it lies elsewhere on the globe",
           id);
    }
  }

  const Subject& subject_;
  Findings& findings_;
};

}  // namespace

void checkPlacement(const Subject& subject, Findings& findings) {
  PlacementCheck(subject, findings).check();
}

}  // namespace tern::check
