// A small venue with drawings and routes over it, written out by hand.
//
//   const PictureVenue venue{{.id = 1}, {.id = 2, .level = 1}};
//   const TernRoute route = {segment(1, {{10, 10}, {60, 10}}, 50), segment(2, {{60, 10}}, 51)};
//
// Ownership: plain values. Threads: any.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "tests/support/ScannedMarkup.hpp"

namespace tern::picture {

struct PictureFloor {
  std::int64_t id = 1;
  std::string name = "Ground floor";
  Value level = 0;
  Value svg =
      "<svg viewBox=\"0 0 400 300\"><rect width=\"400\" height=\"300\" fill=\"#eee\"/></svg>";
  Value mmPerPixel = 1000;
  std::int64_t building = 1;
};

inline Value floorDocument(const PictureFloor& floor) {
  Value map = Value::map({{"id", floor.id}, {"svg", floor.svg}});
  if (!floor.mmPerPixel.isAbsent()) map.set("mmPerPixel", floor.mmPerPixel);
  return Value::map({{"id", floor.id + 100},
                     {"name", std::string_view(floor.name)},
                     {"level", floor.level},
                     {"map", std::move(map)}});
}

// The floors in buildings, as the service sends them.
inline Value buildingDocuments(const std::vector<PictureFloor>& floors) {
  std::vector<std::pair<std::int64_t, Value>> buildings;
  for (const PictureFloor& floor : floors) {
    if (buildings.empty() || buildings.back().first != floor.building) {
      buildings.emplace_back(floor.building, Value::list());
    }
    buildings.back().second.append(floorDocument(floor));
  }
  Value items = Value::list();
  for (auto& [id, list] : buildings) {
    items.append(Value::map({{"id", id},
                             {"name", std::string_view("House " + std::to_string(id))},
                             {"floors", Value::map({{"items", std::move(list)}})}}));
  }
  return Value::map({{"items", std::move(items)}});
}

// The floors in their buildings, which are called "House 1" and so on.
struct PictureVenue : TernVenueData {
  PictureVenue(std::initializer_list<PictureFloor> floors)
      : PictureVenue(std::vector<PictureFloor>(floors)) {}
  explicit PictureVenue(const std::vector<PictureFloor>& floors) {
    auto collection = std::make_shared<TernBuildingCollection>();
    collection->createBatch(buildingDocuments(floors));
    maps = std::make_shared<TernMapCollection>();
    for (const auto& floor : collection->getAllFloors()) {
      maps->addMapToCollection(floor->map.record());
    }
    buildings = std::move(collection);
  }
};

inline std::shared_ptr<TernPathType> pathType(const char* name) {
  return TernPathType::initWithDictionary(Value::map({{"id", 2}, {"name", name}}));
}

inline TernPathPerFloor segment(std::int64_t mapId,
                                const std::vector<std::pair<float, float>>& points,
                                float accumulatedDistance,
                                std::shared_ptr<TernPathType> mover = nullptr) {
  TernPathPerFloor segment;
  segment.mapId = mapId;
  segment.mover = std::move(mover);
  segment.pixelDistance = accumulatedDistance;
  for (const auto& [x, y] : points) {
    segment.mapPoints.push_back(TernPoint{x, y, static_cast<float>(mapId)});
  }
  return segment;
}

inline TernRoute threeSegments() {
  return {segment(1, {{10, 10}, {60, 10}}, 50, pathType("Lift")),
          segment(2, {{60, 10}, {60, 40}}, 81, pathType("Stairs")),
          segment(1, {{60, 50}, {20, 50}}, 122)};
}

// What stands in a picture's file, which is checked to be whole and safe.
inline test::ScannedMarkup scanned(std::string_view file) {
  test::ScannedMarkup markup = test::scanMarkup(file);
  EXPECT_EQ(markup.problem, "");
  EXPECT_EQ(test::reachOf(markup), "");
  return markup;
}

// The drawing that an image's address holds.
inline std::string drawingIn(std::string_view uri) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string drawing;
  std::uint32_t bits = 0;
  int count = 0;
  for (char letter : uri.substr(uri.find(',') + 1)) {
    if (letter == '=') break;
    bits = bits << 6U | static_cast<std::uint32_t>(digits.find(letter));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    drawing += static_cast<char>(bits >> count & 0xFFU);
  }
  return drawing;
}

inline bool has(const test::ScannedMarkup& markup, std::string_view text) {
  return markup.text.find(text) != std::string::npos;
}

}  // namespace tern::picture
