#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

test::ProcessResult import(const std::string& source, const std::string& out,
                           std::vector<std::string> more = {}) {
  more.insert(more.begin(), {test::commandPath(), "import", source, "--out", out});
  return test::runProcess(more);
}

std::string stationPath() { return test::sourcePath("tests/tools/import/station"); }

TEST(ImportCommand, saysWhatCameInAndWhatDidNot) {
  const test::TemporaryFolder folder;
  const test::ProcessResult result = import(stationPath(), folder.at("out"));
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("Venue 1, station: 2 floors, "));
  EXPECT_THAT(result.output, HasSubstr("All of the source came through as it stands.\n"));
  EXPECT_EQ(result.diagnostics, "");
}

TEST(ImportCommand, jsonAndReportAreTheSame) {
  const test::TemporaryFolder folder;
  const test::ProcessResult result =
      import(stationPath(), folder.at("out"),
             {"--json", "--report", folder.at("report.json"), "--name", "Harbour Station"});
  const JsonResult answer = decodeJson(result.output);
  EXPECT_EQ(answer.value["venues"].items()[0]["name"].text(), "Harbour Station");
  EXPECT_EQ(decodeJson(folder.read("report.json")).value, answer.value);
}

TEST(ImportCommand, otherCommandsAnswerFromTheFolder) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(import(stationPath(), folder.at("out"), {"--language", "en"}).status, 0);
  const auto ask = [&](std::vector<std::string> words) {
    words.insert(words.begin(), test::commandPath());
    words.insert(words.end(), {"--data", folder.at("out")});
    return test::runProcess(words);
  };
  const std::string east = "東口";
  const std::string gate = "中央改札口";
  EXPECT_EQ(ask({"route", "--from", east, "--to", gate, "--picture", folder.at("r.svg")}).status,
            0);
  EXPECT_EQ(ask({"route", "--from", east, "--to", gate, "--accessibility", "0"}).status, 0);
  EXPECT_EQ(ask({"tour", "--from", east, "--visit", gate}).status, 0);
  EXPECT_EQ(ask({"nearest", "--from", east, "--amenity", "Toilets"}).status, 0);
  EXPECT_THAT(folder.read("r.svg"), HasSubstr("<image"));
}

TEST(ImportCommand, wrongWordsAreStatusTwo) {
  const test::TemporaryFolder folder;
  folder.write("taken/mine.txt", "mine");
  EXPECT_EQ(import(stationPath(), folder.at("taken")).status, 2);
  EXPECT_EQ(import(stationPath(), folder.at("out"), {"--format", "paper"}).status, 2);
  EXPECT_EQ(test::runProcess({test::commandPath(), "import", stationPath()}).status, 2);
  EXPECT_EQ(test::runProcess({test::commandPath(), "import", "--out", folder.at("out")}).status, 2);
  EXPECT_EQ(folder.read("taken/mine.txt"), "mine");
}

TEST(ImportCommand, reportThatCannotBeWrittenLeavesAllAsItWas) {
  const test::TemporaryFolder folder;
  for (const char* report : {"out/report.json", "nowhere/report.json"}) {
    const test::ProcessResult result =
        import(stationPath(), folder.at("out"), {"--report", folder.at(report)});
    EXPECT_EQ(result.status, 2) << report;
    EXPECT_THAT(result.diagnostics, HasSubstr("--report: ")) << report;
    EXPECT_FALSE(std::filesystem::exists(folder.at("out"))) << report;
  }
}

TEST(ImportCommand, failureLeavesNoEmptyReport) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(
      import(folder.at("nowhere"), folder.at("out"), {"--report", folder.at("r.json")}).status, 3);
  EXPECT_FALSE(std::filesystem::exists(folder.at("r.json")));
}

TEST(ImportCommand, sourceThatHoldsNoBuildingIsStatusThree) {
  const test::TemporaryFolder folder;
  folder.write("empty/notes.txt", "nothing");
  const test::ProcessResult result = import(folder.at("empty"), folder.at("out"), {"--json"});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(decodeJson(result.output).value["error"].isMap());
  EXPECT_EQ(import(folder.at("nowhere"), folder.at("out")).status, 3);
  EXPECT_EQ(import(stationPath(), folder.at("out"), {"--format", "gtfs"}).status, 3);
}

}  // namespace
}  // namespace tern::command
