// Two thousand clients at once that ask the service for routes, beside the same clients at a bare
// HTTP echo. Every client has to get the answers to its own requests, all of them.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/EchoServer.hpp"
#include "bench/LoadedVenue.hpp"
#include "tests/support/HttpCrowd.hpp"
#include "tools/service/MappingService.hpp"

namespace tern::bench {

namespace {

constexpr std::size_t clients = 2'000;
constexpr std::size_t requestsEach = 5;
constexpr int rounds = 9;

// A connection has a descriptor at each of its ends.
void allowManyConnections() {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

std::shared_ptr<const TernAnswers> answersAbout(std::size_t waypoints,
                                                std::vector<std::int64_t>& ids) {
  const auto venue = assemble(makeIndoorVenue(waypoints, IdOrder::walking));
  venue->loadGridData();
  for (const auto& waypoint : venue->globalASGrid()->waypoints()) {
    ids.push_back(waypoint->id.integer());
  }
  return std::make_shared<TernAnswers>(venue);
}

// By client and request: lines that name who asks.
using Bodies = std::vector<std::vector<std::string>>;

Bodies randomBodies(const std::vector<std::int64_t>& ids, std::size_t lines) {
  std::mt19937_64 random(11);
  const auto anyId = [&] { return std::to_string(ids[random() % ids.size()]); };
  Bodies bodies(clients, std::vector<std::string>(requestsEach));
  for (std::size_t client = 0; client < clients; ++client) {
    for (std::size_t i = 0; i < requestsEach * lines; ++i) {
      bodies[client][i / lines] += R"({"op":"route","from":)" + anyId() + R"(,"to":)" + anyId() +
                                   R"(,"id":")" + std::to_string(client) + "." + std::to_string(i) +
                                   "\"}\n";
    }
  }
  return bodies;
}

Bodies answered(const Bodies& bodies, const TernAnswers& answers) {
  Bodies all = bodies;
  for (auto& ofClient : all) {
    for (std::string& body : ofClient) {
      std::string text;
      for (std::size_t at = 0; at < body.size();) {
        const std::size_t end = body.find('\n', at);
        text += answers.answerText(body.substr(at, end - at)) + "\n";
        at = end + 1;
      }
      body = std::move(text);
    }
  }
  return all;
}

struct Mistakes {
  std::size_t lost = 0;
  std::size_t wrong = 0;
};

void ask(int port, const std::string& headers, const Bodies& bodies, const Bodies& expected,
         Mistakes& mistakes) {
  const auto heard =
      test::askAtOnce(port, clients, requestsEach, [&](std::size_t client, std::size_t request) {
        return test::postOf("/answer", bodies[client][request], headers);
      });
  for (std::size_t client = 0; client < clients; ++client) {
    mistakes.lost += requestsEach - heard[client].size();
    for (std::size_t i = 0; i < heard[client].size(); ++i) {
      const bool isRight =
          heard[client][i].status == 200 && heard[client][i].body == expected[client][i];
      mistakes.wrong += isRight ? 0 : 1;
    }
  }
}

std::string bearerOf(int port) {
  const auto heard = test::askAtOnce(port, 1, 1, [](std::size_t, std::size_t) {
    return test::postOf("/QRVS/api/auth/token",
                        "grant_type=client_credentials&client_id=local&client_secret=local");
  });
  const Value token = decodeJson(heard.at(0).at(0).body).value;
  return "Authorization: Bearer " + std::string(token["access_token"].text()) + "\r\n";
}

void measure(std::size_t waypoints, std::size_t lines) {
  std::vector<std::int64_t> ids;
  const auto answers = answersAbout(waypoints, ids);
  const Bodies bodies = randomBodies(ids, lines);
  const Bodies expected = answered(bodies, *answers);
  service::MappingService service(
      {.folder = TERN_SOURCE_DIR "/data/plaza",
       .venues = {.ids = {1}, .load = [&](std::int64_t) { return answers; }}});
  if (const auto error = service.start()) {
    std::fprintf(stderr, "%s\n", error->c_str());
    std::exit(1);
  }
  const EchoServer echo;
  const std::string bearer = bearerOf(service.port());
  Mistakes mistakes;
  Mistakes echoMistakes;
  const auto seconds =
      race({{"echo", [&] { ask(echo.port(), bearer, bodies, bodies, echoMistakes); }},
            {"answers", [&] { ask(service.port(), bearer, bodies, expected, mistakes); }}},
           rounds);
  const double requests = static_cast<double>(clients * requestsEach);
  std::printf(
      "%9zu waypoints, %zu routes a request  %7.0f requests/s  echo %7.0f  %5.2f of echo  "
      "lost %zu, wrong %zu (echo %zu, %zu)\n",
      waypoints, lines, requests / median(seconds[1]), requests / median(seconds[0]),
      ratioOf(seconds[1], seconds[0]), mistakes.lost, mistakes.wrong, echoMistakes.lost,
      echoMistakes.wrong);
  std::fflush(stdout);
}

}  // namespace

void benchServing() {
  allowManyConnections();
  measure(100, 1);
  measure(1'000, 1);
  measure(1'000, 10);
}

}  // namespace tern::bench
