// Runs the local mapping service as its users do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/FakeTransport.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/service/AnswerService.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using test::Conversation;
using test::ProcessResult;
using testing::HasSubstr;
using testing::MatchesRegex;

using Words = std::vector<std::string>;

const std::string served = test::samplePath();

Words commandWords(Words words, const std::string& secret = "local") {
  words.insert(words.begin(),
               {"/usr/bin/env", "TERN_CLIENT_SECRET=" + secret, test::commandPath()});
  return words;
}

std::string addressIn(const std::string& line) { return line.substr(line.rfind(' ') + 1); }

TEST(ServeCommand, servesAndStopsAtASignal) {
  const test::TemporaryFolder cache;
  for (const int signal : {SIGINT, SIGTERM}) {
    Conversation service(commandWords({"serve", "--data", served, "--client-id", "me"}, "mine"));
    const std::string line = service.hear();
    EXPECT_THAT(line, MatchesRegex("Serving .*/data/plaza at http://127\\.0\\.0\\.1:[0-9]+"));
    const Words venues{"venues",      "--host", addressIn(line), "--customer", "1",
                       "--client-id", "me",     "--cache",       cache.at("")};
    EXPECT_EQ(test::runProcess(commandWords(venues, "mine")).output,
              "1       Linden Plaza (venue-1)\n");
    service.send(signal);
    EXPECT_EQ(service.end(), 0);
  }
}

TEST(ServeCommand, isLocalWithoutCredentials) {
  Conversation service({test::commandPath(), "serve", "--data", served, "--port", "0"});
  const test::TemporaryFolder cache;
  EXPECT_EQ(
      test::runProcess(commandWords({"venues", "--host", addressIn(service.hear()), "--customer",
                                     "1", "--client-id", "local", "--cache", cache.at("")}))
          .status,
      0);
  service.send(SIGTERM);
  EXPECT_EQ(service.end(), 0);
}

class CallOf {
 public:
  explicit CallOf(std::string address) : address_(std::move(address)) {}

  HttpResponse post(const std::string& path, const std::string& body) {
    std::vector<HttpHeader> headers;
    if (!token_.empty()) headers.push_back({"Authorization", "Bearer " + token_});
    return test::exchange(
        *transport_,
        {.url = address_ + path, .method = "POST", .headers = std::move(headers), .body = body});
  }
  void signIn() {
    const HttpResponse answer =
        post("/QRVS/api/auth/token",
             "grant_type=client_credentials&client_id=local&client_secret=local");
    token_ = decodeJson(answer.body.value_or("")).value["access_token"].text();
  }

 private:
  const std::string address_;
  std::string token_;
  std::shared_ptr<HttpTransport> transport_ = makeHttpTransport();
};

TEST(ServeCommand, answersWhatBatchAnswers) {
  Conversation service(commandWords({"serve", "--data", served}));
  CallOf call(addressIn(service.hear()));
  const std::string requests = R"({"op":"route","from":22001,"to":14016,"id":1})"
                               "\n"
                               R"({"op":"places","text":"books","id":2})"
                               "\n";
  EXPECT_EQ(call.post("/answer", requests).status, 401);
  call.signIn();
  const HttpResponse answer = call.post("/answer", requests);
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body,
            test::runProcess(commandWords({"batch", "--data", served}), requests).output);
  EXPECT_EQ(call.post("/answer?venue=2", requests).status, 404);
  // The connections stay open behind their answers; the service ends all the same.
  service.send(SIGTERM);
  EXPECT_EQ(service.end(), 0);
}

TEST(ServeCommand, joinedVenuesAreAskedAsOne) {
  const test::TemporaryFolder folder;
  const std::string data = folder.at("malls");
  ASSERT_EQ(test::runProcess(commandWords({"generate", "--out", data, "--venues", "2", "--shops",
                                           "10", "--seed", "3"}))
                .status,
            0);
  const auto doorIn = [&](const std::string& venue) {
    const std::string places =
        test::runProcess(commandWords({"places", "--data", data, "--venue", venue, "--json"}))
            .output;
    return encodeJson(decodeJson(places).value["places"].items()[0]["waypoints"].items()[0],
                      JsonLayout::compact);
  };
  const std::string route =
      R"({"op":"route","from":)" + doorIn("1") + R"(,"to":)" + doorIn("2") + "}\n";
  const std::string places = "{\"op\":\"places\",\"venue\":2}\n";
  const auto batch = [&](const std::string& venues, const std::string& requests) {
    return test::runProcess(commandWords({"batch", "--data", data, "--venue", venues}), requests)
        .output;
  };
  Conversation service(commandWords({"serve", "--data", data, "--venue", "1,2"}));
  CallOf call(addressIn(service.hear()));
  call.signIn();
  const auto answer = call.post("/answer", route + places).body;
  EXPECT_EQ(answer, batch("1,2", route + places));
  EXPECT_NE(answer, batch("2", route + places));
  EXPECT_EQ(call.post("/answer?venue=2", route + places).body, batch("2", route + places));
  service.send(SIGTERM);
  EXPECT_EQ(service.end(), 0);
}

TEST(ServeCommand, helpNamesTheLimits) {
  const service::AnswerLimits limits;
  const std::string help(serveCommand.help);
  EXPECT_THAT(help, HasSubstr(std::to_string(limits.bodyBytes >> 20U) + " MiB"));
  EXPECT_THAT(help, HasSubstr(std::to_string(limits.lineBytes >> 10U) + " KiB"));
  for (const std::size_t count : {limits.lines, limits.bodies}) {
    EXPECT_THAT(help, HasSubstr(" " + std::to_string(count) + " "));
  }
  EXPECT_THAT(help, HasSubstr(std::to_string(limits.time.count()) + " seconds"));
}

void expectRefusal(const Words& words, int status, const std::string& text) {
  const ProcessResult result = test::runProcess(commandWords(words));
  EXPECT_EQ(result.status, status);
  EXPECT_THAT(result.diagnostics, MatchesRegex("tern: [^\n]*\n"));
  EXPECT_THAT(result.diagnostics, HasSubstr(text));
}

TEST(ServeCommand, whatCannotBeServedIsSaidInOneLine) {
  Conversation service(commandWords({"serve", "--data", served}));
  const std::string address = addressIn(service.hear());
  const std::string port = address.substr(address.rfind(':') + 1);
  expectRefusal({"serve", "--data", served, "--port", port}, 3, "Address already in use");
  expectRefusal({"serve", "--data", "/nowhere"}, 3, "/nowhere is no venue folder");
  expectRefusal({"serve", "--data", served, "--listen", "300.1.1.1"}, 3, "300.1.1.1");
  expectRefusal({"serve"}, 2, "--data DIR is missing");
  expectRefusal({"serve", "--data", served, "--venue", "1,9"}, 3, "venue 9");
  expectRefusal({"serve", "--data", served, "--port", "70000"}, 2, "--port: 70000 is out of range");
  service.send(SIGTERM);
  EXPECT_EQ(service.end(), 0);
}

}  // namespace
}  // namespace tern::command
