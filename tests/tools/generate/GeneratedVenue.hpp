// A generated venue folder held in memory, for tests that read it as a loader would.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/generate/GenerateVenue.hpp"

namespace tern::generate {

using Texts = std::map<std::string, std::string>;

inline Texts generatedTexts(const GenerateOptions& options) {
  Texts texts;
  const auto error = generateVenue(options, [&](const std::string& path, std::string text) {
    EXPECT_TRUE(texts.emplace(path, std::move(text)).second) << path;
    return std::optional<std::string>();
  });
  EXPECT_EQ(error, std::nullopt);
  return texts;
}

struct GeneratedVenue {
  explicit GeneratedVenue(const GenerateOptions& options) {
    for (auto& [path, text] : generatedTexts(options)) {
      JsonResult read = decodeJson(std::move(text));
      EXPECT_EQ(read.error, std::nullopt) << path;
      documents[path] = std::move(read.value);
    }
    venue = &documents["venue/" + std::to_string(options.venue) + "/full.json"];
    for (const auto& [path, document] : documents) {
      if (path.find("/building/") == std::string::npos) continue;
      buildings.push_back(&document);
      for (const Value& floor : document["floors"]["items"].items()) addFloor(floor);
    }
  }

  void addFloor(const Value& floor) {
    floors.push_back(&floor);
    for (const Value& waypoint : floor["map"]["waypoints"]["items"].items()) {
      EXPECT_TRUE(waypoints.emplace(waypoint["id"].integer(), &waypoint).second)
          << waypoint["id"].integer();
    }
    for (const Value& path : floor["map"]["paths"]["items"].items()) {
      EXPECT_TRUE(paths.emplace(path["id"].integer(), &path).second) << path["id"].integer();
    }
  }

  std::map<std::string, Value> documents;
  const Value* venue = nullptr;
  std::vector<const Value*> buildings;
  std::vector<const Value*> floors;
  std::map<std::int64_t, const Value*> waypoints;
  std::map<std::int64_t, const Value*> paths;
};

}  // namespace tern::generate
