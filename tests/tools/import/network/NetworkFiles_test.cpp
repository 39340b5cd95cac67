#include "tools/import/network/NetworkFiles.hpp"

#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

constexpr std::string_view node =
    R"({"features":[{"properties":{"node_id":"a"},"geometry":{"type":"Point","coordinates":[1,2]}}]})";

struct Read {
  explicit Read(const test::TemporaryFolder& folder)
      : files(openSource(folder.path()).files, told) {}
  Oddities told;
  NetworkFiles files;
};

TEST(NetworkFiles, areKnownByTheirNodesOrLinks) {
  const test::TemporaryFolder folder;
  folder.write("Floor.geojson", R"({"features":[]})");
  EXPECT_FALSE(NetworkFiles::areIn(openSource(folder.path()).files));
  folder.write("anything.geojson", node);
  EXPECT_TRUE(NetworkFiles::areIn(openSource(folder.path()).files));
}

TEST(NetworkFiles, areKnownByKeysInCapitals) {
  const test::TemporaryFolder folder;
  folder.write("a.geojson", R"({"features":[{"properties":{"LINK_ID":"a"}}]})");
  EXPECT_TRUE(NetworkFiles::areIn(openSource(folder.path()).files));
}

TEST(NetworkFiles, partsOfASiteAreOneList) {
  const test::TemporaryFolder folder;
  folder.write("east/node.geojson", node);
  folder.write("west/West_1_Node.geojson", node);
  Read read(folder);
  EXPECT_EQ(read.files.of(RecordKind::node).size(), 2U);
  EXPECT_EQ(read.files.of(RecordKind::node)[0].id, "a");
}

TEST(NetworkFiles, plansAreKnownByTheEndOfTheirName) {
  const test::TemporaryFolder folder;
  constexpr std::string_view one = R"({"features":[{"properties":{"id":"x"}}]})";
  folder.write("A_1_Floor.geojson", one);
  folder.write("A_1_SPACE.geojson", one);
  folder.write("drawing.geojson", one);
  folder.write("A_1_Floor_Connect.geojson", one);
  Read read(folder);
  EXPECT_EQ(read.files.of(RecordKind::floor).size(), 1U);
  EXPECT_EQ(read.files.of(RecordKind::space).size(), 1U);
  EXPECT_EQ(read.files.of(RecordKind::drawing).size(), 1U);
  EXPECT_EQ(read.files.of(RecordKind::other).size(), 1U);
  EXPECT_TRUE(read.files.of(RecordKind::node).empty());
}

TEST(NetworkFiles, recordWithoutAnIdIsCalledByItsPlace) {
  const test::TemporaryFolder folder;
  folder.write("A_Space.geojson", R"({"features":[{"properties":{"id":null}},{"properties":{}}]})");
  Read read(folder);
  EXPECT_EQ(read.files.of(RecordKind::space)[1].id, "A_Space.geojson#2");
}

TEST(NetworkFiles, fileThatCannotBeReadIsToldOfAndTheOthersCount) {
  const test::TemporaryFolder folder;
  folder.write("a.geojson", "{");
  folder.write("b.geojson", "[]");
  folder.write("c.geojson", R"({"crs":{"properties":{"name":"EPSG:1"}},"features":[]})");
  folder.write("node.geojson", node);
  Read read(folder);
  EXPECT_EQ(read.files.of(RecordKind::node).size(), 1U);
  ASSERT_EQ(read.told.told().size(), 3U);
  for (const Oddity& oddity : read.told.told()) EXPECT_EQ(oddity.kind, "unreadable");
}

TEST(NetworkFiles, featuresOfAnyFormAreTakenForWhatTheyAre) {
  const test::TemporaryFolder folder;
  folder.write(
      "node.geojson",
      R"({"features":[null,7,"x",[],{},{"properties":5},{"properties":{"node_id":3.5}}]})");
  Read read(folder);
  EXPECT_EQ(read.files.of(RecordKind::other).size(), 7U);
}

TEST(NetworkFiles, idsMayBeNumbersAndKeysInCapitals) {
  const test::TemporaryFolder folder;
  folder.write("a.geojson", R"({"features":[{"properties":{"node_id":12}},
      {"properties":{"NODE_ID":"n","LINK1_ID":7}},{"properties":{"LINK_ID":4,"START_ID":12}}]})");
  Read read(folder);
  const auto& nodes = read.files.of(RecordKind::node);
  ASSERT_EQ(nodes.size(), 2U);
  EXPECT_EQ(nodes[0].id, "12");
  EXPECT_EQ(nodes[1].id, "n");
  ASSERT_EQ(read.files.of(RecordKind::link).size(), 1U);
  EXPECT_EQ(read.files.of(RecordKind::link)[0].idOf("start_id"), "12");
}

TEST(NetworkFiles, stampChangesWithEveryFile) {
  const test::TemporaryFolder folder;
  folder.write("node.geojson", node);
  const std::uint64_t before = Read(folder).files.stamp();
  EXPECT_EQ(Read(folder).files.stamp(), before);
  folder.write("more.geojson", R"({"features":[]})");
  EXPECT_NE(Read(folder).files.stamp(), before);
}

}  // namespace
}  // namespace tern::imports
