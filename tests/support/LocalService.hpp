// The mapping service over a venue folder on 127.0.0.1, in this process, with a record of what it
// was asked and faults to switch on.
//
//   LocalService service(folder.at(""));
//   service.fault("/venue/1/full", httpAnswer("500 Internal Server Error", "{}"));
//   ... service.url() ...
//   service.takeTargets();  // {"POST /QRVS/api/auth/token", ...}
//
// Ownership: owns the service; its destructor breaks off what is under way. Threads: any.
// Fails: a folder that cannot be served ends the test program.
#pragma once

#include <chrono>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tools/service/MappingService.hpp"

namespace tern::test {

class LocalService {
 public:
  using Request = service::ReceivedRequest;
  enum class Times { once, always };

  static constexpr const char* clientId = "client";
  static constexpr const char* clientSecret = "open-sesame";

  explicit LocalService(std::string folder,
                        std::chrono::seconds tokenValidity = std::chrono::hours(1));

  std::string url() const { return service_.url(); }
  // From here on nobody listens to its port.
  void stop() { service_.stop(); }

  // Answers a request whose target holds the text with these bytes, status line and headers
  // included, and closes the connection; none are a connection that closes without an answer. The
  // first fault that fits counts.
  void fault(std::string targetPart, std::string bytes, Times times = Times::once);
  // Waits before it answers, a fault included.
  void delay(std::string targetPart, std::chrono::milliseconds time);
  void clearFaults();

  // All requests since the last call.
  std::vector<Request> takeRequests();
  // Method and target of each.
  std::vector<std::string> takeTargets();

 private:
  struct Fault {
    std::string targetPart;
    std::string bytes;
    Times times;
  };
  struct Delay {
    std::string targetPart;
    std::chrono::milliseconds time;
  };

  bool intercept(const Request& request);

  std::mutex mutex_;
  // Guarded by mutex_.
  std::vector<Request> requests_;
  std::list<Fault> faults_;
  std::vector<Delay> delays_;

  service::MappingService service_;
};

// The value of the request's header, in whatever case; empty when there is none.
std::string headerOf(const service::ReceivedRequest& request, const std::string& name);

}  // namespace tern::test
