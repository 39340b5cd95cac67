#include "tools/tern/GeoFeatures.hpp"

#include <cmath>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::command {

namespace {

bool isOnGlobe(TernCoordinate degrees) {
  return std::abs(degrees.x) <= 180 && std::abs(degrees.y) <= 90;
}

// A corner as longitude and latitude; none without two numbers. The projection has no poles.
std::optional<TernCoordinate> cornerOf(const Value& corner) {
  const auto numbers = corner.items();
  if (numbers.size() != 2 || !numbers[0].isNumber() || !numbers[1].isNumber()) return std::nullopt;
  const TernCoordinate degrees{numbers[1].number(), numbers[0].number()};
  if (!isOnGlobe(degrees) || std::abs(degrees.y) == 90) return std::nullopt;
  return degrees;
}

// Whether the venue says where it lies, and has a first map whose size that is.
bool isPlaced(const TernVenueData& venue) {
  if (!venue.coordinates || !venue.maps) return false;
  const auto topLeft = cornerOf(venue.coordinates->topLeft);
  const auto bottomRight = cornerOf(venue.coordinates->bottomRight);
  const auto map = venue.maps->getFirst();
  return topLeft && bottomRight && topLeft->x != bottomRight->x && topLeft->y != bottomRight->y &&
         map != nullptr && map->width.number() > 0 && map->height.number() > 0;
}

// About a millimetre: more digits would only say how numbers are stored.
double rounded(double degrees) { return std::round(degrees * 1e8) / 1e8; }

Value positionOf(TernCoordinate degrees) {
  return Value::list({rounded(degrees.x), rounded(degrees.y)});
}

Value propertiesOf(const GeoFeature& feature) {
  const auto shown = words::floorOf(feature.venue, feature.mapId);
  const std::string building(shown.building != nullptr ? shown.building->name.text() : "");
  Value properties = Value::map({{"kind", feature.kind}});
  if (!feature.name.empty()) properties.set("name", feature.name);
  properties.set("floor", words::floorName(feature.venue, feature.mapId).floor);
  properties.set("mapId", feature.mapId);
  properties.set("building", building.empty() ? Value(nullptr) : Value(building));
  const auto& metres = feature.metres;
  properties.set("metres", metres ? Value(std::round(*metres * 1000) / 1000) : Value(nullptr));
  return properties;
}

}  // namespace

void GeoFeatures::add(const GeoFeature& feature, std::span<const TernCoordinate> points) {
  if (objection_ || points.empty()) return;
  if (!isPlaced(feature.venue)) {
    objection_ = "the venue does not say where on the globe it lies";
    return;
  }
  Value positions = Value::list();
  for (const TernCoordinate& point : points) {
    const auto degrees = TernUtils::convertToLatLongWithLocalCoordinates(point, &feature.venue);
    // Also where one of the numbers is none.
    if (!isOnGlobe(degrees)) {
      objection_ = "the venue has a point that would not lie on the globe";
      return;
    }
    positions.append(positionOf(degrees));
  }
  const bool isPoint = points.size() == 1;
  Value geometry = Value::map({{"type", isPoint ? "Point" : "LineString"}});
  geometry.set("coordinates", isPoint ? positions.items()[0] : std::move(positions));
  Value whole = Value::map({{"type", "Feature"}});
  whole.set("geometry", std::move(geometry));
  whole.set("properties", propertiesOf(feature));
  features_.append(std::move(whole));
}

Value GeoFeatures::collection() const {
  return Value::map({{"type", "FeatureCollection"}, {"features", features_}});
}

}  // namespace tern::command
