#include "tools/import/osm/OsmXml.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/import/osm/OsmFile.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

OsmData dataOf(const std::string& records) {
  OsmBudget budget(mostOsmBytes);
  OsmGatherer gatherer(budget);
  EXPECT_EQ(readOsmXml("<osm version='0.6'>" + records + "</osm>", gatherer), std::nullopt);
  return gatherer.take();
}

std::string errorOf(const std::string& text) {
  OsmBudget budget(mostOsmBytes);
  OsmGatherer gatherer(budget);
  return readOsmXml(text, gatherer).value_or("none");
}

TEST(OsmXml, whatAnEditorDeletedIsNotThere) {
  const OsmData data = dataOf(
      "<node id='-1' action='delete' visible='true' lat='1' lon='2'/>"
      "<node id='-2' action='modify' visible='true' lat='1' lon='2'/>"
      "<way id='-3' action='delete'><nd ref='-2' lat='1' lon='2'/></way>"
      "<relation id='-4' action='delete'><member type='way' ref='-3' role=''/></relation>");
  ASSERT_THAT(data.nodes, SizeIs(1));
  EXPECT_EQ(data.nodes[0].id, -2);
  EXPECT_THAT(data.ways, IsEmpty());
  EXPECT_THAT(data.relations, IsEmpty());
  EXPECT_THAT(data.placed.nodes, IsEmpty());
}

TEST(OsmXml, aWayMaySayWhereItsNodesLie) {
  const OsmData data = dataOf(
      "<way id='5'><bounds minlat='1' minlon='2' maxlat='3' maxlon='4'/>"
      "<nd ref='1' lat='1' lon='2'/><nd ref='2'/><tag k='indoor' v='room'/></way>");
  ASSERT_THAT(data.ways, SizeIs(1));
  EXPECT_THAT(data.ways[0].refs, ElementsAre(1, 2));
  ASSERT_THAT(data.placed.nodes, SizeIs(1));
  EXPECT_EQ(data.placed.nodes[0].id, 1);
  EXPECT_EQ(data.placed.nodes[0].at, (LonLat{2, 1}));
}

TEST(OsmXml, aRelationMaySayWhereItsWaysLead) {
  const OsmData data = dataOf(
      "<relation id='6'><member type='way' ref='5' role='outer'><nd lat='1' lon='2'/><nd/>"
      "<nd lat='3' lon='4'/></member><member type='node' ref='1' role='' lat='1' lon='2'/>"
      "<tag k='type' v='multipolygon'/></relation>");
  ASSERT_THAT(data.relations, SizeIs(1));
  EXPECT_THAT(data.relations[0].members, SizeIs(2));
  ASSERT_THAT(data.placed.ways, SizeIs(1));
  EXPECT_EQ(data.placed.ways[0].id, 5);
  EXPECT_THAT(data.placed.ways[0].line, ElementsAre(LonLat{2, 1}, LonLat{4, 3}));
}

TEST(OsmXml, elementsOfOtherNamesArePassedOver) {
  const OsmData data = dataOf(
      "<note>Open data.</note><meta osm_base='2024-01-01T00:00:00Z'/><bounds/>"
      "<way id='5'><center lat='1' lon='2'/><nd ref='1'/></way><remark>timed out</remark>");
  ASSERT_THAT(data.ways, SizeIs(1));
  EXPECT_THAT(data.ways[0].refs, ElementsAre(1));
}

TEST(OsmXml, whatIsWrongIsSaidWithItsLine) {
  EXPECT_THAT(errorOf("<osm version='0.6'>\n<node id='x'/></osm>"), HasSubstr("line 2"));
  EXPECT_THAT(errorOf("<osm version='0.6'>\n\n<node>"), HasSubstr("line 3"));
  EXPECT_THAT(errorOf("<osmChange version='0.6'/>"), HasSubstr("osmChange"));
}

}  // namespace
}  // namespace tern::imports
