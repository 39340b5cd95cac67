// A hub with all that it stands on put in the hands of a test: a service without a network, a
// documents folder of its own, a clock that stands still, background work on demand, and every
// notification and log line on record.
//
//   HubScene scene;
//   scene.answers["/venue/7/full"] = HubScene::json("{...}");
//   scene.hub().populateVenueByVenueId(7, completion);
//   scene.requests();  // {"token", "GET /venue/7/full"}
//
// Paths are those below the customer's, without their query.
//
// Threads: one. Fails: as TemporaryFolder.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Notifications.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FakeTransport.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/TurnedClock.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern::test {

class HubScene {
 public:
  static constexpr std::string_view host = "https://maps.example.com";
  static constexpr std::string_view query = "?v=4.12&locale=en-US&geojson=false";

  HubScene();
  ~HubScene();
  HubScene(const HubScene&) = delete;
  HubScene& operator=(const HubScene&) = delete;

  static HttpResponse json(std::string body, int status = 200);

  // Customer 1 on that host.
  static Value options();
  // A hub of these options, made when it is first asked for.
  TernHub& hub();
  std::shared_ptr<TernHub> remakeHub(const Value& options = HubScene::options());

  // "token" for each request of a token; of each other the method, what follows the customer in the
  // path, and, where they are sent, the stamp behind "since" and the token when it is not "secret".
  std::vector<std::string> requests() const;
  // "START endpoint", "SUCCESS endpoint" or "FAILED endpoint code message | description" since the
  // last call, endpoints from behind the customer on and without the usual query.
  std::vector<std::string> events();

  // The cached answer of that path, as it lies on disk.
  std::string cached(std::string_view path) const;
  void writeCache(std::string_view path, std::string_view text) const;

  std::map<std::string, HttpResponse, std::less<>> answers;
  // The answer to a path that has none.
  HttpResponse otherwise{.error = "no network"};
  HttpResponse tokenAnswer;
  TemporaryFolder folder;
  CapturedLog log;
  std::shared_ptr<OnDemandQueue> queue = std::make_shared<OnDemandQueue>();
  std::shared_ptr<FakeTransport> transport;

 private:
  HttpResponse answer(const HttpRequest& request) const;

  TurnedClock clock_;
  ScopedBackgroundQueue scopedQueue_{queue};
  std::vector<std::string> events_;
  ObserverToken observer_;
  std::shared_ptr<TernHub> hub_;
};

}  // namespace tern::test
