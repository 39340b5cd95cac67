#include "TernCoreKit/c/detail/HostFiles.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/c/FakeHost.hpp"
#include "tests/support/FailingAllocation.hpp"

namespace tern::detail {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostFilesTest : public testing::Test {
 protected:
  HostFilesTest() : files_(std::make_shared<Host>(host_.callbacks())) {
    host_.store("a/b", "1");
    host_.store("a/c/d", "22");
    host_.store("ab", "");
  }

  test::FakeHost host_;
  HostFiles files_;
};

TEST_F(HostFilesTest, areReadWhole) {
  EXPECT_EQ(files_.readFile("/a//c/d", 2), "22");
  EXPECT_EQ(files_.readFile("ab", 2), "");
  EXPECT_EQ(files_.readFile("a/c/d", 1), std::nullopt);
  EXPECT_EQ(files_.readFile("a/c", 9), std::nullopt);
  EXPECT_EQ(files_.readFile("../ab", 9), std::nullopt);
}

TEST_F(HostFilesTest, areToldFromFolders) {
  EXPECT_TRUE(files_.isFile("/a/b"));
  EXPECT_FALSE(files_.isFile("a"));
  EXPECT_FALSE(files_.isFile("a/./b"));
  EXPECT_TRUE(files_.isFolder("a"));
  EXPECT_TRUE(files_.isFolder("/a/c/"));
  EXPECT_TRUE(files_.isFolder(""));
  EXPECT_FALSE(files_.isFolder("ab"));
  EXPECT_FALSE(files_.isFolder("x"));
}

TEST_F(HostFilesTest, areListedByTheirNames) {
  EXPECT_THAT(files_.list(""), ElementsAre("a", "ab"));
  EXPECT_THAT(files_.list("/a"), ElementsAre("b", "c"));
  EXPECT_THAT(files_.list("x"), IsEmpty());
  EXPECT_THAT(files_.list(".."), IsEmpty());
}

TEST_F(HostFilesTest, areWrittenWithoutTheirFolders) {
  EXPECT_FALSE(files_.createFolders("/n/m"));
  EXPECT_FALSE(files_.createFile("/n/m/f", std::string("\0x", 2)));
  EXPECT_EQ(host_.files().at("n/m/f"), std::string("\0x", 2));
  EXPECT_TRUE(files_.createFile("", "x"));
  EXPECT_TRUE(files_.createFile("../f", "x"));
  EXPECT_TRUE(files_.createFolders(".."));
  host_.refusesFiles = true;
  EXPECT_EQ(files_.createFile("f", "x")->text, "the host did not write");
}

TEST_F(HostFilesTest, areRemovedWithWhatLiesBelowThem) {
  EXPECT_TRUE(files_.remove("x"));
  EXPECT_TRUE(files_.remove(""));
  EXPECT_FALSE(files_.remove("a"));
  EXPECT_THAT(files_.list(""), ElementsAre("ab"));
  host_.refusesFiles = true;
  EXPECT_EQ(files_.remove("ab")->text, "the host did not remove");
}

TEST_F(HostFilesTest, failByValueWhereMemoryRunsOut) {
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread,
      [&] {
        const auto written = files_.createFile("w/x", "contents that are longer than a short text");
        const auto text = files_.readFile("a/b", 9);
        const auto names = files_.list("a");
        ASSERT_TRUE(!text || *text == "1");
        ASSERT_TRUE(names.empty() || names.size() <= 2);
      },
      [] {});
  EXPECT_GT(failed, 3);
}

}  // namespace
}  // namespace tern::detail
