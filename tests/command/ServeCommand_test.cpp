// Runs the local mapping service as its users do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"

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
  expectRefusal({"serve", "--data", served, "--port", "70000"}, 2, "--port: 70000 is out of range");
  service.send(SIGTERM);
  EXPECT_EQ(service.end(), 0);
}

}  // namespace
}  // namespace tern::command
