// Runs the command that shows venues in a browser, and asks it as a browser does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/MemoryFile.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/RawClient.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/Command.hpp"

namespace tern::command {
namespace {

using test::LocalService;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using Words = std::vector<std::string>;

const std::string shown = test::samplePath();

// The command at work, and a browser.
class Explorer {
 public:
  explicit Explorer(Words words, const std::string& secret = "none",
                    const std::string& diagnostics = "/dev/stderr")
      : command_(withCommand(std::move(words), secret, diagnostics)) {
    line_ = command_.hear();
    const std::string port = line_.substr(line_.rfind("127.0.0.1:") + 10);
    port_ = std::atoi(port.c_str());
  }

  const std::string& line() const { return line_; }
  int port() const { return port_; }

  // The whole answer, head and body.
  std::string get(const std::string& target, const std::string& headers = {}) const {
    return ask("GET " + target, headers);
  }
  std::string ask(const std::string& line, const std::string& headers = {}) const {
    return askAs("127.0.0.1:" + std::to_string(port_), line, headers);
  }
  std::string askAs(const std::string& host, const std::string& line,
                    const std::string& headers = {}) const {
    test::RawClient client(port_);
    EXPECT_TRUE(client.send(line + " HTTP/1.1\r\nHost: " + host + "\r\n" + headers +
                            "Connection: close\r\n\r\n"));
    return client.hear();
  }
  // Its exit status.
  int end(int signal = SIGTERM) {
    command_.send(signal);
    return command_.end();
  }

 private:
  static Words withCommand(Words words, const std::string& secret, const std::string& diagnostics) {
    words.insert(words.begin(), {"/usr/bin/env", "TERN_CLIENT_SECRET=" + secret, "/bin/sh", "-c",
                                 "exec \"$0\" explore \"$@\" 2>>'" + diagnostics + "'",
                                 test::commandWithPagePath()});
    return words;
  }

  test::Conversation command_;
  std::string line_;
  int port_ = 0;
};

std::string bodyOf(const std::string& answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }

std::string fileOf(const std::string& path) {
  std::stringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// One that comes piece by piece has its pieces' lengths before them.
Value lineOfJsonIn(const std::string& body) {
  const std::size_t begin = body.find('{');
  return decodeJson(body.substr(begin, body.rfind('}') + 1 - begin)).value;
}

// What the page is told of venues, by their ids as JSON.
std::string configOf(const std::string& venues) {
  return R"({"data":"data/","findings":"data/findings.json","venues":)" + venues + "}";
}

TEST(ExploreCommand, showsThePageAndEndsAtASignal) {
  for (const int signal : {SIGINT, SIGTERM}) {
    Explorer explorer({"--data", shown});
    EXPECT_THAT(explorer.line(),
                MatchesRegex("Showing .*/data/plaza at http://127\\.0\\.0\\.1:[0-9]+/"));
    const std::string page = explorer.get("/");
    EXPECT_THAT(page, StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(page, HasSubstr("\r\nContent-Type: text/html; charset=utf-8\r\n"));
    EXPECT_THAT(page, HasSubstr("\r\nContent-Security-Policy: default-src 'none'; "));
    EXPECT_EQ(bodyOf(page), fileOf(test::sourcePath("tests/page/index.html")));
    EXPECT_EQ(explorer.end(signal), 0);
  }
}

TEST(ExploreCommand, filesOfThePageArePartOfTheProgram) {
  Explorer explorer({"--data", shown});
  const std::string name = "/main-0123abcd.js";
  const std::string text = fileOf(test::sourcePath("tests/page" + name));
  const std::string plain = explorer.get(name);
  EXPECT_THAT(plain, HasSubstr("\r\nContent-Type: text/javascript; charset=utf-8\r\n"));
  EXPECT_THAT(plain, HasSubstr("\r\nCache-Control: max-age=31536000, immutable\r\n"));
  EXPECT_EQ(bodyOf(plain), text);
  const std::string gzip = explorer.get(name, "Accept-Encoding: gzip, br\r\n");
  EXPECT_THAT(gzip, HasSubstr("\r\nContent-Encoding: gzip\r\n"));
  EXPECT_THAT(bodyOf(gzip), StartsWith("\x1f\x8b"));
  const std::size_t tag = plain.find("ETag: ") + 6;
  const std::string held =
      "If-None-Match: " + plain.substr(tag, plain.find('\r', tag) - tag) + "\r\n";
  EXPECT_THAT(explorer.get(name, held), StartsWith("HTTP/1.1 304 "));
  EXPECT_EQ(bodyOf(explorer.ask("HEAD " + name)), "");
  EXPECT_THAT(explorer.get("/none.js"), StartsWith("HTTP/1.1 404 "));
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, documentsAreThoseOfTheFolder) {
  Explorer explorer({"--data", shown});
  EXPECT_EQ(bodyOf(explorer.get("/config.json")), configOf("[1]"));
  for (const char* const path :
       {"/full.json", "/venue/1/full.json", "/venue/1/building/1/full.json",
        "/venue/1/building/2/full.json"}) {
    EXPECT_EQ(bodyOf(explorer.get(std::string("/data") + path)), fileOf(shown + path)) << path;
  }
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, findingsAreThoseOfCheck) {
  const test::TemporaryFolder folder;
  test::writeTwoFloors(folder);
  const std::string venue = folder.path().string();
  Explorer explorer({"--data", venue});
  const Value findings = lineOfJsonIn(bodyOf(explorer.get("/data/findings.json")));
  const auto checked = test::runProcess({test::commandPath(), "check", "--data", venue, "--json"});
  EXPECT_GT(findings["findings"].size(), 0U);
  EXPECT_EQ(findings, decodeJson(checked.output).value);
  EXPECT_EQ(bodyOf(explorer.get("/data/findings.json")),
            bodyOf(explorer.get("/data/findings.json?venue=1")));
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, joinedVenuesAreShownTogether) {
  const test::TemporaryFolder folder;
  const std::string malls = folder.at("malls");
  ASSERT_EQ(test::runProcess({test::commandPath(), "generate", "--out", malls, "--venues", "3",
                              "--shops", "10", "--floors", "1"})
                .status,
            0);
  Explorer explorer({"--data", malls, "--venue", "1,2"});
  EXPECT_EQ(bodyOf(explorer.get("/config.json")), configOf("[1,2]"));
  EXPECT_THAT(explorer.get("/data/venue/2/full.json"), StartsWith("HTTP/1.1 200 "));
  EXPECT_THAT(explorer.get("/data/venue/3/full.json"), StartsWith("HTTP/1.1 404 "));
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, nothingButTheDocumentsIsRead) {
  const test::TemporaryFolder folder;
  const test::TemporaryFolder outside;
  test::writeTwoFloors(folder);
  folder.write("notes.json", "hidden");
  folder.write("venue/1/notes.json", "hidden");
  outside.write("full.json", "hidden");
  std::filesystem::create_directory(folder.path() / "venue/1/building/8");
  std::filesystem::create_symlink(outside.path() / "full.json",
                                  folder.path() / "venue/1/building/8/full.json");
  std::filesystem::create_directory_symlink(outside.path(), folder.path() / "venue/1/building/9");
  Explorer explorer({"--data", folder.path().string()});
  EXPECT_THAT(explorer.get("/data/venue/1/full.json"), StartsWith("HTTP/1.1 200 "));
  for (const std::string& target :
       Words{"/data/notes.json", "/data/venue/1/notes.json", "/data/venue/1/building/8/full.json",
             "/data/venue/1/building/9/full.json", "/data/../full.json", "/data/%2e%2e/full.json",
             "/data/venue/1/building/..%2f..%2f..%2f..%2ffull.json", "/notes.json",
             "/data" + folder.path().string() + "/full.json"}) {
    const std::string answer = explorer.get(target);
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 404 ")) << target;
    EXPECT_EQ(decodeJson(bodyOf(answer)).value["statusCode"], Value(404)) << target;
    EXPECT_THAT(answer, Not(HasSubstr("hidden")));
  }
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, onlyBrowsersOfThisMachineAreAnswered) {
  Explorer explorer({"--data", shown});
  const std::string port = ":" + std::to_string(explorer.port());
  EXPECT_THAT(explorer.askAs("localhost" + port, "GET /"), StartsWith("HTTP/1.1 200 "));
  for (const std::string& host : {"example.com" + port, std::string("127.0.0.1")}) {
    const std::string refusal = explorer.askAs(host, "GET /data/full.json");
    EXPECT_THAT(refusal, StartsWith("HTTP/1.1 403 ")) << host;
    EXPECT_EQ(decodeJson(bodyOf(refusal)).value["statusCode"], Value(403));
  }
  EXPECT_THAT(explorer.ask("POST /"), StartsWith("HTTP/1.1 405 "));
  EXPECT_EQ(explorer.end(), 0);
}

TEST(ExploreCommand, addressIsSaidInJsonToo) {
  Explorer explorer({"--data", shown, "--json"});
  EXPECT_THAT(explorer.line(), MatchesRegex(R"(\{"url":"http://127\.0\.0\.1:[0-9]+/"\})"));
  EXPECT_EQ(explorer.end(), 0);
}

// A service, and a page of what it has.
class ExploreHostTest : public testing::Test {
 protected:
  Explorer explore(Words words = {}) const {
    words.insert(words.begin(), {"--host", service_.url(), "--customer", "1", "--client-id",
                                 LocalService::clientId, "--cache", folder_.at("cache")});
    return Explorer(std::move(words), LocalService::clientSecret, folder_.at("diagnostics"));
  }

  const Words paths_{"/full.json", "/venue/1/full.json", "/venue/1/building/1/full.json",
                     "/venue/1/building/2/full.json"};
  const test::TemporaryFolder folder_;
  LocalService service_{shown};
};

TEST_F(ExploreHostTest, documentsAreThoseOfTheService) {
  Explorer explorer = explore();
  EXPECT_EQ(explorer.line().substr(0, explorer.line().rfind(" at ")), "Showing " + service_.url());
  EXPECT_EQ(bodyOf(explorer.get("/config.json")), configOf("[1]"));
  service_.stop();
  for (const std::string& path : paths_) {
    EXPECT_EQ(decodeJson(bodyOf(explorer.get("/data" + path))).value,
              decodeJson(fileOf(shown + path)).value)
        << path;
  }
  const auto checked = test::runProcess({test::commandPath(), "check", "--data", shown, "--json"});
  EXPECT_EQ(lineOfJsonIn(bodyOf(explorer.get("/data/findings.json"))),
            decodeJson(checked.output).value);
  EXPECT_EQ(explorer.end(), 0);
}

TEST_F(ExploreHostTest, secretAndTokenAreShownNowhere) {
  Explorer explorer = explore({"--trace"});
  std::string said = explorer.line();
  for (const char* const target :
       {"/", "/config.json", "/data/full.json", "/data/venue/1/full.json", "/data/findings.json",
        "/none", "/..", "/QRVS/api/auth/token"}) {
    said += explorer.get(target) + explorer.ask(std::string("HEAD ") + target);
  }
  EXPECT_EQ(explorer.end(), 0);
  const std::string diagnostics = folder_.read("diagnostics");
  EXPECT_THAT(diagnostics, HasSubstr("TERN_CORE_SERVER_REQUEST_START"));
  said += diagnostics;
  EXPECT_THAT(said, Not(HasSubstr(LocalService::clientSecret)));
  int bearers = 0;
  for (const auto& request : service_.takeRequests()) {
    const std::string bearer = test::headerOf(request, "Authorization");
    if (bearer.empty()) continue;
    ++bearers;
    EXPECT_THAT(said, Not(HasSubstr(bearer.substr(bearer.find(' ') + 1))));
  }
  EXPECT_GT(bearers, 0);
}

TEST_F(ExploreHostTest, whatIsCachedIsShownWhenTheServiceIsGone) {
  EXPECT_EQ(explore().end(), 0);
  service_.stop();
  Explorer explorer = explore();
  EXPECT_THAT(folder_.read("diagnostics"), HasSubstr("what is missing comes from the cache"));
  for (const std::string& path : paths_) {
    EXPECT_EQ(decodeJson(bodyOf(explorer.get("/data" + path))).value,
              decodeJson(fileOf(shown + path)).value);
  }
  EXPECT_EQ(explorer.end(), 0);
}

TEST_F(ExploreHostTest, serviceThatRefusesIsToldInOneLine) {
  const auto result =
      test::runProcess({"/usr/bin/env", "TERN_CLIENT_SECRET=wrong", test::commandWithPagePath(),
                        "explore", "--host", service_.url(), "--customer", "1", "--client-id",
                        LocalService::clientId, "--cache", folder_.at("cache")});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.diagnostics, MatchesRegex("tern: [^\n]*invalid_client[^\n]*\n"));
}

void expectComplaint(Words words, int status, const std::string& text) {
  words.insert(words.begin(), {test::commandWithPagePath(), "explore"});
  const auto result = test::runProcess(words);
  EXPECT_EQ(result.status, status);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.diagnostics, MatchesRegex("tern: [^\n]*\n"));
  EXPECT_THAT(result.diagnostics, HasSubstr(text));
}

TEST(ExploreCommand, whatCannotBeShownIsSaidInOneLine) {
  const test::TemporaryFolder folder;
  Explorer explorer({"--data", shown});
  expectComplaint({"--data", shown, "--port", std::to_string(explorer.port())}, 3,
                  "Address already in use");
  EXPECT_EQ(explorer.end(), 0);
  expectComplaint({}, 2, "--data DIR is missing");
  expectComplaint({"--data", shown, "--port", "70000"}, 2, "--port: 70000 is out of range");
  expectComplaint({"--data", shown, "--building", "1"}, 2, "\"--building\" is not understood");
  expectComplaint({"--data", shown, "--venue", "9"}, 3, "there is no venue 9");
  expectComplaint({"--data", shown, "--venue", "1,1"}, 2, "--venue: \"1,1\" names a venue twice");
  expectComplaint({"--data", "/nowhere"}, 3, "there is no folder /nowhere");
  expectComplaint({"--data", folder.path().string()}, 3, "full.json: there is no such file");
  folder.write("full.json", R"({"id":1,"venues":{"items":[{"id":1},{"id":2}]}})");
  expectComplaint({"--data", folder.path().string()}, 2, "--venue: ");
  folder.write("venue/1/full.json", "{");
  expectComplaint({"--data", folder.path().string(), "--venue", "1"}, 3, "venue/1/full.json: ");
}

TEST(ExploreCommand, programWithoutThePageSaysHowToGetIt) {
  const test::MemoryFile input;
  const test::MemoryFile output;
  const test::MemoryFile diagnostics;
  EXPECT_EQ(runCommand({"explore", "--data", shown, "--json"},
                       {input.descriptor(), output.descriptor(), diagnostics.descriptor()}),
            3);
  EXPECT_THAT(diagnostics.text(), MatchesRegex("tern: [^\n]*without the page[^\n]*\n"));
  EXPECT_THAT(diagnostics.text(), HasSubstr("scripts/explore"));
  EXPECT_THAT(output.text(), StartsWith("{\"error\":"));
}

// What stands for the desktop's own program writes what it was given, and ends the command.
TEST(ExploreCommand, pageIsOpenedForAPersonAtADesktopWithoutTheSecret) {
  const test::TemporaryFolder folder;
  folder.write("xdg-open", "#!/bin/sh\necho \"$1 ${TERN_CLIENT_SECRET-none}\" >'" +
                               folder.at("opened") + "'\nkill -TERM $PPID\n");
  std::filesystem::permissions(folder.path() / "xdg-open", std::filesystem::perms::owner_all);
  const auto result = test::runProcess(
      {"/usr/bin/env", "DISPLAY=:1", "TERN_CLIENT_SECRET=open-sesame",
       "PATH=" + folder.path().string() + ":/usr/bin:/bin", "script", "-qec",
       "exec '" + test::commandWithPagePath() + "' explore --data '" + shown + "'", "/dev/null"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(folder.read("opened"), MatchesRegex("http://127\\.0\\.0\\.1:[0-9]+/ none\n"));
  const std::string opened = folder.read("opened");
  EXPECT_THAT(result.output, HasSubstr(" at " + opened.substr(0, opened.find(' '))));
}

}  // namespace
}  // namespace tern::command
