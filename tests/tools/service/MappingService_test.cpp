#include "tools/service/MappingService.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/FakeTransport.hpp"
#include "tests/support/HttpCrowd.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/TurnedClock.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::service {
namespace {

using test::exchange;
using test::LocalService;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class MappingServiceTest : public testing::Test {
 protected:
  MappingServiceTest() : service_(written(folder_)) {}

  static std::string written(const test::TemporaryFolder& folder) {
    test::writeTwoFloors(folder);
    return folder.path();
  }

  HttpResponse post(const std::string& form, const std::string& path = "/QRVS/api/auth/token") {
    return exchange(*transport_,
                    {.url = service_.url() + path,
                     .method = "POST",
                     .headers = {{"Content-Type", "application/x-www-form-urlencoded"}},
                     .body = form});
  }
  HttpResponse get(const std::string& path, std::vector<HttpHeader> headers) {
    return exchange(*transport_, {.url = service_.url() + path, .headers = std::move(headers)});
  }
  std::string bearer() {
    const HttpResponse answer = post(
        "grant_type=client_credentials&scope=sdk.read&client_id=client&client_secret=open%"
        "2Dsesame");
    const Value body = decodeJson(answer.body.value_or("")).value;
    EXPECT_EQ(body["expires_in"], Value(3600)) << answer.body.value_or("");
    return "Bearer " + std::string(body["access_token"].text());
  }
  static void expectError(int status, const HttpResponse& answer) {
    EXPECT_EQ(answer.status, status);
    const Value body = decodeJson(answer.body.value_or("")).value;
    EXPECT_EQ(body["statusCode"], Value(status)) << answer.body.value_or("");
    EXPECT_TRUE(body["message"].isText());
  }

  const std::string venue_ = "/QRVS/api/customer/1/venue/1/full";
  test::TemporaryFolder folder_;
  LocalService service_;
  std::shared_ptr<HttpTransport> transport_ = makeHttpTransport();
};

TEST_F(MappingServiceTest, documentIsServedForAToken) {
  const HttpResponse answer = get(venue_, {{"Authorization", bearer()}});
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, folder_.read("venue/1/full.json"));
  EXPECT_THAT(service_.takeTargets(), ElementsAre("POST /QRVS/api/auth/token", "GET " + venue_));
}

TEST_F(MappingServiceTest, documentThatHasNotChangedHasNoBody) {
  folder_.write("venue/1/full.json", R"({"id":1,"generatedAt":77})");
  const HttpResponse answer =
      get(venue_, {{"Authorization", bearer()}, {"If-Modified-Since", "77"}});
  EXPECT_EQ(answer.status, 304);
  EXPECT_FALSE(answer.body);
}

TEST_F(MappingServiceTest, wrongCredentialsAreDenied) {
  const std::string grant = "grant_type=client_credentials&";
  expectError(401, post(grant + "client_id=client&client_secret=x"));
  expectError(401, post(grant + "client_id=x&client_secret=open-sesame"));
  expectError(401, post(grant));
  expectError(400, post("client_id=client&client_secret=open-sesame"));
  expectError(400, post(""));
}

TEST_F(MappingServiceTest, requestWithoutAValidTokenIsDenied) {
  expectError(401, get(venue_, {}));
  expectError(401, get(venue_, {{"Authorization", "Bearer nonsense"}}));
  expectError(401, get(venue_, {{"Authorization", bearer().substr(7)}}));
}

TEST_F(MappingServiceTest, tokenEnds) {
  test::TurnedClock clock;
  const std::string token = bearer();
  clock.turn(std::chrono::seconds(3599));
  EXPECT_EQ(get(venue_, {{"Authorization", token}}).status, 200);
  clock.turn(std::chrono::seconds(1));
  expectError(401, get(venue_, {{"Authorization", token}}));
}

TEST_F(MappingServiceTest, whatDoesNotExistIsAnErrorInJson) {
  expectError(404, get("/QRVS/api/customer/2/full", {{"Authorization", bearer()}}));
  expectError(405, post("", "/elsewhere"));
  expectError(405, exchange(*transport_, {.url = service_.url() + venue_, .method = "DELETE"}));
}

TEST_F(MappingServiceTest, requestsAreBounded) {
  EXPECT_GE(post(std::string(100'000, 'x')).status, 400);
  EXPECT_GE(get("/" + std::string(100'000, 'x'), {}).status, 400);
  EXPECT_EQ(get(venue_, {{"Authorization", bearer()}}).status, 200);
}

TEST_F(MappingServiceTest, faultTakesThePlaceOfTheAnswer) {
  service_.fault(venue_, test::httpAnswer("418 Odd", "tea"));
  const std::string token = bearer();
  EXPECT_EQ(get(venue_, {{"Authorization", token}}).status, 418);
  EXPECT_EQ(get(venue_, {{"Authorization", token}}).status, 200);
  service_.fault("/full", "", LocalService::Times::always);
  EXPECT_EQ(get(venue_, {{"Authorization", token}}).status, 0);
  EXPECT_EQ(get(venue_, {{"Authorization", token}}).status, 0);
}

TEST_F(MappingServiceTest, stopBreaksOffWhatIsUnderWay) {
  service_.fault(venue_, "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
  EXPECT_FALSE(get(venue_, {}).body);
  const std::string url = service_.url();
  service_.stop();
  EXPECT_EQ(exchange(*transport_, {.url = url + venue_}).status, 0);
}

TEST_F(MappingServiceTest, portInUseIsNamed) {
  const int port = std::stoi(service_.url().substr(service_.url().rfind(':') + 1));
  MappingService second({.folder = folder_.at(""), .port = port});
  EXPECT_EQ(second.start(), "cannot listen on port " + std::to_string(port) +
                                " of 127.0.0.1: Address already in use");
}

TEST_F(MappingServiceTest, addressOrFolderThatIsNoneIsNamed) {
  EXPECT_THAT(*MappingService({.folder = folder_.at(""), .address = "256.1.1.1"}).start(),
              StartsWith("cannot listen on port 0 of 256.1.1.1"));
  EXPECT_THAT(*MappingService({.folder = folder_.at("x")}).start(), HasSubstr("no venue folder"));
}

std::string drawnAnswer(const std::string& id) { return "{\"id\":" + id + ",\"waypoint\":null}\n"; }

SharedAnswers drawnAnswers() {
  return std::make_shared<TernAnswers>(
      test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}}, .paths = {"A-B"}}));
}

// The venue that is drawn is that of a token's holder, whatever the folder has.
class ConcurrentAnswersOverHttp : public testing::Test {
 protected:
  ConcurrentAnswersOverHttp() {
    test::writeTwoFloors(folder_);
    EXPECT_EQ(service_.start(), std::nullopt);
  }

  HttpResponse post(const std::string& path, const std::string& body,
                    std::vector<HttpHeader> headers) {
    return exchange(*transport_, {.url = service_.url() + path,
                                  .method = "POST",
                                  .headers = std::move(headers),
                                  .body = body});
  }
  std::string bearer() {
    const HttpResponse answer =
        post("/QRVS/api/auth/token",
             "grant_type=client_credentials&client_id=local&client_secret=local", {});
    return "Bearer " +
           std::string(decodeJson(answer.body.value_or("")).value["access_token"].text());
  }
  HttpResponse ask(const std::string& path, const std::string& body) {
    return post(path, body, {{"Authorization", bearer()}});
  }

  test::TemporaryFolder folder_;
  MappingService service_{
      {.folder = folder_.path(), .venues = {{1, 2}, [](std::int64_t) { return drawnAnswers(); }}}};
  std::shared_ptr<HttpTransport> transport_ = makeHttpTransport();
};

TEST_F(ConcurrentAnswersOverHttp, requestIsAnsweredForAToken) {
  const HttpResponse answer = ask("/answer?venue=1", R"({"op":"route","from":1,"to":2,"id":5})");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body,
            drawnAnswers()->answerText(R"({"op":"route","from":1,"to":2,"id":5})") + "\n");
}

TEST_F(ConcurrentAnswersOverHttp, refusalsHaveTheirStatus) {
  const std::string request = R"({"op":"center"})";
  EXPECT_EQ(post("/answer?venue=1", request, {}).status, 401);
  EXPECT_EQ(post("/answer?venue=1", request, {{"Authorization", "Bearer x"}}).status, 401);
  EXPECT_EQ(exchange(*transport_, {.url = service_.url() + "/answer?venue=1"}).status, 405);
  EXPECT_EQ(ask("/answer", request).status, 400);
  EXPECT_EQ(ask("/answer?venue=1", "").status, 400);
  EXPECT_EQ(ask("/answer?venue=%", request).status, 400);
  EXPECT_EQ(ask("/answer?venue=9", request).status, 404);
  EXPECT_EQ(ask("/answers", request).status, 405);
  EXPECT_EQ(ask("/answer?venue=1", std::string(AnswerLimits().bodyBytes + 1, ' ')).status, 413);
}

TEST_F(ConcurrentAnswersOverHttp, nobodyGetsTheAnswerOfAnother) {
  const std::string header = "Authorization: " + bearer() + "\r\n";
  constexpr std::size_t clients = 200;
  constexpr std::size_t requestsEach = 4;
  // Of one line or of many, each with an id of its own.
  const auto lines = [](std::size_t client, std::size_t request, const auto& textOf) {
    std::string text;
    const std::size_t count = request % 2 == 0 ? 1 : 1 + client % 40;
    for (std::size_t line = 0; line < count; ++line) {
      text += textOf("\"" + std::to_string(client) + "." + std::to_string(request) + "." +
                     std::to_string(line) + "\"");
    }
    return text;
  };
  const auto heard = test::askAtOnce(
      service_.port(), clients, requestsEach, [&](std::size_t client, std::size_t request) {
        const auto body = lines(client, request, [](const std::string& id) {
          return R"({"op":"closest","map":9,"at":[0,0],"id":)" + id + "}\n";
        });
        return test::postOf("/answer?venue=" + std::to_string(1 + client % 2), body, header);
      });
  ASSERT_EQ(heard.size(), clients);
  for (std::size_t client = 0; client < clients; ++client) {
    ASSERT_EQ(heard[client].size(), requestsEach) << client;
    for (std::size_t request = 0; request < requestsEach; ++request) {
      EXPECT_EQ(heard[client][request].status, 200);
      EXPECT_EQ(heard[client][request].body,
                lines(client, request, [](const std::string& id) { return drawnAnswer(id); }));
    }
  }
}

// A service that is stopped when its first answers are under way.
class ConcurrentEndOfAnswers : public testing::Test {
 protected:
  ConcurrentEndOfAnswers() {
    test::writeTwoFloors(folder_);
    service_.emplace(
        ServiceSettings{.folder = folder_.path(), .venues = {{1}, [this](std::int64_t) {
                                                               isAsked_.set_value();
                                                               return drawnAnswers();
                                                             }}});
    EXPECT_EQ(service_->start(), std::nullopt);
  }

  // A line that takes a while: the order of so many stops.
  static std::string slowLines(std::size_t count, std::size_t stops) {
    std::string row = "[0";
    for (std::size_t i = 1; i < stops; ++i) row += "," + std::to_string(i * i % 7);
    std::string matrix = row + "]";
    for (std::size_t i = 1; i < stops; ++i) matrix += "," + row + "]";
    std::string lines;
    for (std::size_t i = 0; i < count; ++i) {
      lines += R"({"op":"solve","matrix":[)" + matrix + "]}\n";
    }
    return lines;
  }

  // The answer to the body while the service stops.
  HttpResponse askAndStop(const std::string& body, std::chrono::milliseconds grace) {
    const auto transport = makeHttpTransport();
    const auto post = [&](const std::string& path, const std::string& text,
                          std::vector<HttpHeader> headers) {
      return exchange(*transport, {.url = service_->url() + path,
                                   .method = "POST",
                                   .headers = std::move(headers),
                                   .body = text});
    };
    const HttpResponse grant =
        post("/QRVS/api/auth/token",
             "grant_type=client_credentials&client_id=local&client_secret=local", {});
    const std::string token(decodeJson(grant.body.value_or("")).value["access_token"].text());
    HttpResponse answer;
    std::thread client([&] {
      answer = post("/answer", body, {{"Authorization", "Bearer " + token}});
    });
    test::await(isAsked_, "the first line");
    service_->stop(grace);
    client.join();
    service_.reset();
    return answer;
  }

 private:
  test::TemporaryFolder folder_;
  std::promise<void> isAsked_;
  std::optional<MappingService> service_;
};

TEST_F(ConcurrentEndOfAnswers, whatIsUnderWayIsAnsweredToItsEnd) {
  const HttpResponse answer = askAndStop(slowLines(200, 12), test::longestWait);
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(std::ranges::count(answer.body.value_or(""), '\n'), 200);
}

TEST_F(ConcurrentEndOfAnswers, whatTakesLongerIsCutOff) {
  const HttpResponse answer = askAndStop(slowLines(1'000, 17), std::chrono::milliseconds(1));
  EXPECT_FALSE(answer.body);
}

using ConcurrentMappingService = MappingServiceTest;

TEST_F(ConcurrentMappingService, requestsAreAllAnswered) {
  const std::string token = bearer();
  std::vector<std::thread> clients;
  std::atomic<int> answered = 0;
  for (int i = 0; i < 32; ++i) {
    clients.emplace_back([&] {
      const auto own = makeHttpTransport();
      for (int j = 0; j < 5; ++j) {
        const HttpResponse answer =
            exchange(*own, {.url = service_.url() + venue_, .headers = {{"Authorization", token}}});
        answered += answer.status == 200 ? 1 : 0;
      }
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(answered, 160);
}

}  // namespace
}  // namespace tern::service
