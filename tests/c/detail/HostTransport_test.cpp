#include "TernCoreKit/c/detail/HostTransport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/c/CTexts.hpp"
#include "tests/c/FakeHost.hpp"
#include "tests/support/FailingAllocation.hpp"

namespace tern::detail {
namespace {

using test::CError;
using testing::ElementsAre;

class HostTransportTest : public testing::Test {
 protected:
  HostTransportTest() {
    host_.keepsWaiting = true;
    transport_ = std::make_shared<HostTransport>(std::make_shared<Host>(host_.callbacks()));
  }

  void send() {
    transport_->send({.url = "https://h/a"},
                     [this](HttpResponse response) { responses_.push_back(std::move(response)); });
  }

  test::FakeHost host_;
  std::shared_ptr<HostTransport> transport_;
  std::vector<HttpResponse> responses_;
  CError error_;
};

TEST_F(HostTransportTest, requestsGoOutWholeAndAnswersComeIn) {
  std::string seen;
  host_.callbacks().context = &seen;
  host_.callbacks().release = nullptr;
  host_.callbacks().http_send = [](void* context, const tern_http_request* request,
                                   tern_http_exchange* exchange) {
    auto& text = *static_cast<std::string*>(context);
    text = std::string(request->method) + " " + request->url;
    for (std::size_t i = 0; i < request->header_count; ++i) {
      text += std::string("|") + request->headers[2 * i] + "=" + request->headers[2 * i + 1];
    }
    text += "|" + std::string(static_cast<const char*>(request->body), request->body_size);
    test::completeWith(exchange, 201, "made");
  };
  const auto transport = std::make_shared<HostTransport>(std::make_shared<Host>(host_.callbacks()));
  std::optional<HttpResponse> response;
  transport->send(
      {.url = "https://h/a", .method = "PUT", .headers = {{"A", "1"}, {"B", "2"}}, .body = "b\n"},
      [&](HttpResponse came) { response = std::move(came); });
  EXPECT_EQ(seen, "PUT https://h/a|A=1|B=2|b\n");
  ASSERT_TRUE(response);
  EXPECT_EQ(response->status, 201);
  EXPECT_EQ(response->body, "made");
  EXPECT_EQ(response->error, std::nullopt);
  EXPECT_FALSE(response->leftOrigin);
}

TEST_F(HostTransportTest, anExchangeEndsOnce) {
  send();
  EXPECT_TRUE(responses_.empty());
  tern_http_exchange* const exchange = host_.waiting().at(0);
  EXPECT_TRUE(test::completeWith(exchange, 200, "x"));
  EXPECT_FALSE(test::completeWith(exchange, 200, "y"));
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_EQ(responses_[0].body, "x");
}

TEST_F(HostTransportTest, failuresAndRedirectsAreHandedOn) {
  send();
  tern_http_response response{};
  response.size = sizeof response;
  response.left_origin = true;
  response.error = "no network";
  EXPECT_TRUE(tern_http_complete(host_.waiting().at(0), &response, error_.out()));
  EXPECT_EQ(responses_.at(0).status, 0);
  EXPECT_EQ(responses_.at(0).body, std::nullopt);
  EXPECT_EQ(responses_.at(0).error, "no network");
  EXPECT_TRUE(responses_.at(0).leftOrigin);
}

TEST_F(HostTransportTest, aResponseThatIsNotUnderstoodEndsTheExchange) {
  tern_http_response noSize{};
  tern_http_response noBytes{};
  noBytes.size = sizeof noBytes;
  noBytes.error = "\xFF";
  const tern_http_response* const none = nullptr;
  for (const auto* response : {none, static_cast<const tern_http_response*>(&noSize),
                               static_cast<const tern_http_response*>(&noBytes)}) {
    send();
    EXPECT_FALSE(tern_http_complete(host_.waiting().back(), response, error_.out()));
    EXPECT_EQ(error_.line().substr(0, 5), "TN006");
    EXPECT_EQ(responses_.back().error, "the host's response is not understood");
  }
  EXPECT_EQ(responses_.size(), 3U);
}

TEST_F(HostTransportTest, aShorterStructLacksWhatIsBehindItsEnd) {
  send();
  tern_http_response response{};
  response.size = offsetof(tern_http_response, body);
  response.status = 204;
  response.body = "not looked at";
  response.body_size = 3;
  EXPECT_TRUE(tern_http_complete(host_.waiting().at(0), &response, error_.out()));
  EXPECT_EQ(responses_.at(0).status, 204);
  EXPECT_EQ(responses_.at(0).body, std::nullopt);
}

TEST_F(HostTransportTest, itsEndCancelsWhatIsUnderWay) {
  send();
  send();
  transport_->end();
  EXPECT_EQ(host_.cancelled(), host_.waiting());
  ASSERT_EQ(responses_.size(), 2U);
  EXPECT_EQ(responses_[0].error, "cancelled");
  send();
  EXPECT_EQ(responses_.size(), 3U);
  EXPECT_EQ(host_.waiting().size(), 2U);
}

// The host that is asked takes memory, too.
TEST_F(HostTransportTest, eachRequestIsAnsweredWhateverAllocationFails) {
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::thread,
      [&] {
        int answers = 0;
        const std::size_t before = host_.waiting().size();
        transport_->send({.url = "u"}, [&](const HttpResponse&) { ++answers; });
        if (host_.waiting().size() > before) test::completeWith(host_.waiting().back(), 200, "x");
        ASSERT_EQ(answers, 1);
      },
      [] {}, test::Throwing::badAlloc);
  EXPECT_GT(failed, 1);
}

// The host of the process.
TEST(HostOfTheProcess, thatIsReplacedIsReleasedOnce) {
  test::FakeHost first;
  first.settle();
  test::FakeHost second;
  second.settle();
  EXPECT_EQ(first.releases(), 1);
  EXPECT_EQ(second.releases(), 0);
  EXPECT_TRUE(tern_set_host(nullptr, nullptr));
  EXPECT_EQ(second.releases(), 1);
}

TEST(HostOfTheProcess, withPartsThatLackTheirOthersIsRefused) {
  test::FakeHost host;
  CError error;
  host.callbacks().file_list = nullptr;
  EXPECT_FALSE(tern_set_host(&host.callbacks(), error.out()));
  EXPECT_EQ(error.line(), "TN006 of the callbacks for files some are NULL");
  host.callbacks().size = 0;
  EXPECT_FALSE(tern_set_host(&host.callbacks(), error.out()));
  EXPECT_EQ(error.line(), "TN006 the host does not say its size");
  tern_host parts{};
  parts.size = sizeof parts;
  parts.http_cancel = host.callbacks().http_cancel;
  EXPECT_FALSE(tern_set_host(&parts, error.out()));
  EXPECT_EQ(error.line(), "TN006 http_cancel is there without http_send");
  EXPECT_EQ(host.releases(), 0);
}

}  // namespace
}  // namespace tern::detail
