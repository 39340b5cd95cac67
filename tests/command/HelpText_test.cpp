// Runs every example of the help and of the README in a shell, as their readers do.
#include "tools/tern/HelpText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/gtfs/DrawnFeed.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::ContainsRegex;
using testing::MatchesRegex;

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  const std::size_t place = text.find(what);
  if (place != std::string::npos) text.replace(place, what.size(), with);
  return text;
}

// A shell in a folder with nothing but the data of buildings, which finds the command with a page.
// Where an example serves on port 8080, which somebody else may have, it serves on one that is
// free, and who asks there asks that one.
class Shell {
 public:
  Shell() {
    std::filesystem::copy(test::sourcePath("tests/tools/import/station"), folder.at("station"));
    test::DrawnFeed feed;
    const test::DrawnFeed::Metres street;
    feed.station("central").stop("door", 2, street, {.name = "Door", .parent = "central"});
    feed.stop("track", 0, test::DrawnFeed::Metres{20, 0}, {.name = "Track", .parent = "central"});
    feed.way("hall", "door", "track", 1).writeTo(folder, "feed");
  }
  ~Shell() { endService(); }

  void run(const std::string& line) {
    for (const char* const endless : {"tern serve", "tern explore"}) {
      if (line.find(endless) != std::string::npos) return serve(line);
    }
    const test::ProcessResult result =
        test::runProcess(words(replaced(line, "http://127.0.0.1:8080", address_)));
    EXPECT_EQ(result.status, 0) << line;
    EXPECT_NE(result.output, "") << line;
    EXPECT_EQ(result.diagnostics, "") << line;
  }

  test::TemporaryFolder folder;

 private:
  void serve(const std::string& line) {
    endService();
    service_.emplace(words("exec env " + replaced(line, "--port 8080", "--port 0")));
    const std::string heard = service_->hear();
    EXPECT_THAT(heard, MatchesRegex("(Serving|Showing) .+ at http://127\\.0\\.0\\.1:[0-9]+/?"))
        << line;
    address_ = heard.substr(heard.rfind(' ') + 1);
  }

  void endService() {
    if (!service_) return;
    service_->send(SIGTERM);
    EXPECT_EQ(service_->end(), 0);
    service_.reset();
  }

  std::vector<std::string> words(const std::string& line) const {
    const std::string tools = std::filesystem::path(test::commandWithPagePath()).parent_path();
    return {"/bin/sh", "-c",
            "cd '" + folder.at("") + "' && export PATH='" + tools + "':\"$PATH\" XDG_DATA_HOME='" +
                folder.at("home") + "'\n" + line};
  }

  std::optional<test::Conversation> service_;
  std::string address_;
};

// The lines below "Examples:", up to an empty one. A backslash at the end joins the next.
std::vector<std::string> examplesIn(const std::string& help) {
  std::istringstream lines(help.substr(help.find("\nExamples:\n") + 1));
  std::vector<std::string> examples;
  std::string line;
  bool isJoined = false;
  std::getline(lines, line);
  while (std::getline(lines, line) && !line.empty()) {
    if (isJoined) {
      examples.back() += "\n" + line;
    } else {
      examples.push_back(line);
    }
    isJoined = line.ends_with('\\');
  }
  return examples;
}

class HelpOfCommandTest : public testing::TestWithParam<const Command*> {};

TEST_P(HelpOfCommandTest, examplesRun) {
  Shell shell;
  const std::vector<std::string> examples = examplesIn(helpOf(*GetParam(), {}));
  ASSERT_GT(examples.size(), 1U);
  for (const std::string& line : examples) shell.run(line);
}

INSTANTIATE_TEST_SUITE_P(Command, HelpOfCommandTest,
                         testing::ValuesIn(allCommands().begin(), allCommands().end()),
                         [](const auto& tested) { return std::string(tested.param->name); });

TEST(HelpText, generalExamplesRun) {
  Shell shell;
  const std::vector<std::string> examples = examplesIn(generalHelp({}));
  ASSERT_GT(examples.size(), 1U);
  for (const std::string& line : examples) shell.run(line);
}

// The lines of the first block of code below the heading.
std::vector<std::string> readmeLines(const std::string& heading) {
  std::ifstream readme(test::sourcePath("README.md"));
  std::vector<std::string> lines;
  std::string line;
  while (std::getline(readme, line) && line != heading) continue;
  while (std::getline(readme, line) && line != "```") continue;
  while (std::getline(readme, line) && line != "```") lines.push_back(line);
  return lines;
}

TEST(HelpText, examplesOfTheReadmeRunAndShowEveryCommand) {
  Shell shell;
  std::filesystem::create_directory_symlink(test::sourcePath("data"), shell.folder.at("data"));
  std::string all;
  for (const std::string& line : readmeLines("## The command")) {
    shell.run(line);
    all += line + "\n";
  }
  for (const Command* command : allCommands()) {
    EXPECT_THAT(all, ContainsRegex("tern " + std::string(command->name) + "[ \n]"));
  }
}

// The requests among the lines of the help: from {"op": to the brace that closes it.
std::vector<std::string> requestsIn(std::string_view help) {
  std::vector<std::string> requests;
  for (std::size_t at = help.find("{\"op\":"); at != std::string_view::npos;
       at = help.find("{\"op\":", at + 1)) {
    std::size_t end = at;
    for (int open = 0; end == at || open > 0; ++end) {
      if (help[end] == '{') ++open;
      if (help[end] == '}') --open;
    }
    requests.push_back(replaced(std::string(help.substr(at, end - at)), "\n", ""));
  }
  return requests;
}

TEST(HelpText, requestsOfTheBatchAreAnswered) {
  const std::vector<std::string> requests = requestsIn(batchCommand.help);
  ASSERT_GT(requests.size(), 10U);
  const test::TemporaryFolder folder;
  const std::string mall = folder.at("mall");
  ASSERT_EQ(test::runProcess({test::commandPath(), "generate", "--out", mall}).status, 0);
  std::string input;
  for (const std::string& request : requests) input += request + "\n";
  std::istringstream answers(
      test::runProcess({test::commandPath(), "batch", "--data", mall}, input).output);
  for (const std::string& request : requests) {
    std::string answer;
    ASSERT_TRUE(std::getline(answers, answer));
    const Value value = decodeJson(answer).value;
    EXPECT_TRUE(value["error"].isAbsent() || value["error"].isNull()) << request << answer;
    EXPECT_GT(value.size(), 0U) << request;
  }
}

}  // namespace
}  // namespace tern::command
