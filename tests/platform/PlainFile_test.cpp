#include "TernCoreKit/platform/PlainFile.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "tests/support/TemporaryFolder.hpp"

namespace tern {
namespace {

class PlainFile : public testing::Test {
 protected:
  static int errorOf(const std::string& path, std::uintmax_t mostBytes = 100) {
    const auto text = readPlainFile(path, mostBytes);
    const auto* error = std::get_if<FileError>(&text);
    return error != nullptr ? error->code : 0;
  }

  const test::TemporaryFolder folder_;
};

TEST_F(PlainFile, isReadWhole) {
  folder_.write("a", std::string("x\0\r\ny", 5));
  EXPECT_EQ(std::get<std::string>(readPlainFile(folder_.at("a"), 5)), std::string("x\0\r\ny", 5));
  std::filesystem::create_symlink("a", folder_.at("link"));
  EXPECT_EQ(std::get<std::string>(readPlainFile(folder_.at("link"), 5)).size(), 5U);
}

TEST_F(PlainFile, whatIsMissingOrTooLargeIsToldApart) {
  folder_.write("a", "12345");
  EXPECT_EQ(errorOf(folder_.at("b")), ENOENT);
  EXPECT_EQ(errorOf(folder_.at("a/b")), ENOENT);
  EXPECT_EQ(errorOf(folder_.at("a"), 4), EFBIG);
  EXPECT_EQ(errorOf(folder_.at("a"), 5), 0);
}

TEST_F(PlainFile, whatIsNoPlainFileIsNotOpened) {
  EXPECT_EQ(errorOf(folder_.at("")), EINVAL);
  ASSERT_EQ(mkfifo(folder_.at("pipe").c_str(), 0600), 0);
  EXPECT_EQ(errorOf(folder_.at("pipe")), EINVAL);
}

TEST_F(PlainFile, foldersAreToldFromFiles) {
  folder_.write("a", "");
  EXPECT_TRUE(isFolderAt(folder_.at("")));
  EXPECT_FALSE(isFolderAt(folder_.at("a")));
  EXPECT_FALSE(isFolderAt(folder_.at("b")));
}

}  // namespace
}  // namespace tern
