#include "tools/import/source/ZipArchive.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <utility>

#include "tests/support/TemporaryFolder.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {
namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using Entries = std::vector<std::pair<std::string, std::string>>;

// Without compression where a test is to find the bytes again.
void makeZip(const std::string& file, const Entries& entries, bool isPacked = true) {
  zip* const archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  for (const auto& [name, text] : entries) {
    zip_source_t* const source = zip_source_buffer(archive, text.data(), text.size(), 0);
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, 0);
    if (!isPacked) {
      zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
    }
  }
  ASSERT_EQ(zip_close(archive), 0);
}

TEST(ZipArchive, filesOfAnArchiveAreASource) {
  const TemporaryFolder folder;
  makeZip(folder.at("feed.zip"), {{"b/stops.txt", "two"}, {"a.txt", "one"}, {"empty", ""}});
  const OpenedSource opened = openSource(folder.at("feed.zip"));
  ASSERT_EQ(opened.error, std::nullopt);
  EXPECT_EQ(opened.files.name(), "feed");
  EXPECT_THAT(opened.files.names(), ElementsAre("a.txt", "b/stops.txt", "empty"));
  EXPECT_EQ(opened.files.read("b/stops.txt").text, "two");
  EXPECT_EQ(opened.files.read("empty").text, "");
  EXPECT_THAT(*opened.files.read("gone").error, HasSubstr("not in the archive"));
}

TEST(ZipArchive, archiveIsKnownByItsFirstBytesToo) {
  const TemporaryFolder folder;
  makeZip(folder.at("feed"), {{"a.txt", "one"}});
  EXPECT_THAT(openSource(folder.at("feed")).files.names(), ElementsAre("a.txt"));
}

TEST(ZipArchive, namesThatLeadOutArePassedOver) {
  const TemporaryFolder folder;
  makeZip(folder.at("feed.zip"), {{"../up.txt", "x"},
                                  {"a/../../up.txt", "x"},
                                  {"/root.txt", "x"},
                                  {"C:drive.txt", "x"},
                                  {"a\\b.txt", "x"},
                                  {"__MACOSX/._a.txt", "x"},
                                  {"..txt", "fine"},
                                  {"a/..b/c.txt", "fine"}});
  const OpenedSource opened = openSource(folder.at("feed.zip"));
  EXPECT_THAT(opened.files.names(), ElementsAre("..txt", "a/..b/c.txt"));
  EXPECT_TRUE(opened.files.read("../up.txt").error);
}

TEST(ZipArchive, bombIsNotUnpacked) {
  const TemporaryFolder folder;
  makeZip(folder.at("bomb.zip"), {{"stops.txt", std::string(std::size_t{8} << 20U, '0')}});
  EXPECT_THAT(*openSource(folder.at("bomb.zip")).error, HasSubstr("more than 200 times its size"));
}

TEST(ZipArchive, manySmallBombsAreABomb) {
  const TemporaryFolder folder;
  Entries entries;
  for (int i = 0; i < 20; ++i) {
    entries.emplace_back(std::to_string(i), std::string(std::size_t{1} << 20U, '0'));
  }
  makeZip(folder.at("bomb.zip"), entries);
  EXPECT_THAT(*openSource(folder.at("bomb.zip")).error, HasSubstr("more than 200 times its size"));
}

// The second entry says that it has the bytes of the first.
TEST(ZipArchive, entriesThatLieOverOneAnotherAreNotRead) {
  const TemporaryFolder folder;
  makeZip(folder.at("lapped.zip"), {{"a.txt", std::string(5'000, 'a')}, {"b.txt", "b"}}, false);
  std::string bytes = folder.read("lapped.zip");
  const std::size_t first = bytes.find("PK\1\2");
  const std::size_t second = bytes.rfind("PK\1\2");
  bytes.replace(second + 16, 12, bytes.substr(first + 16, 12));
  bytes.replace(second + 42, 4, bytes.substr(first + 42, 4));
  folder.write("lapped.zip", bytes);
  EXPECT_THAT(*openSource(folder.at("lapped.zip")).error, HasSubstr("longer than it"));
}

// The size in the directory says 100 bytes; what is unpacked is counted nevertheless.
TEST(ZipArchive, bombThatLiesOfItsSizeIsNotUnpackedEither) {
  const TemporaryFolder folder;
  makeZip(folder.at("bomb.zip"), {{"stops.txt", std::string(std::size_t{8} << 20U, '0')}});
  std::string bytes = folder.read("bomb.zip");
  const std::size_t directory = bytes.rfind("PK\1\2");
  for (const std::size_t at : {directory + 24, std::size_t{22}}) {
    bytes.replace(at, 4, std::string("\x64\0\0\0", 4));
  }
  folder.write("bomb.zip", bytes);
  const OpenedSource opened = openSource(folder.at("bomb.zip"));
  const ReadFile read = opened.files.read("stops.txt");
  EXPECT_TRUE(read.error);
  EXPECT_EQ(read.text, "");
}

TEST(ZipArchive, entriesAreCountedBeforeTheyAreRead) {
  const TemporaryFolder folder;
  makeZip(folder.at("many.zip"), {{"a.txt", "one"}});
  std::string bytes = folder.read("many.zip");
  const std::size_t end = bytes.rfind("PK\5\6");
  bytes.replace(end + 8, 4, "\x30\x75\x30\x75");
  folder.write("many.zip", bytes);
  EXPECT_THAT(*openSource(folder.at("many.zip")).error, HasSubstr("more than 10000 files"));
}

TEST(ZipArchive, encryptedFileIsSaidToBe) {
  const TemporaryFolder folder;
  makeZip(folder.at("locked.zip"), {{"a.txt", "twelve bytes and more"}}, false);
  std::string bytes = folder.read("locked.zip");
  bytes[6] = static_cast<char>(bytes[6] | 1);
  const std::size_t directory = bytes.rfind("PK\1\2");
  bytes[directory + 8] = static_cast<char>(bytes[directory + 8] | 1);
  folder.write("locked.zip", bytes);
  EXPECT_EQ(openSource(folder.at("locked.zip")).files.read("a.txt").error, "a.txt is encrypted");
}

TEST(ZipArchive, damageIsFound) {
  const TemporaryFolder folder;
  makeZip(folder.at("torn.zip"), {{"a.txt", "some text"}}, false);
  std::string bytes = folder.read("torn.zip");
  bytes[bytes.find("some")] = 'S';
  folder.write("torn.zip", bytes);
  EXPECT_EQ(openSource(folder.at("torn.zip")).files.read("a.txt").error, "a.txt is damaged");
}

TEST(ZipArchive, everyBeginningOfAnArchiveIsAnErrorOrASource) {
  const TemporaryFolder folder;
  makeZip(folder.at("whole.zip"), {{"a.txt", "some text"}});
  const std::string bytes = folder.read("whole.zip");
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    folder.write("half.zip", std::string_view(bytes).substr(0, size));
    EXPECT_TRUE(openSource(folder.at("half.zip")).error) << size;
  }
}

}  // namespace
}  // namespace tern::imports
