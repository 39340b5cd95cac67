#include "tools/tern/CacheFolder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/ScopedVariable.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

using test::ScopedVariable;

HostOptions optionsFor(const std::string& host, std::int64_t customer, std::string cache = "") {
  HostOptions options;
  options.host = host;
  options.customer = customer;
  options.cache = std::move(cache);
  return options;
}

std::string folderOf(const HostOptions& options) {
  const auto folder = cacheFolder(options);
  const auto* failure = std::get_if<Failure>(&folder);
  return failure == nullptr ? std::get<std::string>(folder) : failure->error.message;
}

TEST(CacheFolder, isBelowTheUsersDataFolder) {
  const ScopedVariable data("XDG_DATA_HOME", "/xdg");
  EXPECT_EQ(folderOf(optionsFor("https://maps.example.com:8443", 42)),
            "/xdg/tern/https%3A%2F%2Fmaps.example.com%3A8443/42");
}

TEST(CacheFolder, isBelowTheHomeFolderWithoutADataFolder) {
  const ScopedVariable home("HOME", "/home/me");
  for (const char* const unusable : {static_cast<const char*>(nullptr), "", "relative"}) {
    const ScopedVariable data("XDG_DATA_HOME", unusable);
    EXPECT_EQ(folderOf(optionsFor("http://h", 1)), "/home/me/.local/share/tern/http%3A%2F%2Fh/1");
  }
}

TEST(CacheFolder, isAskedForWhereThereIsNoHome) {
  const ScopedVariable home("HOME", nullptr);
  const ScopedVariable data("XDG_DATA_HOME", nullptr);
  EXPECT_THAT(folderOf(optionsFor("http://h", 1)), HasSubstr("--cache DIR is missing"));
}

TEST(CacheFolder, mayBeMissingEmptyOrACache) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(folderOf(optionsFor("http://h", 1, folder.at("new"))), folder.at("new"));
  EXPECT_EQ(folderOf(optionsFor("http://h", 1, folder.path())), folder.path());
  folder.write("Tern/cache/5.12.1/QRVS/data.json", "{}");
  EXPECT_EQ(folderOf(optionsFor("http://h", 1, folder.path())), folder.path());
}

class StrangeCacheFolder : public testing::TestWithParam<const char*> {};

TEST_P(StrangeCacheFolder, isRefused) {
  const test::TemporaryFolder folder;
  folder.write("Tern/cache/5.12.2/QRVS/data.json", "{}");
  folder.write(GetParam(), "mine");
  const auto refused = cacheFolder(optionsFor("http://h", 1, folder.path()));
  const auto* failure = std::get_if<Failure>(&refused);
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->status, ExitStatus::wrongWords);
  EXPECT_EQ(failure->error.message,
            "--cache: " + folder.path().string() + " holds " + GetParam() +
                ", which is not the cache's; name a new or an empty folder");
}

INSTANTIATE_TEST_SUITE_P(, StrangeCacheFolder,
                         testing::Values("notes.txt", "Tern/notes.txt", "Tern/cache/notes.txt",
                                         ".hidden", "Tern/cache/5.12.3"));

TEST(CacheFolder, linkInItIsRefused) {
  const test::TemporaryFolder folder;
  const test::TemporaryFolder elsewhere;
  std::filesystem::create_directory_symlink(elsewhere.path(), folder.at("Tern"));
  EXPECT_THAT(folderOf(optionsFor("http://h", 1, folder.path())), HasSubstr(" holds Tern, "));
}

TEST(CacheFolder, fileIsNoFolder) {
  const test::TemporaryFolder folder;
  folder.write("file", "");
  EXPECT_THAT(folderOf(optionsFor("http://h", 1, folder.at("file"))),
              EndsWith("file is no folder"));
}

}  // namespace
}  // namespace tern::command
