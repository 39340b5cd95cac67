#include "tools/tern/GenerateCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class GenerateCommandTest : public testing::Test {
 protected:
  Outcome generateTo(const std::string& out, bool json = false) {
    Arguments call;
    call.json = json;
    call.out = out;
    call.generate.buildings = 1;
    call.generate.floors = 1;
    call.generate.shops = 4;
    return generateFolder(call);
  }
  std::string refusalOf(const std::string& out) {
    const Outcome outcome = generateTo(out);
    const auto* failure = std::get_if<Failure>(&outcome);
    if (failure == nullptr) return "not refused";
    EXPECT_EQ(failure->status, ExitStatus::wrongWords);
    return failure->error.message;
  }

  test::TemporaryFolder folder_;
};

TEST_F(GenerateCommandTest, makesTheFolder) {
  const Outcome outcome = generateTo(folder_.at("a/mall"));
  EXPECT_EQ(std::get<Answer>(outcome).text, "Venue 1 is in " + folder_.at("a/mall") + "\n");
  EXPECT_THAT(folder_.read("a/mall/full.json"), StartsWith("{"));
  EXPECT_THAT(folder_.read("a/mall/venue/1/building/1/full.json"), StartsWith("{"));
}

TEST_F(GenerateCommandTest, answersInJson) {
  EXPECT_EQ(std::get<Answer>(generateTo(folder_.at(""), true)).text, "{\"ok\":true}\n");
}

TEST_F(GenerateCommandTest, writesAVenueFolderAnewAndKeepsWhatElseIsThere) {
  ASSERT_TRUE(std::holds_alternative<Answer>(generateTo(folder_.at("mall"))));
  const std::string before = folder_.read("mall/venue/1/full.json");
  folder_.write("mall/venue/1/full.json", "old");
  folder_.write("mall/notes.txt", "mine");
  ASSERT_TRUE(std::holds_alternative<Answer>(generateTo(folder_.at("mall"))));
  EXPECT_EQ(folder_.read("mall/venue/1/full.json"), before);
  EXPECT_EQ(folder_.read("mall/notes.txt"), "mine");
}

TEST_F(GenerateCommandTest, refusesAFolderOfOtherThings) {
  folder_.write("notes.txt", "mine");
  EXPECT_THAT(refusalOf(folder_.at("")), HasSubstr("holds other things than a venue folder"));
  EXPECT_EQ(folder_.read("full.json"), "");
}

TEST_F(GenerateCommandTest, refusesAFile) {
  folder_.write("file", "mine");
  EXPECT_EQ(refusalOf(folder_.at("file")), "--out: " + folder_.at("file") + " is no folder");
  EXPECT_THAT(refusalOf(folder_.at("file/below")), StartsWith("--out: "));
  EXPECT_EQ(folder_.read("file"), "mine");
}

}  // namespace
}  // namespace tern::command
