#include "tools/import/imdf/ImdfFiles.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ImdfFolder : public testing::Test {
 protected:
  ImdfFiles files() { return {openSource(folder.path()).files, told}; }

  bool isFound() { return ImdfFiles::areIn(openSource(folder.path()).files); }

  std::vector<std::string> idsTold() const {
    std::vector<std::string> ids;
    for (const Oddity& oddity : told.told()) ids.push_back(oddity.id);
    return ids;
  }

  static std::string collection(const std::string& features) {
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
  }

  test::TemporaryFolder folder;
  Oddities told;
};

TEST_F(ImdfFolder, isKnownByFeaturesThatSayTheirType) {
  EXPECT_FALSE(isFound());
  folder.write("unit.geojson", collection(R"({"properties":{}})"));
  EXPECT_FALSE(isFound());
  folder.write("below/level.geojson", collection(R"({"feature_type":"level","properties":{}})"));
  EXPECT_TRUE(isFound());
}

TEST_F(ImdfFolder, featuresAreListedByType) {
  folder.write("unit.geojson",
               collection(R"({"id":"a","feature_type":"unit","properties":{"category":"room"}},
                             {"id":"b","feature_type":"level","properties":{}})"));
  folder.write("kiosk.json", collection(R"({"id":"c","properties":{}})"));
  ImdfFiles read = files();
  ASSERT_EQ(read.of("unit").size(), 1U);
  EXPECT_EQ(read.of("unit").front().text("category"), "room");
  EXPECT_EQ(read.of("level").size(), 1U);
  EXPECT_EQ(read.of("kiosk").size(), 1U) << "by the name of its file";
  EXPECT_TRUE(read.of("venue").empty());
  EXPECT_THAT(idsTold(), IsEmpty());
}

TEST_F(ImdfFolder, labelsComeInAllTheirLanguages) {
  folder.write("unit.geojson", collection(R"({"id":"a","properties":{
      "name":{"en":"Hall","de":"Halle","fr":"","ja":null},"short_name":"H","alt_name":7}})"));
  ImdfFiles read = files();
  const ImdfFeature& unit = read.of("unit").front();
  ASSERT_EQ(unit.label("name").size(), 2U);
  EXPECT_EQ(unit.label("name")[1].language, "de");
  EXPECT_EQ(unit.label("name")[1].text, "Halle");
  ASSERT_EQ(unit.label("short_name").size(), 1U);
  EXPECT_EQ(unit.label("short_name")[0].language, "");
  EXPECT_TRUE(unit.label("alt_name").empty());
  EXPECT_TRUE(unit.label("none").empty());
}

TEST_F(ImdfFolder, manifestSaysTheLanguage) {
  folder.write("manifest.json", R"({"version":"1.0.0","language":"de-AT"})");
  EXPECT_EQ(files().language(), "de-AT");
  EXPECT_THAT(idsTold(), IsEmpty());
}

TEST_F(ImdfFolder, whatCannotBeReadIsToldAndTheRestCounts) {
  folder.write("opening.geojson", "{");
  folder.write("level.geojson", R"({"features":7})");
  folder.write("pond.geojson", collection(R"({"id":"p","feature_type":"pond"},{"id":"q"})"));
  folder.write("unit.geojson",
               collection(R"({"id":"a","properties":{}},{"id":"a","properties":{}},7,{})"));
  folder.write("notes.txt", "nothing");
  ImdfFiles read = files();
  EXPECT_EQ(read.of("unit").size(), 3U);
  EXPECT_EQ(read.of("unit")[1].id, "unit.geojson#3") << "one without an id is called by its place";
  EXPECT_THAT(idsTold(),
              ElementsAre("level.geojson", "opening.geojson", "pond.geojson", "a (again)"));
}

TEST_F(ImdfFolder, stampDiffersWithEveryChange) {
  folder.write("unit.geojson", collection(""));
  const auto before = files().stamp();
  EXPECT_EQ(files().stamp(), before);
  folder.write("unit.geojson", collection(" "));
  EXPECT_NE(files().stamp(), before);
}

}  // namespace
}  // namespace tern::imports
