#include "tools/import/write/FolderSwap.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

namespace fs = std::filesystem;

void writeVenue(FolderSwap& swap, std::string_view text) {
  ASSERT_EQ(swap.begin(), std::nullopt);
  ASSERT_EQ(swap.write("full.json", text), std::nullopt);
  ASSERT_EQ(swap.write("venue/1/full.json", text), std::nullopt);
}

bool isAlone(const fs::path& folder) {
  int entries = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder.parent_path())) ++entries;
  return entries == 1;
}

TEST(FolderSwap, nothingIsThereBeforeAllIs) {
  const test::TemporaryFolder folder;
  FolderSwap swap(folder.at("venue"));
  writeVenue(swap, "new");
  EXPECT_FALSE(fs::exists(folder.at("venue")));
  EXPECT_EQ(swap.commit(), std::nullopt);
  EXPECT_EQ(folder.read("venue/venue/1/full.json"), "new");
}

TEST(FolderSwap, oldFolderStaysUntilTheNewOneIsWhole) {
  const test::TemporaryFolder folder;
  folder.write("out/full.json", "old");
  folder.write("out/venue/7/full.json", "old");
  {
    FolderSwap given(folder.at("out"));
    writeVenue(given, "new");
  }
  EXPECT_EQ(folder.read("out/venue/7/full.json"), "old");
  EXPECT_TRUE(isAlone(folder.at("out")));
  {
    FolderSwap swap(folder.at("out"));
    writeVenue(swap, "new");
    EXPECT_EQ(swap.commit(), std::nullopt);
  }
  EXPECT_EQ(folder.read("out/full.json"), "new");
  EXPECT_FALSE(fs::exists(folder.at("out/venue/7")));
  EXPECT_TRUE(isAlone(folder.at("out")));
}

TEST(FolderSwap, onlyAVenueFolderIsReplaced) {
  const test::TemporaryFolder folder;
  folder.write("diary/monday.txt", "mine");
  folder.write("mixed/full.json", "");
  folder.write("mixed/venue/1/full.json", "");
  folder.write("mixed/notes.txt", "mine");
  folder.write("file", "mine");
  for (const char* name : {"diary", "mixed", "file"}) {
    EXPECT_NE(FolderSwap(folder.at(name)).begin(), std::nullopt) << name;
  }
  EXPECT_EQ(folder.read("diary/monday.txt"), "mine");
  EXPECT_EQ(folder.read("mixed/notes.txt"), "mine");
  fs::create_directory(folder.at("empty"));
  EXPECT_EQ(FolderSwap(folder.at("empty")).begin(), std::nullopt);
}

TEST(FolderSwap, whatAKilledRunLeftGoes) {
  const test::TemporaryFolder folder;
  folder.write(".out.importing/venue/1/full.json", "half");
  FolderSwap swap(folder.at("out"));
  writeVenue(swap, "new");
  EXPECT_EQ(swap.commit(), std::nullopt);
  EXPECT_TRUE(isAlone(folder.at("out")));
}

TEST(FolderSwap, runsInOnePlaceTakeTurns) {
  const test::TemporaryFolder folder;
  std::vector<std::thread> runs;
  for (const char* text : {"one", "two", "three"}) {
    runs.emplace_back([&folder, text] {
      FolderSwap swap(folder.at("out"));
      writeVenue(swap, text);
      EXPECT_EQ(swap.commit(), std::nullopt);
    });
  }
  for (std::thread& run : runs) run.join();
  EXPECT_EQ(folder.read("out/full.json"), folder.read("out/venue/1/full.json"));
  EXPECT_TRUE(isAlone(folder.at("out")));
}

TEST(FolderSwap, folderThatAKilledRunMovedAwayComesBack) {
  const test::TemporaryFolder folder;
  folder.write(".out.replaced/full.json", "old");
  folder.write(".out.replaced/venue/1/full.json", "old");
  EXPECT_EQ(FolderSwap(folder.at("out")).begin(), std::nullopt);
  EXPECT_EQ(folder.read("out/full.json"), "old");
  EXPECT_TRUE(isAlone(folder.at("out")));
}

TEST(FolderSwap, linkToAFolderStaysALink) {
  const test::TemporaryFolder folder;
  folder.write("real/full.json", "old");
  folder.write("real/venue/1/full.json", "old");
  fs::create_directory_symlink("real", folder.at("link"));
  FolderSwap swap(folder.at("link"));
  writeVenue(swap, "new");
  EXPECT_EQ(swap.commit(), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.at("link")));
  EXPECT_EQ(folder.read("real/full.json"), "new");
}

TEST(FolderSwap, fileThatCannotBeWrittenIsNamed) {
  const test::TemporaryFolder folder;
  folder.write("file", "");
  const auto error = FolderSwap(folder.at("file/out")).begin();
  ASSERT_TRUE(error);
  EXPECT_NE(error->find(folder.at("file")), std::string::npos);
}

}  // namespace
}  // namespace tern::imports
