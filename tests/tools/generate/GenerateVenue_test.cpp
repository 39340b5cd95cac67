#include "tools/generate/GenerateVenue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/Paths.hpp"
#include "tests/tools/generate/GeneratedVenue.hpp"

namespace tern::generate {
namespace {

using testing::ElementsAre;
using testing::Optional;
using testing::StartsWith;

std::string contentsOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A folder of this test's own that is gone afterwards.
struct OwnFolder {
  OwnFolder()
      : path(std::filesystem::path(testing::TempDir()) /
             (std::string("generate_") +
              testing::UnitTest::GetInstance()->current_test_info()->name())) {
    std::filesystem::remove_all(path);
  }
  ~OwnFolder() { std::filesystem::remove_all(path); }

  std::filesystem::path path;
};

TEST(GenerateVenue, writesTheFilesOfAVenueFolder) {
  std::vector<std::string> paths;
  for (const auto& [path, text] : generatedTexts(GenerateOptions{})) paths.push_back(path);
  EXPECT_THAT(paths, ElementsAre("full.json", "locale/full.json", "map-template/default/full.json",
                                 "venue/1/building/1/full.json", "venue/1/building/2/full.json",
                                 "venue/1/destinations.json", "venue/1/full.json"));
}

TEST(GenerateVenue, sameOptionsGiveTheSameBytes) {
  GenerateOptions options;
  options.seed = 77;
  options.shops = 150;
  EXPECT_EQ(generatedTexts(options), generatedTexts(options));
}

TEST(GenerateVenue, anotherSeedGivesAnotherVenue) {
  GenerateOptions options;
  const Texts first = generatedTexts(options);
  options.seed = 2;
  const Texts second = generatedTexts(options);
  for (const char* path : {"venue/1/full.json", "venue/1/building/1/full.json"}) {
    EXPECT_NE(first.at(path), second.at(path)) << path;
  }
}

TEST(GenerateVenue, idsOfCustomerAndVenueGoIntoPathsAndRecords) {
  GenerateOptions options;
  options.customer = 4711;
  options.venue = 12;
  const GeneratedVenue generated(options);
  EXPECT_EQ(generated.documents.at("full.json")["id"].integer(), 4711);
  EXPECT_EQ((*generated.venue)["id"].integer(), 12);
  EXPECT_EQ((*generated.buildings.at(0))["venueId"].integer(), 12);
}

TEST(GenerateVenue, sizeFollowsTheOptions) {
  GenerateOptions options;
  const std::size_t usual = GeneratedVenue(options).waypoints.size();
  options.shops = 800;
  const std::size_t manyShops = GeneratedVenue(options).waypoints.size();
  EXPECT_GT(manyShops, 4 * usual);
  options.spacing = 1;
  EXPECT_GT(GeneratedVenue(options).waypoints.size(), manyShops * 3 / 2);
}

// The sample is a generated venue; when this fails, generate it again.
TEST(GenerateVenue, sampleVenueIsWhatTheGeneratorMakes) {
  GenerateOptions options;
  options.seed = 30;
  const std::filesystem::path sample = test::samplePath();
  for (const auto& [path, text] : generatedTexts(options)) {
    EXPECT_TRUE(contentsOf(sample / path) == text) << path << " differs from what is generated";
  }
}

TEST(GenerateVenue, writesBelowAFolderThatIsMissing) {
  const OwnFolder folder;
  ASSERT_EQ(generateVenueFolder(GenerateOptions{}, folder.path / "deep/venue"), std::nullopt);
  const Texts texts = generatedTexts(GenerateOptions{});
  for (const auto& [path, text] : texts) {
    EXPECT_EQ(contentsOf(folder.path / "deep/venue" / path), text) << path;
  }
}

TEST(GenerateVenue, joinedVenuesHaveIdsOfTheirOwnAndExitsThatNameEachOther) {
  GenerateOptions options;
  options.venues = 4;
  options.venue = 5;
  std::map<std::int64_t, Value> waypoints;
  std::map<std::int64_t, std::int64_t> venueOf;
  for (auto& [path, text] : generatedTexts(options)) {
    if (path.find("/building/") == std::string::npos) continue;
    const Value building = decodeJson(std::move(text)).value;
    for (const Value& floor : building["floors"]["items"].items()) {
      for (const Value& waypoint : floor["map"]["waypoints"]["items"].items()) {
        const std::int64_t id = waypoint["id"].integer();
        EXPECT_TRUE(waypoints.emplace(id, waypoint).second) << id;
        venueOf[id] = building["venueId"].integer();
      }
    }
  }
  int exits = 0;
  for (const auto& [id, waypoint] : waypoints) {
    const double longitude = waypoint["coordinates"].items()[0].number();
    const double latitude = waypoint["coordinates"].items()[1].number();
    EXPECT_TRUE(std::abs(longitude) < 180 && std::abs(latitude) < 90);
    const std::string link(waypoint["externalId"].text());
    const std::size_t colon = link.find(':');
    if (colon == std::string::npos) continue;
    ++exits;
    const std::int64_t partner = std::stoll(link.substr(colon + 1));
    EXPECT_EQ(venueOf.at(partner), std::stoll(link));
    EXPECT_EQ(std::abs(venueOf.at(partner) - venueOf.at(id)), 1);
    EXPECT_EQ(waypoints.at(partner)["externalId"].text(),
              std::to_string(venueOf.at(id)) + ":" + std::to_string(id));
  }
  EXPECT_EQ(exits, 6) << "two between each pair of neighbours";
}

TEST(GenerateVenue, fileInTheWayIsNamed) {
  const OwnFolder folder;
  std::filesystem::create_directories(folder.path);
  std::ofstream(folder.path / "locale") << "a file";
  EXPECT_THAT(generateVenueFolder(GenerateOptions{}, folder.path),
              Optional(testing::HasSubstr((folder.path / "locale").string())));
}

TEST(GenerateVenue, folderInPlaceOfAFileIsNamed) {
  const OwnFolder folder;
  std::filesystem::create_directories(folder.path / "full.json");
  EXPECT_THAT(generateVenueFolder(GenerateOptions{}, folder.path),
              Optional("cannot write " + (folder.path / "full.json").string()));
}

TEST(GenerateVenue, optionOutOfRangeWritesNothing) {
  const OwnFolder folder;
  GenerateOptions options;
  options.floors = 41;
  EXPECT_THAT(generateVenueFolder(options, folder.path), Optional(StartsWith("--floors: 41")));
  EXPECT_FALSE(std::filesystem::exists(folder.path));
}

TEST(GenerateVenue, receiversErrorEndsTheGeneration) {
  int documents = 0;
  const auto error = generateVenue(GenerateOptions{}, [&](const std::string&, const std::string&) {
    ++documents;
    return documents == 3 ? std::optional<std::string>("disk full") : std::nullopt;
  });
  EXPECT_THAT(error, Optional(std::string("disk full")));
  EXPECT_EQ(documents, 3);
}

}  // namespace
}  // namespace tern::generate
