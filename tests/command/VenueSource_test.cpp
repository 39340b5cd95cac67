// Runs the command over a service, as it runs over a folder.
#include "tools/tern/VenueSource.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using test::LocalService;
using test::ProcessResult;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using Words = std::vector<std::string>;

const std::string sample = test::samplePath();

const char* const requests = R"({"op":"route","from":22001,"to":14016,"id":1})"
                             "\n"
                             R"({"op":"center"})"
                             "\n"
                             R"({"op":"neighbors","node":11010})"
                             "\n";

class HostTest : public testing::Test {
 protected:
  ProcessResult ask(Words words, std::string_view input = {},
                    const std::string& secret = LocalService::clientSecret) const {
    words.insert(words.begin(),
                 {"/usr/bin/env", "TERN_CLIENT_SECRET=" + secret, test::commandPath()});
    const ProcessResult result = test::runProcess(words, input);
    EXPECT_THAT(result.output + result.diagnostics, Not(HasSubstr(LocalService::clientSecret)));
    return result;
  }
  Words withHost(Words words) const {
    words.insert(words.begin() + 1, {"--host", service_.url(), "--customer", "1", "--client-id",
                                     LocalService::clientId, "--cache", cache_.at("")});
    return words;
  }
  void expectFailure(Words words, int status, const testing::Matcher<std::string>& message,
                     const std::string& secret = LocalService::clientSecret) const {
    words.emplace_back("--json");
    const ProcessResult result = ask(words, {}, secret);
    EXPECT_EQ(result.status, status);
    EXPECT_THAT(result.diagnostics, MatchesRegex("tern: [^\n]*\n"));
    EXPECT_THAT(result.diagnostics.substr(std::string("tern: ").size()), message);
    const Value error = decodeJson(result.output).value["error"];
    EXPECT_THAT(std::string(error["code"].text()), MatchesRegex("TN00[1-8]"));
    EXPECT_FALSE(error["message"].text().empty());
    EXPECT_THAT(std::string(error["message"].text()), Not(HasSubstr(service_.url())));
  }

  LocalService service_{sample};
  test::TemporaryFolder cache_;
};

TEST_F(HostTest, everyCommandAnswersAsWithAFolder) {
  for (const Words& words : std::vector<Words>{
           {"venues", "--json"},
           {"venues"},
           {"info", "--json"},
           {"info", "--building", "2", "--json"},
           {"route", "--from", "22001", "--to", "14016", "--json"},
           {"route", "--from", "22001", "--to", "14016"},
           {"route", "--from", "22001", "--to", "1", "--json"},
           {"alternatives", "--from", "22001", "--to", "14016", "--json"},
           {"nearest", "--map", "11", "--at", "600,570", "--amenity", "1", "--json"},
           {"closest", "--map", "11", "--at", "600,570", "--json"},
           {"convert", "--point", "10,20", "--from", "tern:local", "--to", "EPSG:4326", "--json"},
           {"batch"}}) {
    Words withData = words;
    withData.insert(withData.begin() + 1, {"--data", sample});
    const ProcessResult folder = ask(withData, requests);
    const ProcessResult host = ask(withHost(words), requests);
    EXPECT_EQ(host.output, folder.output) << words[0];
    EXPECT_EQ(host.diagnostics, folder.diagnostics) << words[0];
    EXPECT_EQ(host.status, folder.status) << words[0];
    EXPECT_FALSE(folder.output.empty());
  }
}

TEST_F(HostTest, warmCacheWithoutReloadMakesNoRequest) {
  const ProcessResult cold = ask(withHost({"info", "--json"}));
  EXPECT_THAT(service_.takeTargets(), Not(IsEmpty()));
  const ProcessResult warm = ask(withHost({"info", "--no-reload", "--json"}));
  EXPECT_EQ(warm.output, cold.output);
  EXPECT_EQ(warm.diagnostics, "");
  EXPECT_THAT(service_.takeTargets(), IsEmpty());
}

TEST_F(HostTest, serviceThatIsGoneIsToldInOneLine) {
  const ProcessResult cold = ask(withHost({"info", "--json"}));
  service_.stop();
  const ProcessResult gone = ask(withHost({"info", "--json"}));
  EXPECT_EQ(gone.status, 0);
  EXPECT_EQ(gone.output, cold.output);
  EXPECT_THAT(gone.diagnostics, MatchesRegex("tern: " + service_.url() +
                                             ": [^\n]*; what is missing comes from the "
                                             "cache\n"));
}

TEST_F(HostTest, requestsAreTraced) {
  const auto line = [](const std::string& event, const std::string& path) {
    return R"({"event":"TERN_CORE_SERVER_REQUEST_)" + event +
           R"(","payload":{"endpoint":"/QRVS/api/customer/1)" + path +
           R"(?v=4.12&locale=en-US&geojson=false"}})" + "\n";
  };
  const std::string venue = "/venue/1/full";
  const std::string building = "/venue/1/building/2/full";
  EXPECT_EQ(ask(withHost({"info", "--venue", "1", "--building", "2", "--trace"})).diagnostics,
            line("START", venue) + line("START", venue) + line("SUCCESS", venue) +
                line("START", building) + line("SUCCESS", building));
  EXPECT_EQ(ask(withHost({"venues", "--trace", "--no-reload"})).diagnostics,
            line("START", "/full") + line("SUCCESS", "/full"));
  service_.fault(venue, test::httpAnswer("404 Not Found", R"({"statusCode":404,"message":"x"})"));
  EXPECT_THAT(ask(withHost({"info", "--venue", "1", "--trace"})).diagnostics,
              HasSubstr(R"("error":{"code":"TN007",)"));
}

TEST_F(HostTest, errorsInJsonAreTheLibrarysOwn) {
  service_.fault("/venue/1/full",
                 test::httpAnswer("404 Not Found", R"({"statusCode":404,"message":"x"})"));
  EXPECT_EQ(ask(withHost({"info", "--venue", "1", "--json"})).output,
            R"({"error":{"code":"TN007","message":"x","description":"User passes correct )"
            R"(object/primitive into collection but that value cannot be found."}})"
            "\n");
  service_.stop();
  EXPECT_THAT(
      ask(withHost({"info", "--venue", "1", "--json"})).output,
      StartsWith(R"({"error":{"code":"TN002","message":"Could not request access token",)"));
}

TEST_F(HostTest, whatCannotBeLoadedExitsWithThree) {
  expectFailure(withHost({"info"}), 3, HasSubstr("invalid_client"), "wrong");
  expectFailure(withHost({"info", "--venue", "9"}), 3, HasSubstr("/venue/9/full"));
  Words words = withHost({"venues"});
  words[4] = "77";
  expectFailure(words, 3, Not(HasSubstr("wrong")));
  service_.stop();
  expectFailure(withHost({"info"}), 3, HasSubstr("Could not request access token"));
}

TEST_F(HostTest, secretOfTheWordsWinsOverTheEnvironment) {
  expectFailure(withHost({"venues", "--client-secret", "wrong"}), 3, Not(HasSubstr("wrong")));
  const Words words = withHost({"venues", "--client-secret", LocalService::clientSecret});
  EXPECT_EQ(ask(words, {}, "wrong").status, 0);
}

TEST_F(HostTest, wordsThatAreWrongExitWithTwo) {
  expectFailure(withHost({"info"}), 2, StartsWith("the secret is missing"), "");
  expectFailure(withHost({"info", "--data", sample}), 2, StartsWith("--data and --host"));
  expectFailure({"info", "--data", sample, "--trace"}, 2, StartsWith("--trace is for --host"));
  expectFailure({"info", "--data", sample, "--customer", "1"}, 2,
                StartsWith("--customer is for --host"));
  expectFailure({"info", "--host", "maps.example.com"}, 2, StartsWith("--host: \"maps.example"));
  expectFailure({"info", "--host", "http://h", "--client-id", "x"}, 2,
                StartsWith("--customer N is missing"));
  expectFailure({"info", "--host", "http://h", "--customer", "1"}, 2,
                StartsWith("--client-id ID is missing"));
  expectFailure(withHost({"info", "--timeout", "0"}), 2, StartsWith("--timeout: 0 is out of"));
  expectFailure(withHost({"info", "--no-reload=1"}), 2, StartsWith("--no-reload takes no value"));
  EXPECT_THAT(service_.takeTargets(), IsEmpty());
}

TEST_F(HostTest, cacheFolderWithOtherThingsIsRefused) {
  cache_.write("notes.txt", "mine");
  expectFailure(withHost({"info"}), 2, HasSubstr("holds notes.txt"));
  EXPECT_EQ(cache_.read("notes.txt"), "mine");
  EXPECT_THAT(service_.takeTargets(), IsEmpty());
}

TEST_F(HostTest, severalVenuesAreJoined) {
  const test::TemporaryFolder two;
  ASSERT_EQ(ask({"generate", "--out", two.at(""), "--venues", "2", "--shops", "6"}).status, 0);
  const LocalService service(two.at(""));
  const std::string request = R"({"op":"route","from":12013,"to":111008})"
                              "\n";
  const ProcessResult host =
      ask({"batch", "--venue", "1,2", "--host", service.url(), "--customer", "1", "--client-id",
           LocalService::clientId, "--cache", cache_.at("")},
          request);
  const ProcessResult folder = ask({"batch", "--venue", "1,2", "--data", two.at("")}, request);
  EXPECT_EQ(host.output, folder.output);
  EXPECT_THAT(host.output, StartsWith("{\"route\":["));
}

}  // namespace
}  // namespace tern::command
