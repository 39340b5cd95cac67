#include "tools/service/PageService.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <list>
#include <span>
#include <string>

#include "tests/support/MadePage.hpp"
#include "tests/support/RawClient.hpp"

namespace tern::service {
namespace {

using test::RawClient;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

class ConcurrentPageService : public testing::Test {
 protected:
  ConcurrentPageService() { EXPECT_EQ(service_.start(0), std::nullopt); }
  ~ConcurrentPageService() override { mayFind_.set_value(); }

  int port() const {
    const std::string url = service_.url();
    return std::stoi(url.substr(url.rfind(':') + 1));
  }
  std::string requestOf(const std::string& line, const std::string& headers = {}) const {
    return line + " HTTP/1.1\r\nHost: localhost:" + std::to_string(port()) + "\r\n" + headers +
           "Connection: close\r\n\r\n";
  }
  std::string answerTo(const std::string& bytes) const {
    RawClient client(port());
    EXPECT_TRUE(client.send(bytes));
    return client.hear();
  }

  std::promise<void> mayFind_;
  std::shared_future<void> found_ = mayFind_.get_future().share();
  test::MadePage page_;
  PageService service_{{.files = filesOf(page_),
                        .venues = {1},
                        .documents = {.read = [](const std::string& path) { return path; }},
                        .findings = [found = found_](std::int64_t) {
                          found.wait();
                          return std::string("{\"findings\":[]}\n");
                        }}};

 private:
  static std::span<const PageFile> filesOf(test::MadePage& page) {
    page.add("index.html", "text/html; charset=utf-8", "<p>page");
    return page.files();
  }
};

TEST_F(ConcurrentPageService, sendsThePageAndItsPolicy) {
  EXPECT_THAT(service_.url(), MatchesRegex("http://127\\.0\\.0\\.1:[0-9]+/"));
  const std::string answer = answerTo(requestOf("GET /"));
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Type: text/html; charset=utf-8\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Security-Policy: default-src 'none'; "));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Length: 7\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\n<p>page"));
}

TEST_F(ConcurrentPageService, headIsTheAnswerWithoutItsBody) {
  const std::string answer = answerTo(requestOf("HEAD /"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Length: 7\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\n"));
}

TEST_F(ConcurrentPageService, whatIsSentToItIsRefusedUnderItsPolicyToo) {
  const std::string body(200'000, 'x');
  const std::string answer = answerTo(
      requestOf("POST /", "Content-Length: " + std::to_string(body.size()) + "\r\n") + body);
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 405 "));
  EXPECT_THAT(answer, HasSubstr("\r\nAllow: GET, HEAD\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Security-Policy: "));
}

TEST_F(ConcurrentPageService, findingsThatTakeTheirTimeKeepNobodyWaiting) {
  // More than there are threads that serve.
  std::list<RawClient> waiting;
  for (unsigned i = 0; i < 2 * HttpServer::threads; ++i) {
    ASSERT_TRUE(waiting.emplace_back(port()).send(requestOf("GET /data/findings.json")));
  }
  EXPECT_THAT(answerTo(requestOf("GET /data/full.json")), EndsWith("\r\n\r\nfull.json"));
  mayFind_.set_value();
  for (RawClient& client : waiting) {
    const std::string answer = client.hear();
    EXPECT_THAT(answer, HasSubstr("\r\nContent-Type: application/json\r\n"));
    EXPECT_THAT(answer, HasSubstr("{\"findings\":[]}\n"));
  }
  mayFind_ = {};
}

TEST_F(ConcurrentPageService, findingsThatAreUnderWayAreBrokenOffAtItsEnd) {
  RawClient client(port());
  ASSERT_TRUE(client.send(requestOf("GET /data/findings.json")));
  client.hearUntil("\r\n\r\n");
  service_.stop(std::chrono::milliseconds(10));
  EXPECT_THAT(client.hear(), Not(HasSubstr("findings")));
}

TEST_F(ConcurrentPageService, portInUseIsNamed) {
  PageService second({.files = page_.files()});
  EXPECT_EQ(second.start(port()), "cannot listen on port " + std::to_string(port()) +
                                      " of 127.0.0.1: Address already in use");
}

}  // namespace
}  // namespace tern::service
