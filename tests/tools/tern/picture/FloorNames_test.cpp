#include "tools/tern/picture/FloorNames.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {
namespace {

std::shared_ptr<TernWaypoint> waypointAt(std::int64_t map, Value coordinates) {
  return TernWaypoint::initWithDictionary(
      Value::map({{"id", map}, {"mapId", map}, {"coordinates", std::move(coordinates)}}));
}

std::string told(const std::vector<PlaceName>& names) {
  std::string text;
  for (const PlaceName& name : names) {
    text += std::string(name.name) + (name.destination ? "" : "*");
    for (const Point at : name.places) text += " " + decimal(at.x) + "," + decimal(at.y);
    text += "; ";
  }
  return text;
}

TEST(FloorNames, destinationsAreNamedWhereTheyAreReached) {
  PictureVenue venue{{.id = 1}, {.id = 2}};
  auto shops = std::make_shared<TernDestinationCollection>();
  shops->createBatch(Value::map({{"items", Value::list({Value::map({{"id", 7}, {"name", "Bakery"}}),
                                                        Value::map({{"id", 8}, {"name", ""}})})}}));
  for (TernDestination& shop : shops->each()) {
    shop.addWaypoints({waypointAt(1, Value::list({10, 20})), waypointAt(1, Value::list({30, 20})),
                       waypointAt(2, Value::list({5, 5})), waypointAt(2, Value::list({"a"}))});
  }
  venue.destinations = shops;
  const FloorNames names(venue, nullptr);
  EXPECT_EQ(told(names.on(1)), "Bakery 10,20 30,20; ");
  EXPECT_EQ(told(names.on(2)), "Bakery 5,5; ");
  EXPECT_EQ(told(names.on(3)), "");
}

TEST(FloorNames, labelsStandWhereTheyArePlaced) {
  const PictureVenue venue{{.id = 1}, {.id = 2}};
  const auto instance = [](int id, Value map, bool all) {
    return Value::map({{"id", id},
                       {"mapId", std::move(map)},
                       {"allLevels", all},
                       {"position", Value::list({id, 9})}});
  };
  Value own = instance(3, 2, false);
  own.set("name", "East Hall");
  TernMapLabelCollection labels;
  labels.createBatch(Value::map(
      {{"items",
        Value::list(
            {Value::map({{"id", 1},
                         {"name", "Hall"},
                         {"mapLabelInstances",
                          Value::map({{"items", Value::list({instance(1, 1, false),
                                                             instance(2, nullptr, true),
                                                             std::move(own)})}})}}),
             Value::map({{"id", 2},
                         {"name", "Logo"},
                         {"svg", "<svg/>"},
                         {"mapLabelInstances",
                          Value::map({{"items", Value::list({instance(4, 1, false)})}})}})})}}));
  const FloorNames names(venue, &labels);
  EXPECT_EQ(told(names.on(1)), "Hall* 1,9; Hall* 2,9; ");
  EXPECT_EQ(told(names.on(2)), "Hall* 2,9; East Hall* 3,9; ");
}

}  // namespace
}  // namespace tern::picture
