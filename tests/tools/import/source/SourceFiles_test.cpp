#include "tools/import/source/SourceFiles.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;

TEST(SourceFiles, filesOfAFolderAreSorted) {
  const test::TemporaryFolder folder;
  folder.write("station/b.geojson", "two");
  folder.write("station/a/c.geojson", "three");
  folder.write("station/a.geojson", "one");
  const OpenedSource opened = openSource(folder.at("station"));
  ASSERT_EQ(opened.error, std::nullopt);
  EXPECT_THAT(opened.files.names(), ElementsAre("a.geojson", "a/c.geojson", "b.geojson"));
  EXPECT_EQ(opened.files.read("a/c.geojson").text, "three");
  EXPECT_EQ(opened.files.name(), "station");
}

TEST(SourceFiles, nameOfAFolderDoesNotDependOnHowItIsWritten) {
  const test::TemporaryFolder folder;
  folder.write("station/a.geojson", "");
  EXPECT_EQ(openSource(folder.at("station/")).files.name(), "station");
  EXPECT_EQ(openSource(folder.at("station/../station/.")).files.name(), "station");
}

TEST(SourceFiles, singleFileIsASource) {
  const test::TemporaryFolder folder;
  folder.write("site.geojson", "text");
  const OpenedSource opened = openSource(folder.at("site.geojson"));
  EXPECT_EQ(opened.files.name(), "site");
  ASSERT_THAT(opened.files.names(), ElementsAre("site.geojson"));
  EXPECT_EQ(opened.files.read("site.geojson").text, "text");
}

TEST(SourceFiles, whatIsMissingIsNamed) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(openSource(folder.at("nowhere")).error, "there is no " + folder.at("nowhere"));
  EXPECT_TRUE(SourceFiles(folder.path(), "x", {"gone"}).read("gone").error);
}

TEST(SourceFiles, whatMacOsPutsBesideFilesIsPassedOver) {
  const test::TemporaryFolder folder;
  folder.write("__MACOSX/site/._unit.geojson", "");
  folder.write("site/._unit.geojson", "");
  folder.write("site/unit.geojson", "");
  folder.write("site/.._odd.geojson", "");
  EXPECT_THAT(openSource(folder.path()).files.names(),
              ElementsAre("site/.._odd.geojson", "site/unit.geojson"));
}

TEST(SourceFiles, aFileThatCannotBeOpenedIsSaidToBe) {
  const test::TemporaryFolder folder;
  folder.write("a.geojson", "");
  const OpenedSource opened = openSource(folder.path());
  std::filesystem::remove(folder.at("a.geojson"));
  EXPECT_EQ(opened.files.read("a.geojson").error, "a.geojson: No such file or directory");
}

// Root may open all folders, so as root the test goes on as nobody, whose the folder is then.
class AsNobody {
 public:
  explicit AsNobody(const std::filesystem::path& folder) {
    if (!wasRoot_) return;
    EXPECT_EQ(chown(folder.c_str(), nobody, nobody), 0);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      EXPECT_EQ(chown(entry.path().c_str(), nobody, nobody), 0);
    }
    EXPECT_EQ(seteuid(nobody), 0);
  }
  ~AsNobody() {
    if (wasRoot_) {
      EXPECT_EQ(seteuid(0), 0);
    }
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;

 private:
  static constexpr uid_t nobody = 65534;
  const bool wasRoot_ = geteuid() == 0;
};

TEST(SourceFiles, aFolderThatCannotBeOpenedIsSaidToBe) {
  const test::TemporaryFolder folder;
  folder.write("site/part/a.geojson", "");
  const AsNobody nobody(folder.path());
  const auto errorWithout = [&](const char* name) {
    std::filesystem::permissions(folder.at(name), std::filesystem::perms::none);
    const auto error = openSource(folder.at("site")).error;
    std::filesystem::permissions(folder.at(name), std::filesystem::perms::owner_all);
    return error.value_or("none");
  };
  EXPECT_EQ(errorWithout("site"), folder.at("site") + ": Permission denied");
  EXPECT_EQ(errorWithout("site/part"), "a folder in " + folder.at("site") + ": Permission denied");
}

TEST(SourceFiles, pipesAndDeepFoldersArePassedOver) {
  const test::TemporaryFolder folder;
  folder.write("a/b/c/d/e/deep.geojson", "");
  folder.write("near.geojson", "");
  ASSERT_EQ(mkfifo(folder.at("pipe.geojson").c_str(), 0600), 0);
  EXPECT_THAT(openSource(folder.path()).files.names(), ElementsAre("near.geojson"));
  EXPECT_TRUE(openSource(folder.at("pipe.geojson")).error);
}

}  // namespace
}  // namespace tern::imports
