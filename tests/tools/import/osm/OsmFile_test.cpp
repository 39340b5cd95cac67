#include "tools/import/osm/OsmFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/import/osm/DrawnOsm.hpp"
#include "tests/tools/import/osm/WrittenPbf.hpp"

namespace tern::imports {
namespace {

using test::pbfBlob;
using test::pbfBlock;
using test::pbfHeader;
using testing::ElementsAre;
using testing::HasSubstr;

const std::vector<std::string> texts{"", "indoor", "room"};

std::string smallPbf() { return pbfHeader() + pbfBlob({.data = pbfBlock(texts, 3, {1, 2})}); }

std::string errorOf(const std::string& bytes, OsmEncoding encoding,
                    std::size_t mostBytes = mostOsmBytes) {
  const ReadOsmFile read = readOsmFile(bytes, encoding, mostBytes);
  EXPECT_TRUE(read.data.nodes.empty() && read.data.ways.empty());
  return read.error.value_or("none");
}

TEST(OsmFile, readsXml) {
  test::DrawnOsm drawn;
  drawn.line(5, {{0, 0}, {30, 0}}, {{"highway", "footway"}, {"name", "Gang &amp; Weg"}});
  drawn.relation(6, {{5, "outer"}}, {{"type", "multipolygon"}});
  const ReadOsmFile read = readOsmFile(drawn.xml(), OsmEncoding::xml);
  ASSERT_EQ(read.error, std::nullopt);
  ASSERT_EQ(read.data.nodes.size(), 2U);
  EXPECT_NEAR(read.data.nodes[0].at.longitude, 139.5, 1e-6);
  ASSERT_EQ(read.data.ways.size(), 1U);
  EXPECT_THAT(read.data.ways[0].refs, ElementsAre(1000, 1001));
  EXPECT_EQ(read.data.ways[0].tags["name"], "Gang & Weg");
  ASSERT_EQ(read.data.relations.size(), 1U);
  EXPECT_EQ(read.data.relations[0].members[0].role, "outer");
}

TEST(OsmFile, readsProtocolBuffers) {
  const ReadOsmFile read = readOsmFile(smallPbf(), OsmEncoding::pbf);
  ASSERT_EQ(read.error, std::nullopt);
  ASSERT_EQ(read.data.nodes.size(), 3U);
  EXPECT_NEAR(read.data.nodes[2].at.latitude, 0.003, 1e-9);
  ASSERT_EQ(read.data.ways.size(), 1U);
  EXPECT_THAT(read.data.ways[0].refs, ElementsAre(1, 2, 3));
  EXPECT_EQ(read.data.ways[0].tags["indoor"], "room");
}

TEST(OsmFile, deletedRecordsAreNotThere) {
  const ReadOsmFile read = readOsmFile(
      "<osm version='0.6'><node id='1' version='2' visible='false' lat='1' lon='1'/>"
      "<node id='2' version='1' lat='1' lon='1'/></osm>",
      OsmEncoding::xml);
  ASSERT_EQ(read.data.nodes.size(), 1U);
  EXPECT_EQ(read.data.nodes[0].id, 2);
}

TEST(OsmFile, nodesOffTheGlobeAreNotThere) {
  const ReadOsmFile read = readOsmFile(
      "<osm version='0.6'><node id='1' version='1' lat='91' lon='1'/>"
      "<node id='2' version='1'/></osm>",
      OsmEncoding::xml);
  EXPECT_EQ(read.error, std::nullopt);
  EXPECT_TRUE(read.data.nodes.empty());
}

TEST(OsmFile, coordinatesWithoutSenseAreAnError) {
  EXPECT_NE(
      errorOf("<osm version='0.6'><node id='1' lat='1e300' lon='x'/></osm>", OsmEncoding::xml),
      "none");
}

TEST(OsmFile, entitiesAreRefused) {
  EXPECT_THAT(errorOf("<?xml version='1.0'?><!DOCTYPE osm [<!ENTITY a 'aaaa'>"
                      "<!ENTITY b '&a;&a;&a;&a;'>]><osm version='0.6'>"
                      "<node id='1' lat='1' lon='1'><tag k='name' v='&b;'/></node></osm>",
                      OsmEncoding::xml),
              HasSubstr("entities"));
}

TEST(OsmFile, brokenXmlIsAnError) {
  for (const char* const text : {"", "<osm", "<html/>", "<osm version='0.5'/>",
                                 "<osm version='0.6'><node id='x'/></osm>", "\xFF\xFE\x01"}) {
    EXPECT_NE(errorOf(text, OsmEncoding::xml), "none") << text;
  }
}

TEST(OsmFile, cutOffAnywhereItIsReadOrAnError) {
  const std::string whole = smallPbf();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const ReadOsmFile read = readOsmFile(whole.substr(0, size), OsmEncoding::pbf);
    EXPECT_TRUE(read.data.ways.empty()) << size;
  }
}

TEST(OsmFile, xmlThatTakesTooMuchIsRefused) {
  test::DrawnOsm drawn;
  for (int i = 0; i < 100; ++i) drawn.point({i * 1.0, 0});
  EXPECT_THAT(errorOf(drawn.xml(), OsmEncoding::xml, 10'000), HasSubstr("cut the building out"));
  EXPECT_EQ(readOsmFile(drawn.xml(), OsmEncoding::xml, 20'000).error, std::nullopt);
}

}  // namespace
}  // namespace tern::imports
