#include "tools/generate/Words.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

namespace tern::generate {
namespace {

TEST(GenerateWords, everyCategoryHasNounsAndKeywordsInAllLocales) {
  for (int i = 0; i < categoryCount; ++i) {
    const CategoryWords& words = wordsOf(static_cast<Category>(i));
    EXPECT_FALSE(words.nouns.empty()) << i;
    EXPECT_FALSE(words.keywords.empty()) << i;
    for (std::string_view name : words.name) EXPECT_FALSE(name.empty()) << i;
    for (const Phrase& noun : words.nouns) {
      for (std::string_view text : noun) EXPECT_FALSE(text.empty()) << i;
    }
  }
}

TEST(GenerateWords, everyAmenityIsNamedInAllLocales) {
  for (int i = 0; i < amenityCount; ++i) {
    for (std::string_view name : wordsOf(static_cast<Amenity>(i)).name) EXPECT_FALSE(name.empty());
  }
}

TEST(GenerateWords, brandWordsDiffer) {
  const std::set<std::string_view> words(brandWords().begin(), brandWords().end());
  EXPECT_EQ(words.size(), brandWords().size());
}

TEST(GenerateWords, buildingsAreToldApart) {
  std::set<std::string> names;
  std::set<std::string> letters;
  for (int i = 0; i < 100; ++i) {
    names.insert(buildingName(i));
    letters.insert(buildingLetter(i));
  }
  EXPECT_EQ(names.size(), 100U);
  EXPECT_EQ(letters.size(), 100U);
  EXPECT_EQ(buildingLetter(0), "A");
  EXPECT_EQ(buildingLetter(26), "A2");
}

TEST(GenerateWords, floorsAreNamedByLevel) {
  EXPECT_EQ(floorName(-1), "Lower Ground");
  EXPECT_EQ(floorName(0), "Ground Floor");
  EXPECT_EQ(floorName(1), "First Floor");
  EXPECT_EQ(floorName(10), "Tenth Floor");
  EXPECT_EQ(floorName(11), "Level 11");
  EXPECT_EQ(shortFloorName(-1), "LG");
  EXPECT_EQ(shortFloorName(0), "G");
  EXPECT_EQ(shortFloorName(12), "12");
}

TEST(GenerateWords, citiesLieOnTheGlobe) {
  for (const City& city : cities()) {
    EXPECT_LT(std::abs(city.latitudeE7), 600'000'000) << city.name;
    EXPECT_LT(std::abs(city.longitudeE7), 1'800'000'000) << city.name;
    EXPECT_GE(city.longitudeE9PerMetre, latitudeE9PerMetre) << city.name;
  }
}

}  // namespace
}  // namespace tern::generate
