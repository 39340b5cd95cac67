#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.hpp"
#include "tools/generate/GenerateVenue.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Outcome generateWith(std::vector<std::string> words) {
  words.insert(words.begin(), "generate");
  Output answers(-1);
  Console console{.requests = -1, .answers = answers};
  const auto generate = std::get<AboutNothing>(generateCommand.about);
  return generate(std::get<Arguments>(parseArguments(words)), console);
}

class GenerateCommandTest : public testing::Test {
 protected:
  Outcome generateTo(const std::string& out, bool json = false) {
    std::vector<std::string> words = {"--out",    out, "--buildings", "1",
                                      "--floors", "1", "--shops",     "4"};
    if (json) words.emplace_back("--json");
    return generateWith(words);
  }
  // Whether the words give what the options give.
  void expectSame(std::vector<std::string> words, const generate::GenerateOptions& options) {
    words.insert(words.end(), {"--out", folder_.at("words")});
    ASSERT_TRUE(std::holds_alternative<Answer>(generateWith(words)));
    ASSERT_FALSE(generate::generateVenueFolder(options, folder_.at("options")));
    const std::string venue = "/venue/" + std::to_string(options.venue);
    for (const std::string& file :
         {std::string("/full.json"), venue + "/full.json", venue + "/building/1/full.json"}) {
      EXPECT_EQ(folder_.read("words" + file), folder_.read("options" + file)) << file;
      EXPECT_NE(folder_.read("words" + file), "") << file;
    }
  }
  std::string refusalOf(const std::string& out) {
    const Outcome outcome = generateTo(out);
    const auto* failure = std::get_if<Failure>(&outcome);
    if (failure == nullptr) return "not refused";
    EXPECT_EQ(failure->status, ExitStatus::wrongWords);
    return failure->sentence;
  }

  test::TemporaryFolder folder_;
};

TEST_F(GenerateCommandTest, wordsChooseEveryOption) {
  expectSame({"--seed", "7", "--buildings", "3", "--floors", "2", "--waypoints", "400", "--spacing",
              "2", "--customer", "8", "--venue", "9", "--venues", "2"},
             {.seed = 7,
              .buildings = 3,
              .floors = 2,
              .waypoints = 400,
              .spacing = 2,
              .customer = 8,
              .venue = 9,
              .venues = 2});
}

TEST_F(GenerateCommandTest, whatIsLeftOutIsAsTheGeneratorHasIt) { expectSame({}, {}); }

TEST_F(GenerateCommandTest, optionOutOfRangeIsRefused) {
  const auto call = parseArguments({"generate", "--out", "mall", "--floors", "0"});
  EXPECT_EQ(std::get<Failure>(call).sentence,
            "--floors: 0 is out of range, 1 to 40 (see tern generate --help)");
}

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
