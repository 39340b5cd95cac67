// Runs the command as its users do.
#include "tools/tern/Command.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/MemoryFile.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/Sanitized.hpp"
#include "tests/support/ScopedVariable.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/Terminal.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/Arguments.hpp"

namespace tern::command {
namespace {

using test::Conversation;
using test::ProcessResult;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using Words = std::vector<std::string>;

Words commandLine(Words words) {
  words.insert(words.begin(), test::commandPath());
  return words;
}

ProcessResult tern(const Words& words, std::string_view input = {}) {
  return test::runProcess(commandLine(words), input);
}

// Status 3 and one line, wherever memory ran out; no call ends in another way.
TEST(CommandWithoutMemory, endsWithOneLineWhateverAllocationFails) {
  const test::TemporaryFolder folder;
  test::writeTwoFloors(folder);
  for (const std::string option : {"", "--json"}) {
    Words words{"route", "--data", folder.path().string(), "--from", "1", "--to", "4"};
    if (!option.empty()) words.push_back(option);
    test::MemoryFile input;
    std::optional<test::MemoryFile> output;
    std::optional<test::MemoryFile> diagnostics;
    std::optional<int> status;
    const auto renew = [&] {
      output.emplace();
      diagnostics.emplace();
      status.reset();
    };
    renew();
    constexpr auto reach = test::FailingAllocation::Reach::process;
    const int failed = test::forFailingAllocations(
        reach,
        [&] {
          status = runCommand(
              words, {input.descriptor(), output->descriptor(), diagnostics->descriptor()});
        },
        [&] {
          // Without one, not even the error could be told in memory: `main` says so.
          if (status.has_value() && *status != 0) {
            ASSERT_EQ(*status, 3) << diagnostics->text() << output->text();
            ASSERT_THAT(diagnostics->text(), StartsWith("tern: "));
            if (!option.empty()) {
              ASSERT_THAT(output->text(), StartsWith("{\"error\":"));
            }
          }
          renew();
        },
        test::Throwing::badAlloc);
    EXPECT_GT(failed, 60);
  }
}

// The answer, or an error that says what could not be done.
TEST(CommandWithABrokenDisk, answersOrSaysSoWhateverSystemCallFails) {
  const test::TemporaryFolder folder;
  test::writeTwoFloors(folder);
  const Words words{"route", "--data", folder.path().string(), "--from", "1", "--to", "4"};
  test::MemoryFile input;
  std::optional<test::MemoryFile> output;
  std::optional<test::MemoryFile> diagnostics;
  int status = 0;
  const auto renew = [&] {
    output.emplace();
    diagnostics.emplace();
  };
  renew();
  std::optional<std::string> answer;
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::process,
      [&] {
        status = runCommand(words,
                            {input.descriptor(), output->descriptor(), diagnostics->descriptor()});
      },
      [&] {
        if (!answer) answer = output->text();
        if (status == 0) {
          ASSERT_EQ(output->text(), *answer);
        } else {
          ASSERT_THAT(status, testing::AnyOf(3, 4)) << diagnostics->text();
        }
        renew();
      });
  EXPECT_THAT(*answer, HasSubstr("From "));
  EXPECT_GE(failed, 8);
}

#if !defined(TERN_TESTS_SANITIZED)
// In an address space that is too small the program ends with status 3 and one line, or answers. In
// one smaller still it cannot be loaded, or is ended by what runs before `main`: no code of ours.
TEST(CommandWithoutMemory, endsWithStatusThreeInASmallAddressSpace) {
  int refused = 0;
  int answered = 0;
  bool isLoaded = false;
  for (int kilobytes = 20'000; answered < 10; kilobytes += 400) {
    ASSERT_LE(kilobytes, 200'000) << "it never answers";
    const ProcessResult result = test::runProcess(
        {"/bin/sh", "-c", "ulimit -v " + std::to_string(kilobytes) + "; exec \"$@\"", "sh",
         test::commandPath(), "route", "--data", test::samplePath(), "--from", "11001", "--to",
         "11002"});
    const bool isOurs = result.status == 0 || result.status == 3;
    ASSERT_TRUE(isOurs || !isLoaded)
        << kilobytes << " KB: " << result.status << ", " << result.diagnostics;
    isLoaded = isLoaded || isOurs;
    if (result.status == 0) ++answered;
    if (result.status != 3) continue;
    ++refused;
    EXPECT_THAT(result.diagnostics, StartsWith("tern: "));
    EXPECT_THAT(result.diagnostics, EndsWith("out of memory\n"));
    EXPECT_EQ(std::ranges::count(result.diagnostics, '\n'), 1);
  }
  EXPECT_GT(refused, 0);
}
#endif

Value parsed(const std::string& json) {
  JsonResult result = decodeJson(json);
  EXPECT_FALSE(result.error) << json;
  return std::move(result.value);
}

// Whether a call that could not be answered says so as it should: one line for a person and, with
// --json, the same message for a program and nothing else.
void expectFailure(Words words, int status, const testing::Matcher<std::string>& message) {
  const ProcessResult inWords = tern(words);
  EXPECT_EQ(inWords.status, status);
  EXPECT_EQ(inWords.output, "");
  EXPECT_THAT(inWords.diagnostics, MatchesRegex("tern: [^\n]*\n"));
  words.emplace_back("--json");
  const ProcessResult inJson = tern(words);
  EXPECT_EQ(inJson.status, status);
  const Value error = parsed(inJson.output)["error"];
  EXPECT_THAT(std::string(error["code"].text()), MatchesRegex("TN00[1-8]"));
  EXPECT_THAT(std::string(error["message"].text()), message);
  EXPECT_THAT(std::string(error["description"].text()), Not(IsEmpty()));
  EXPECT_EQ(parsed(inJson.output).size(), 1U);
}

// A venue of five waypoints; see twoFloorsVenueDocument.
class CommandTest : public testing::Test {
 protected:
  CommandTest() { writeTwoFloors(folder_); }

  Words withData(Words words) const {
    words.insert(words.begin() + 1, {"--data", folder_.at("")});
    return words;
  }
  ProcessResult ask(const Words& words, std::string_view input = {}) const {
    return tern(withData(words), input);
  }

  test::TemporaryFolder folder_;
};

TEST_F(CommandTest, venuesAreListed) {
  EXPECT_EQ(ask({"venues", "--json"}).output,
            "{\"venues\":[{\"id\":1,\"externalId\":\"v1\",\"name\":\"drawn\"}]}\n");
  const ProcessResult inWords = ask({"venues"});
  EXPECT_EQ(inWords.status, 0);
  EXPECT_EQ(inWords.output, "1       drawn (v1)\n");
  EXPECT_EQ(inWords.diagnostics, "");
}

TEST_F(CommandTest, infoCounts) {
  const ProcessResult inJson = ask({"info", "--json"});
  EXPECT_EQ(inJson.status, 0);
  EXPECT_EQ(inJson.output,
            R"({"venue":{"id":1,"name":"drawn"},"buildings":1,"floors":2,"maps":2,"waypoints":5,)"
            R"("paths":4,"destinations":1,"amenities":1,"pathTypes":3,"links":8})"
            "\n");
  EXPECT_THAT(ask({"info"}).output, HasSubstr("  waypoints     5\n"));
}

TEST_F(CommandTest, routeIsToldAndExitsWithZero) {
  const ProcessResult result = ask({"route", "--from", "1", "--to", "4"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "From Bakery (waypoint 1)\n"
            "To Exit (waypoint 4)\n"
            "\n"
            "Ground Floor\n"
            "   1. Start at Bakery, 6 m\n"
            "   2. Take the stairs up to First Floor\n"
            "First Floor\n"
            "   3. You have reached Exit\n"
            "6 m, about 1 minute\n");
  EXPECT_EQ(result.diagnostics, "");
}

TEST_F(CommandTest, jsonIsTheAnswerThatABatchGives) {
  const auto expectSame = [&](const Words& words, const std::string& request) {
    const ProcessResult single = ask(words);
    EXPECT_EQ(single.output, ask({"batch"}, request + "\n").output) << request;
    EXPECT_EQ(single.status, 0);
  };
  expectSame({"route", "--from", "1", "--to", "4", "--json"}, R"({"op":"route","from":1,"to":4})");
  expectSame({"route", "--from", "1", "--to", "4", "--accessibility", "1", "--json"},
             R"({"op":"route","from":1,"to":4,"accessibility":1})");
  expectSame({"closest", "--map", "1", "--at", "-12.5,3", "--json"},
             R"({"op":"closest","map":1,"at":[-12.5,3]})");
  expectSame({"convert", "--point=-3,4.25", "--from", "tern:local", "--to", "EPSG:4326", "--json"},
             R"({"op":"convert","point":[-3,4.25],"from":"tern:local","to":"EPSG:4326"})");
}

TEST_F(CommandTest, nothingFoundExitsWithOne) {
  const ProcessResult inWords = ask({"route", "--from", "1", "--to", "5"});
  EXPECT_EQ(inWords.status, 1);
  EXPECT_EQ(inWords.output,
            "No route from Bakery (waypoint 1) to near Bakery (waypoint 5) on Ground Floor\n");
  const ProcessResult inJson = ask({"route", "--from", "1", "--to", "5", "--json"});
  EXPECT_EQ(inJson.status, 1);
  EXPECT_EQ(inJson.output, "{\"route\":[]}\n");
  EXPECT_EQ(inJson.diagnostics, "");
  const ProcessResult noMap = ask({"closest", "--map", "9", "--at", "0,0", "--json"});
  EXPECT_EQ(noMap.status, 1);
  EXPECT_EQ(noMap.output, "{\"waypoint\":null}\n");
}

TEST_F(CommandTest, unknownWaypointIsNamedOnStandardError) {
  const ProcessResult inWords = ask({"route", "--from", "1", "--to", "99"});
  EXPECT_EQ(inWords.status, 1);
  EXPECT_EQ(inWords.output, "");
  EXPECT_EQ(inWords.diagnostics, "tern: there is no waypoint 99 in venue 1\n");
  const ProcessResult inJson = ask({"route", "--from", "1", "--to", "99", "--json"});
  EXPECT_EQ(inJson.status, 1);
  EXPECT_EQ(inJson.output, "{\"route\":[]}\n");
  EXPECT_EQ(inJson.diagnostics, inWords.diagnostics);
}

TEST_F(CommandTest, placesAreFoundByName) {
  const ProcessResult inWords = ask({"places", "BAKÉRY"});
  EXPECT_EQ(inWords.status, 0);
  EXPECT_EQ(inWords.output, "Bakery (destination 7) on Ground Floor (waypoint 1)\n");
  EXPECT_EQ(ask({"places", "bakrey", "--json"}).output,
            ask({"batch"}, R"({"op":"places","text":"bakery"})"
                           "\n")
                .output);
  const ProcessResult none = ask({"places", "florist"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.output, "");
}

TEST_F(CommandTest, namesStandForWaypoints) {
  const ProcessResult byName = ask({"route", "--from", "bakery", "--to", "EXIT"});
  EXPECT_EQ(byName.status, 0);
  EXPECT_EQ(byName.output, ask({"route", "--from", "1", "--to", "4"}).output);
}

TEST_F(CommandTest, nameThatFitsNoneExitsWithOneAndNamesTheClosest) {
  expectFailure(withData({"route", "--from", "bakrey", "--to", "4"}), 1,
                HasSubstr("the closest is Bakery (destination 7)"));
}

TEST_F(CommandTest, nameThatFitsSeveralExitsWithTwoAndListsThem) {
  std::string document = folder_.read("venue/1/full.json");
  document.replace(document.find("Bakery"), 6, "Exit");
  folder_.write("venue/1/full.json", document);
  expectFailure(withData({"route", "--from", "1", "--to", "exit"}), 2,
                AllOf(HasSubstr("Exit (destination 7) on Ground Floor"),
                      HasSubstr("Exit (amenity 7) on First Floor")));
}

TEST_F(CommandTest, closestAndConvertAnswerInWords) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "-3,-4"}).output,
            "Bakery (waypoint 1) on Ground Floor, 1 m away\n");
  EXPECT_EQ(ask({"convert", "--point", "10,0", "--from", "EPSG:4326", "--to", "EPSG:3857"}).status,
            0);
}

TEST_F(CommandTest, optionsMayStandBeforeTheCommand) {
  const ProcessResult result = tern({"--data", folder_.at(""), "--json", "--venue", "1", "info"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("{\"venue\":{\"id\":1,"));
}

TEST_F(CommandTest, pictureIsWrittenBesideTheAnswer) {
  const auto draw = [&](const std::string& file) {
    return ask({"route", "--from", "1", "--to", "4", "--picture", folder_.at(file)});
  };
  EXPECT_EQ(draw("r.svg").status, 0);
  EXPECT_THAT(draw("r.html").output, StartsWith("From Bakery"));
  EXPECT_THAT(folder_.read("r.svg"), HasSubstr("<svg"));
  EXPECT_THAT(folder_.read("r.html"), HasSubstr("</html>"));
  expectFailure(withData({"route", "--from", "1", "--to", "4", "--picture", "/no/such/r.svg"}), 2,
                HasSubstr("/no/such/r.svg"));
}

TEST_F(CommandTest, batchAnswersEveryLineAndExitsWithZero) {
  const ProcessResult result = ask({"batch"},
                                   "{\"op\":\"closest\",\"map\":2,\"at\":[0,0],\"id\":\"a\"}\r\n"
                                   "\n"
                                   "{\"op\":\"fly\",\"id\":[1,null]}\n"
                                   "no json\n"
                                   "\xFF\xFE\n"
                                   "{\"op\":\"center\"}");
  EXPECT_EQ(result.status, 0);
  std::istringstream lines(result.output);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "{\"id\":\"a\",\"waypoint\":4}");
  std::getline(lines, line);
  EXPECT_THAT(line,
              StartsWith(R"({"id":[1,null],"error":{"code":"TN006","message":"\"op\" is \"fly\")"));
  std::getline(lines, line);
  EXPECT_THAT(line, StartsWith("{\"error\":{\"code\":\"TN006\""));
  std::getline(lines, line);
  EXPECT_THAT(line, StartsWith("{\"error\":{\"code\":\"TN006\""));
  std::getline(lines, line);
  EXPECT_EQ(parsed(line)["point"].size(), 2U);
  EXPECT_FALSE(std::getline(lines, line));
  EXPECT_EQ(result.diagnostics, "");
}

TEST_F(CommandTest, batchOfNothingIsAnswered) {
  const ProcessResult result = ask({"batch", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
}

TEST_F(CommandTest, batchIsSilentAboutWhatItsAnswersSay) {
  std::string requests;
  for (int i = 0; i < 100; ++i) requests += "{\"op\":\"route\",\"from\":1,\"to\":1}\n";
  EXPECT_EQ(ask({"batch"}, requests).diagnostics, "");
}

TEST_F(CommandTest, partnerMayWaitForEachAnswer) {
  Conversation batch(commandLine(withData({"batch"})));
  batch.say(R"({"op":"blockExit","node":4,"blocked":true})");
  EXPECT_EQ(batch.hear(), "{\"ok\":true}");
  batch.say(R"({"op":"route","from":4,"to":3})");
  EXPECT_EQ(batch.hear(), "{\"route\":[]}");
  EXPECT_EQ(batch.end(), 0);
}

TEST_F(CommandTest, batchOnSeveralThreadsAnswersAsOnOne) {
  std::string requests;
  for (int id = 0; id < 200; ++id) {
    requests += R"({"op":"route","from":1,"to":4,"id":)" + std::to_string(id) + "}\n";
    if (id % 50 == 20)
      requests += R"({"op":"blockExit","node":1,"blocked":true})"
                  "\n";
    if (id % 50 == 40)
      requests += R"({"op":"blockExit","node":1,"blocked":false})"
                  "\n";
  }
  const std::string answers = ask({"batch"}, requests).output;
  for (const char* const jobs : {"1", "2", "8"}) {
    const ProcessResult result = ask({"batch", "--jobs", jobs}, requests);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, answers) << jobs;
    EXPECT_EQ(result.diagnostics, "");
  }
}

TEST_F(CommandTest, partnerOfSeveralThreadsMayWaitForEachAnswer) {
  Conversation batch(commandLine(withData({"batch", "--jobs", "3"})));
  batch.say(R"({"op":"blockExit","node":4,"blocked":true})");
  EXPECT_EQ(batch.hear(), "{\"ok\":true}");
  batch.say(R"({"op":"route","from":4,"to":3})");
  EXPECT_EQ(batch.hear(), "{\"route\":[]}");
  EXPECT_EQ(batch.end(), 0);
}

TEST_F(CommandTest, readerWhoGoesAwayEndsABatchOnSeveralThreads) {
  Conversation batch(commandLine(withData({"batch", "--jobs", "2"})));
  batch.stopListening();
  batch.say(R"({"op":"center"})");
  EXPECT_EQ(batch.end(), 4);
}

TEST_F(CommandTest, threadsOfABatchAreCountedFromOne) {
  for (const char* const jobs : {"0", "-1", "257"}) {
    expectFailure(withData({"batch", "--jobs", jobs}), 2,
                  StartsWith("--jobs: " + std::string(jobs) + " is out of range, 1 to 256"));
  }
  expectFailure(withData({"batch", "--jobs", "two"}), 2, StartsWith("--jobs: \"two\""));
  expectFailure(withData({"route", "--from", "1", "--to", "4", "--jobs", "2"}), 2,
                StartsWith("\"--jobs\" is not understood"));
}

TEST_F(CommandTest, readerWhoGoesAwayEndsABatch) {
  Conversation batch(commandLine(withData({"batch"})));
  batch.stopListening();
  batch.say(R"({"op":"center"})");
  EXPECT_EQ(batch.end(), 4);
}

TEST_F(CommandTest, answerThatCannotBeWrittenIsTold) {
  const auto inShell = [&](const std::string& words) {
    return test::runProcess(
        {"/bin/sh", "-c", test::commandPath() + " " + words + " --data " + folder_.at("")});
  };
  const ProcessResult full = inShell("info >/dev/full");
  EXPECT_EQ(full.status, 4);
  EXPECT_EQ(full.diagnostics, "tern: cannot write the answer: No space left on device\n");
  const ProcessResult folder = inShell("batch </");
  EXPECT_EQ(folder.status, 3);
  EXPECT_EQ(folder.diagnostics, "tern: cannot read the requests: Is a directory\n");
}

TEST_F(CommandTest, wordsThatAreWrongExitWithTwo) {
  expectFailure({"fly"}, 2, HasSubstr("\"fly\" is no command; there are venues"));
  expectFailure({"--data", folder_.at("")}, 2, HasSubstr("a command is missing"));
  expectFailure({"info"}, 2, StartsWith("--data DIR is missing"));
  expectFailure(withData({"route", "--from", "1"}), 2, StartsWith("--to W is missing"));
  expectFailure(withData({"route", "--from", "1", "--to", "2", "--accessibility", "x"}), 2,
                StartsWith("--accessibility: \"x\""));
  expectFailure(withData({"route", "--from", "1", "--to", "2", "--fast"}), 2,
                StartsWith("\"--fast\" is not understood"));
  expectFailure(withData({"info", "--venue", "1,x"}), 2, StartsWith("--venue: \"1,x\""));
  expectFailure(withData({"closest", "--map", "1", "--at", "1;2"}), 2, StartsWith("--at: \"1;2\""));
  expectFailure(withData({"convert", "--point", "1,2", "--from", "EPSG:1", "--to", "EPSG:4326"}), 2,
                HasSubstr("must be EPSG:4326, EPSG:3857 or tern:local"));
  expectFailure({"generate", "--out", folder_.at("new"), "--floors", "-1"}, 2,
                StartsWith("--floors: -1 is out of range"));
}

TEST_F(CommandTest, wordsOfAnyBytesGiveJsonThatCanBeRead) {
  expectFailure({"fl\xFFy\n"}, 2, HasSubstr("is no command"));
}

// What both streams show when they are a terminal.
std::string onTerminal(const Words& words, unsigned short columns = 80) {
  const test::ScopedVariable kind("TERM", "xterm");
  const test::ScopedVariable none("NO_COLOR", nullptr);
  test::MemoryFile input;
  test::Terminal terminal(columns);
  runCommand(words, {input.descriptor(), terminal.descriptor(), terminal.descriptor()});
  return terminal.text();
}

TEST_F(CommandTest, helpFitsTheTerminal) {
  std::istringstream lines(onTerminal({"nearest", "--help"}, 50));
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) longest = std::max(longest, line.size());
  EXPECT_LE(longest, 50U);
  EXPECT_GE(longest, 40U);
}

TEST_F(CommandTest, terminalShowsErrorsInRedAndIdsFaint) {
  EXPECT_THAT(onTerminal({"fly"}), StartsWith("\x1B[31mtern:\x1B[0m \"fly\" is no command"));
  EXPECT_EQ(onTerminal(withData({"places", "bakery"})),
            "Bakery \x1B[2m(destination 7)\x1B[0m on Ground Floor \x1B[2m(waypoint 1)\x1B[0m\n");
}

TEST_F(CommandTest, jsonHasNoColours) {
  EXPECT_THAT(onTerminal(withData({"places", "--json"})), Not(HasSubstr("\x1B")));
}

TEST_F(CommandTest, withoutWordsHelpIsShownAsAnError) {
  const ProcessResult result = tern({});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.diagnostics, HasSubstr("Usage: tern COMMAND"));
}

TEST_F(CommandTest, helpAndVersionAreAnswers) {
  const ProcessResult help = tern({"route", "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.output, HasSubstr("tern route --data mall --from 22001 --to 14016"));
  EXPECT_EQ(tern({"--help"}).status, 0);
  EXPECT_THAT(tern({"--version"}).output, MatchesRegex("tern [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(CommandTest, dataThatIsMissingExitsWithThree) {
  expectFailure({"info", "--data", folder_.at("nowhere")}, 3, HasSubstr("nowhere"));
  expectFailure({"venues", "--data", folder_.at("nowhere")}, 3, HasSubstr("nowhere"));
  expectFailure(withData({"info", "--venue", "9"}), 3, HasSubstr("no venue 9"));
  expectFailure(withData({"info", "--building", "9"}), 3, HasSubstr("no building 9"));
  std::filesystem::remove(folder_.at("venue/1/building/1/full.json"));
  expectFailure(withData({"route", "--from", "1", "--to", "2"}), 3,
                EndsWith("venue/1/building/1/full.json: no such file"));
  expectFailure(withData({"batch"}), 3, HasSubstr("building/1/full.json"));
}

TEST_F(CommandTest, dataThatIsBrokenExitsWithThree) {
  folder_.write("venue/1/full.json", "{\"id\":1,");
  expectFailure(withData({"info"}), 3, HasSubstr("venue/1/full.json: "));
  folder_.write("venue/1/full.json", "[]");
  expectFailure(withData({"info"}), 3, HasSubstr("venue/1/full.json: "));
  folder_.write("full.json", "\xFF");
  expectFailure(withData({"venues"}), 3, HasSubstr("full.json: "));
}

TEST_F(CommandTest, severalVenuesAreListedWhenNoneIsNamed) {
  folder_.write("full.json", R"({"id":1,"venues":{"items":[{"id":1,"name":"one"},{"id":2}]}})");
  expectFailure(withData({"info"}), 2, HasSubstr("1 (one), 2"));
  EXPECT_EQ(ask({"info", "--venue", "1"}).status, 0);
}

TEST_F(CommandTest, libraryLinesAreShownWhileLoadingAndCounted) {
  std::string waypoints;
  for (int i = 0; i < 15; ++i) waypoints += R"({"id":)" + std::to_string(i + 1) + R"(,"odd":1},)";
  waypoints.pop_back();
  folder_.write("venue/1/building/1/full.json",
                R"({"id":1,"floors":{"items":[{"id":1,"map":{"id":1,"waypoints":{"items":[)" +
                    waypoints + "]}}}]}}");
  const ProcessResult result = ask({"info", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.diagnostics, EndsWith("\nand 5 more such lines\n"));
  EXPECT_EQ(std::ranges::count(result.diagnostics, '\n'), 11);
}

TEST_F(CommandTest, namesCannotCommandTheTerminal) {
  folder_.write("full.json",
                R"({"id":1,"venues":{"items":[{"id":1,"name":"a\u001b[2Jb\u009bc"}]}})");
  EXPECT_EQ(ask({"venues"}).output, "1       a [2Jb  c\n");
}

TEST_F(CommandTest, generateWritesTheSameBytesForTheSameWords) {
  const auto generate = [&](const std::string& name, const std::string& seed) {
    return tern({"generate", "--out", folder_.at(name), "--seed", seed, "--shops", "12"}).status;
  };
  EXPECT_EQ(generate("a", "5"), 0);
  EXPECT_EQ(generate("b", "5"), 0);
  EXPECT_EQ(generate("c", "6"), 0);
  const auto venueOf = [&](const std::string& name) {
    return folder_.read(name + "/venue/1/full.json");
  };
  EXPECT_EQ(venueOf("a"), venueOf("b"));
  EXPECT_NE(venueOf("a"), venueOf("c"));
  EXPECT_EQ(tern({"info", "--data", folder_.at("a")}).status, 0);
  folder_.write("other/notes.txt", "mine");
  expectFailure({"generate", "--out", folder_.at("other")}, 2, HasSubstr("other"));
}

// The sample venue, as somebody would use it.
class CommandSampleTest : public testing::Test {
 protected:
  static ProcessResult ask(Words words, std::string_view input = {}) {
    words.insert(words.begin() + 1, {"--data", test::samplePath()});
    return tern(words, input);
  }
  // The first waypoint of each destination.
  static std::vector<std::int64_t> doors() {
    std::ifstream file(test::samplePath() + "/venue/1/full.json", std::ios::binary);
    const Value venue = parsed({std::istreambuf_iterator<char>(file), {}});
    std::vector<std::int64_t> ids;
    for (const Value& shop : venue["destinations"]["items"].items()) {
      ids.push_back(shop["locations"].items()[0]["waypointIds"].items()[0].integer());
    }
    return ids;
  }
};

TEST_F(CommandSampleTest, isCounted) {
  const ProcessResult result = ask({"info", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.diagnostics, "");
  const Value info = parsed(result.output);
  EXPECT_EQ(info["destinations"].integer(), static_cast<std::int64_t>(doors().size()));
  EXPECT_GE(info["links"].integer(), info["paths"].integer());
  EXPECT_EQ(info["floors"], info["maps"]);
}

TEST_F(CommandSampleTest, everyShopIsReachedFromTheFirst) {
  const std::vector<std::int64_t> ids = doors();
  ASSERT_GT(ids.size(), 2U);
  std::string requests;
  for (const std::int64_t id : ids) {
    requests += R"({"op":"route","from":)" + std::to_string(ids.front()) + R"(,"to":)" +
                std::to_string(id) + R"(,"accessibility":100,"id":)" + std::to_string(id) + "}\n";
  }
  std::istringstream answers(ask({"batch"}, requests).output);
  std::string line;
  for (const std::int64_t id : ids) {
    ASSERT_TRUE(std::getline(answers, line));
    const Value answer = parsed(line);
    EXPECT_EQ(answer["id"], Value(id));
    if (id == ids.front()) continue;
    const auto segments = answer["route"].items();
    ASSERT_FALSE(segments.empty()) << id;
    EXPECT_EQ(segments.front()["points"].items().front(), Value(ids.front()));
    EXPECT_EQ(segments.back()["points"].items().back(), Value(id));
  }
}

TEST_F(CommandSampleTest, longRouteIsToldInStepsMetresAndFloors) {
  const std::vector<std::int64_t> ids = doors();
  const ProcessResult result =
      ask({"route", "--from", std::to_string(ids.front()), "--to", std::to_string(ids.back())});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, testing::ContainsRegex("From .+ \\(waypoint [0-9]+\\)\n"));
  EXPECT_THAT(result.output, testing::ContainsRegex("   2\\. .+, [0-9]+ m\n"));
  EXPECT_THAT(result.output, testing::ContainsRegex("\n[0-9]+ m, about [0-9]+ minutes?\n$"));
}

}  // namespace
}  // namespace tern::command
