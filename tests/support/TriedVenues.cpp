#include "tests/support/TriedVenues.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <utility>

#include "tests/support/Paths.hpp"
#include "tests/support/RealData.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/generate/GenerateVenue.hpp"
#include "tools/tern/VenueFolder.hpp"

#ifdef TERN_WITH_IMPORT
#include "tools/import/Import.hpp"
#endif

namespace tern::test {

namespace {

namespace fs = std::filesystem;
using Venue = std::shared_ptr<TernActiveVenue>;

Venue loaded(const fs::path& folder) {
  auto result = command::loadVenue(folder, std::nullopt, std::nullopt);
  EXPECT_EQ(result.index(), 0U) << folder;
  return result.index() == 0 ? std::get<0>(std::move(result)) : nullptr;
}

Venue generatedMall() {
  const TemporaryFolder folder;
  EXPECT_EQ(generate::generateVenueFolder({}, folder.at("mall")), std::nullopt);
  return loaded(folder.at("mall"));
}

#ifdef TERN_WITH_IMPORT

struct RealBuilding {
  const char* source;
  const char* station;
};

const std::map<std::string, RealBuilding>& realBuildings() {
  static const std::map<std::string, RealBuilding> all = {
      {"airport", {"network/NaritaAirport", ""}},
      {"campus", {"imdf/campus", ""}},
      {"fireStation", {"osm/fire-station.osm", ""}},
      {"railwayStation", {"network/ShinyokohamaStation", ""}},
      {"subwayStation", {"gtfs/boston", "place-pktrm"}},
      {"undergroundMall", {"network/NagoyaUnimall", ""}}};
  return all;
}

Venue imported(const RealBuilding& building) {
  const auto data = realData();
  if (!data || !fs::exists(*data / building.source)) return nullptr;
  const TemporaryFolder folder;
  imports::ImportWishes wishes;
  wishes.stations.station = building.station;
  const auto made = imports::importSource(*data / building.source, folder.at("out"), wishes);
  EXPECT_FALSE(made.failure) << building.source;
  return made.failure ? nullptr : loaded(folder.at("out"));
}

#endif

Venue made(const std::string& name) {
  if (name == "sample") return loaded(samplePath());
  if (name == "generatedMall") return generatedMall();
#ifdef TERN_WITH_IMPORT
  return imported(realBuildings().at(name));
#else
  return nullptr;
#endif
}

std::vector<std::string> namesOfAll() {
  std::vector<std::string> names{"sample", "generatedMall"};
#ifdef TERN_WITH_IMPORT
  for (const auto& [name, building] : realBuildings()) names.push_back(name);
#endif
  return names;
}

}  // namespace

const std::vector<std::string>& triedVenues() {
  static const std::vector<std::string> names = namesOfAll();
  return names;
}

Venue triedVenue(const std::string& name) {
  static std::map<std::string, Venue> venues;
  const auto [known, isNew] = venues.try_emplace(name);
  if (isNew) known->second = made(name);
  return known->second;
}

}  // namespace tern::test
